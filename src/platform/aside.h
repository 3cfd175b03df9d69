// What the program says about its own work beside the answers, such as a query space that grows. A
// console that serves a script keeps it off the answers.
#pragma once

namespace velora {

// Above zero while such texts are written.
extern int gAside;

// While one is in scope what is written stands beside the answers.
class Aside {
public:
  Aside() { ++gAside; }
  ~Aside() { --gAside; }
  Aside(const Aside &) = delete;
  Aside &operator=(const Aside &) = delete;
};

} // namespace velora
