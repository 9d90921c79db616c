// The two lists of plain text lines: the trial's messages (message_text,
// message_count), what a single solved surface gave rise to, and the input
// list of the data check (check_text, check_count; check_fatal forbids the
// solve). Both are 1-based, index 0 unused.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"

namespace tobel {

// message_count + 1, the text stored at that place. There is no test for
// duplicates. A line beyond the 5000th is a run-time failure of the solution
// (RuntimeError, subscript).
void add_message(Project& p, const std::string& text);

// The trial's lines 1..message_count.
std::vector<std::string> trial_messages(const Project& p);

// The input list's lines 1..check_count.
std::vector<std::string> input_messages(const Project& p);

} // namespace tobel
