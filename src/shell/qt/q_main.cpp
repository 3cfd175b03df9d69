// The native desktop program: reads the command line, opens the frame and the console, starts the
// language and runs the event loop.
#include <QApplication>
#include <QFile>
#include <QPixmap>
#include <QScreen>

#include <cstdio>

#include "platform/end_signals.h"
#include "platform/interrupt.h"
#include "platform/response.h"
#include "shell/console_lines.h"
#include "shell/events/event_runner.h"
#include "shell/gate.h"
#include "shell/kept_queries.h"
#include "shell/qt/q_hands.h"
#include "shell/qt/q_options.h"
#include "shell/qt/q_program.h"
#include "shell/qt/q_stack.h"

namespace velora::qt {

namespace {

constexpr int kEndedBySignal = 128; // and its number

constexpr int kWrongUse = 2;

// Runs the script in the windows; the exit status.
int run_script(Program &program, const Options &options) {
  gProgressDots = 0;
  WindowHands hands;
  EventRunner runner(hands);
  if (!runner.read(options.events)) {
    std::fprintf(stderr, "velora-desktop: cannot read %s\n", options.events.c_str());
    return kWrongUse;
  }
  if (program.start(options.database) == 0)
    return 1;
  return run_event_script(runner) ? 0 : 1;
}

// Saves the frame as it looks; false when the file cannot be written.
bool save_frame(Program &program, const std::string &file) {
  QApplication::processEvents();
  return program.window().grab().save(QFile::decodeName(file.c_str()));
}

int run(const Options &options) {
  gNotes = options.notes ? 1 : 0;
  if (options.events.empty())
    catch_end_signals();
  Program program(options.lib_dir);
  // Where no one manages windows, they are as large as they are made.
  program.window().setGeometry(program.window().screen()->availableGeometry());
  program.window().showMaximized();
  QApplication::processEvents();
  const bool script = !options.events.empty();
  if (!script)
    keep_history_in(kept_queries_file());
  const int status = script                                 ? run_script(program, options)
                     : program.start(options.database) == 0 ? 1
                                                            : 0;
  if (status == kWrongUse || (status != 0 && !script) || desktop_ended())
    return status;
  if (!options.screenshot.empty() && !save_frame(program, options.screenshot))
    return 1;
  if (script || !options.screenshot.empty())
    return status;
  const int code = QApplication::exec();
  return gEndAsked != 0 ? kEndedBySignal + gEndAsked : code;
}

int start(int argc, char **argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Velora"));
  QApplication::setOrganizationName(QStringLiteral("velora"));
  QApplication::setDesktopFileName(QStringLiteral("velora"));
  Options options;
  std::string complaint;
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (!read_options(words, options, complaint)) {
    std::fprintf(stderr, "velora-desktop: %s\n%s", complaint.c_str(), usage_text());
    return kWrongUse;
  }
  if (options.help || options.version) {
    std::fputs(options.help ? usage_text() : "velora-desktop " VELORA_VERSION "\n", stdout);
    return 0;
  }
  return run(options);
}

} // namespace

} // namespace velora::qt

int main(int argc, char **argv) {
  velora::qt::provide_stack(argv);
  return velora::qt::start(argc, argv);
}
