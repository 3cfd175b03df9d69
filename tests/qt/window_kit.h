// The real program with real windows, for tests: found by their names, used through events of the
// mouse and the keyboard, on whatever platform of windows the tests are started with.
#pragma once

#include <QApplication>
#include <QTest>

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "platform/desktop.h"
#include "shell/qt/q_console.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_windows.h"

namespace velora::kit {

// The program is started once; each test begins with CONTROL alone and no database, in a folder of
// its own.
class WindowTest : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  static qt::Frame &frame();
  static qt::ConsolePane &console();
  // The window whose title begins so, the newest of several; fails the test when there is none.
  static const qt::Window &window(const std::string &title);
  static int windows_titled(const std::string &title);

  // Deals with events until `done` or for two seconds; answers whether it was done.
  static bool wait_for(const std::function<bool()> &done);
  static void settle();
  // Types into the console as a person does, key by key, and waits for the answer to end.
  void query(const std::string &text);
  static void type(QWidget *into, const std::string &text);
  static void key(QWidget *into, Qt::Key key, Qt::KeyboardModifiers held = {});
  // Chooses a command of the menus by its number: the item itself is triggered.
  static void choose(int number);
  static bool enabled(int number);
  // What the console shows beyond what it showed at the last call.
  std::string news();

  // The next dialog: a button pressed by its label, a text typed and accepted, a file named.
  static void press_in_dialog(const std::string &label, std::string *message = nullptr);
  static void type_in_dialog(const std::string &text, std::string *message = nullptr);
  static void name_file(const std::string &file);

private:
  std::size_t seen_ = 0;
};

// Writes a file of the test's folder.
void write_file(const std::string &name, const std::string &text);

} // namespace velora::kit
