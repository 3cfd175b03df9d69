// Help windows: the page of a name, the keys, the guide, and which program this is.
#pragma once

#include <QString>

namespace velora::qt {

void show_help_on(const QString &name);
void show_keys();
void show_guide();
void show_about();

} // namespace velora::qt
