// Graphics windows as files, and the stored pictures that a program asks to see.
#include "db/needs.h"
#include "eval/needs.h"

namespace velora {

int show_picture(const char *name) {
  return ShowGraphic(name, 0, 0);
}

} // namespace velora
