// Whether a built-in may have its effect: the rights of the session, asked by the dispatcher.
#pragma once

#include "eval/registry.h"

namespace velora {

// True for the effects that a restricted session asks about.
constexpr bool is_guarded(Effect effect) {
  return effect == Effect::writes || effect == Effect::database || effect == Effect::library;
}

// True when the built-in of a guarded effect may run now. Forces the argument that names its file.
bool may_act(const BuiltinRow &row, node **stack, int spine_len);

// The result of a refused application: "False" for a built-in that answers a truth value (1), else
// the application stays as it is (0).
int refused(const BuiltinRow &row, node **stack, int spine_len);

} // namespace velora
