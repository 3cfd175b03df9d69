// Texts of the driver: conversion, and the words of a command line.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#include <windows.h>

#include <string>
#include <vector>

inline std::wstring widen(const std::string &text) {
  std::wstring out(text.size() + 1, L'\0');
  out.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(),
                                                          static_cast<int>(text.size()), out.data(),
                                                          static_cast<int>(out.size()))));
  return out;
}

inline std::string narrow(const std::wstring &text) {
  std::string out(text.size() * 4 + 1, '\0');
  out.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(),
                          static_cast<int>(out.size()), nullptr, nullptr)));
  return out;
}

inline std::string escaped(const std::string &text) {
  std::string out;
  for (const char c : text) {
    if (c == '\n')
      out += "\\n";
    else if (c == '\\')
      out += "\\\\";
    else if (c != '\r')
      out += c;
  }
  return out;
}

inline std::string unescaped(const std::string &text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size())
      out += text[i];
    else
      out += text[++i] == 'n' ? '\n' : text[i];
  }
  return out;
}

using Arguments = std::vector<std::string>;

// The words of a line; a word in double quotes may hold blanks.
inline Arguments split(const std::string &line) {
  Arguments words;
  std::size_t i = 0;
  while (i < line.size()) {
    if (line[i] == ' ') {
      ++i;
      continue;
    }
    std::string word;
    if (line[i] == '"') {
      for (++i; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '"')
          ++i;
        word += line[i];
      }
      ++i;
    } else {
      while (i < line.size() && line[i] != ' ')
        word += line[i++];
    }
    words.push_back(word);
  }
  return words;
}
