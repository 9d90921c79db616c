// The list form tob_errors as logic: one scrolling, read-only grid of eight
// visible rows showing either the trial's messages (mode 0) or the findings
// of the data check (mode -1), as error_list_mode says.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr int message_list_visible_rows = 8;
constexpr int key_up = 38;
constexpr int key_down = 40;

struct MessageListForm {
    int mode = 0;    // 0 the trial's list, -1 the input list
    int top = 1;     // list line shown in the first visible row
    int current = 0; // list line of the current row; 0 when the list is empty
};

// The form as it opens: the window at line 1, the current row on line 1.
MessageListForm open_message_list(const Project& p, int mode);

// Number of lines of the list of that mode.
int message_list_count(const Project& p, int mode);

// Str(count) + " warnings and errors issued for this trial surface" in mode 0,
// Str(count) + " data input errors were found" in mode -1.
std::string message_list_caption(const Project& p, int mode);

// The visible rows from the top line, at most eight: the row's number in the
// signed text form, a tab, and the list line.
std::vector<std::string> message_list_rows(const Project& p, const MessageListForm& form);

// Up (38) and down (40) arrows move the current row; past the window's edge
// the window moves by one line, and a move past the first or the last line
// is undone. Other keys do nothing.
void message_list_key(const Project& p, MessageListForm& form, int key_code);

// A click on the scroll bar: the window redraws from the new top line, which
// the bar keeps within 1 .. count - 7; the current row keeps its place in the
// window.
void message_list_scroll(const Project& p, MessageListForm& form, int top_line);

// The data check of a Solve command: runs check_input; with findings,
// error_list_mode = -1 and the input list is shown, modal. Returns false when
// a finding forbids the solve (the command ends there).
bool run_input_checks_for_solve(Project& p, Port& port);

// After the result panel: with messages, error_list_mode = 0 and the trial's
// list is shown, modal. Without messages no form appears.
void show_trial_messages(Project& p, Port& port);

} // namespace tobel
