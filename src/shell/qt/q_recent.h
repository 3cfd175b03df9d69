// The databases that were open lately, kept between runs.
#pragma once

#include <QStringList>

class QMenu;

namespace velora::qt {

inline constexpr int kMostRecent = 10;

// Whole names, the latest first; files that are gone are left out.
QStringList recent_databases();
void note_database(const QString &file);
// Makes the items of a menu of them.
void fill_recent(QMenu *menu);

} // namespace velora::qt
