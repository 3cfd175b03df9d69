// The event hook that long loops call. It is cheap until the user asks for an interrupt.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/interrupt.h"

namespace velora {

// The message of a command that the user stopped.
inline constexpr char kInterrupted[] = "Query interrupted\n";

// Services the interface and abandons the command with that message when asked to.
void poll_user_events();

extern int event_countdown;

// Called once for each step of a long computation; `where` tells who calls (80 the abstraction of
// variables, 800 the reducer). May abandon the command.
inline void CheckForUserEvents(int where) {
  (void)where;
  if (--event_countdown < 0 || gInterrupted != 0)
    poll_user_events();
}

// The lowest address that the stack of this thread may reach; 0 until it is known.
extern std::uintptr_t stack_limit;
void refuse_depth();

// Abandons the command with a message when the machine's stack is nearly used up. Every function
// that recurses over user data calls it. The address of a frame measures the stack in use.
inline void check_stack() {
  if (reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < stack_limit) [[unlikely]]
    refuse_depth();
}

// Tells check_stack how far down the stack of this thread may grow: from the caller's frame,
// `bytes` less a margin.
void set_stack_limit(std::size_t bytes);

} // namespace velora
