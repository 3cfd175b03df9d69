// What each verb of an event script does. Called by the runner alone.
#pragma once

#include <string>

#include "shell/events/event_runner.h"

namespace velora {

struct EventVerb {
  const char *name;
  bool (*run)(EventRunner &runner, const std::string &rest);
};
// The verb of that name, or null.
const EventVerb *find_event_verb(const std::string &name);
// Queues the answer that a line holds; false when it is a line of another kind.
bool queue_answer(EventRunner &runner, const EventLine &line);

} // namespace velora
