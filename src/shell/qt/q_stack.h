// Deep evaluation runs on the machine's stack, so the program sees to a large one.
#pragma once

namespace velora::qt {

// Makes sure that the stack may grow far: where the system gives a program its stack at its start,
// the program is started once more with a larger limit. Then tells the engine how far it may go.
void provide_stack(char **argv);

} // namespace velora::qt
