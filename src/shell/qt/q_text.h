// Texts of the program, which are UTF-8, and texts of the window system.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace velora::qt {

inline QString wide(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string narrow(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace velora::qt
