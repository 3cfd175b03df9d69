// The started language for unit tests: libraries loaded once from lib/, a recorder for a console.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "kit/recorder.h"

namespace velora::kit {

// Starts the language once in this process, quietly. Answers what init_Velora answers.
int start_language();

// Runs console text (a query ended by ";", a section, a load) as the console would and answers what
// it wrote. Messages that beep are in `messages` of the recording in use.
std::string answer(const std::string &text);
// The same without an answer; takes no memory outside of the commands.
void feed(const std::string &text);

// A test with the language running and a recorder as console and desktop. What a test declares is
// gone after it: every symbol entered since the start is removed.
class Language : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;
  RecorderConsole &console() { return recording_.console; }
  RecorderDesktop &desktop() { return recording_.desktop; }

private:
  Recording recording_;
};

} // namespace velora::kit
