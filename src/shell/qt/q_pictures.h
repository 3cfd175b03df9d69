// Pictures outside their windows: as images, and as words for who reads the screen.
#pragma once

#include <QImage>

#include "platform/geometry.h"

namespace velora::qt {

struct Window;
class PictureArea;

// All of a picture: what its view scrolls over, or what is in sight when that is more.
Rect whole_picture(const PictureArea &view);
// The inside of a window: a picture whole, `factor` dots a unit; a text as it stands on the screen.
QImage image_of(const Window &window, double factor);
// Gives the view the words that describe its picture.
void describe_picture(PictureArea &view);

} // namespace velora::qt
