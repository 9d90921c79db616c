// The trial's message list: what a single solved surface gave rise to.
#pragma once

#include <string>

#include "project/project.h"

namespace tobel {

// message_count + 1, the text stored at that place. A line beyond the
// 5000th is a run-time failure of the solution (RuntimeError, subscript).
void add_message(Project& p, const std::string& text);

} // namespace tobel
