// What every procedure that the window system calls passes through, so that nothing unwinds through
// the system's frames: a message that cannot be dealt with, because memory is short, is left
// undone.
#pragma once

#include <type_traits>

#include "shell/return_point.h"

namespace velora::win32 {

// The answer of Work(arguments...), or 0 when it was abandoned. The step takes one reference, so
// that making it takes no memory.
template <auto Work, class... Arguments> auto guarded(Arguments... arguments) {
  std::invoke_result_t<decltype(Work), Arguments...> answer{};
  const auto call = [&] { answer = Work(arguments...); };
  run_step([&call] { call(); });
  return answer;
}

} // namespace velora::win32
