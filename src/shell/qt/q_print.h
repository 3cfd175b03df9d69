// Windows on paper and in files.
#pragma once

#include <QString>

#include <string>

class QImage;

namespace velora::qt {

struct Window;

enum class FileKind { pdf, png, svg };

// Asks for a printer and prints the window.
void print_window(const Window &window);
// Asks for a file and saves the window there; tells in CONTROL what became of it.
void save_window_as(const Window &window, FileKind kind);
// The same without asking; false when the file cannot be written.
bool save_window(const Window &window, FileKind kind, const QString &file);
// Writes an image as a whole file; false, after a note, when that cannot be done.
bool save_image(const QImage &image, const char *format, const std::string &file);

} // namespace velora::qt
