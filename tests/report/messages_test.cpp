// The trial's message list, the input list and the form that shows either.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "project/defaults.h"
#include "project/runtime_error.h"
#include "report/message_list_form.h"
#include "report/messages.h"
#include "support/scripted_port.h"

using namespace tobel;
using tobel::test::ScriptedPort;

static Project sound_model()
{
    Project p;
    set_defaults(p);
    p.mat_unit_weight[1] = 20;
    p.mat_cohesion[1] = 10;
    p.mat_phi[1] = 30;
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, 1) = 2;
        p.sections.y(s, 1, 1) = 0;
        p.sections.y(s, 2, 1) = 100;
    }
    return p;
}

static Project with_messages(int n)
{
    Project p;
    set_defaults(p);
    for (int k = 1; k <= n; ++k)
        add_message(p, "line " + std::to_string(k));
    return p;
}

TEST(messages, add_message_stores_at_the_next_place)
{
    Project p;
    set_defaults(p);
    add_message(p, "  SURFACE DOES NOT INTERSECT GEOMETRY");
    add_message(p, "TENSION CRACK SPECIFIED TOO DEEP");
    EXPECT_EQ(p.message_count, 2);
    EXPECT_EQ(p.message_text[1], "  SURFACE DOES NOT INTERSECT GEOMETRY");
    EXPECT_EQ(p.message_text[2], "TENSION CRACK SPECIFIED TOO DEEP");
    EXPECT_EQ(trial_messages(p), (std::vector<std::string>{"  SURFACE DOES NOT INTERSECT GEOMETRY",
                                                           "TENSION CRACK SPECIFIED TOO DEEP"}));
}

TEST(messages, same_m_alpha_message_twice_is_kept_twice)
{
    Project p;
    set_defaults(p);
    const std::string m = "M ALPHA = .1 IN COLUMN  12 ROW  3 MAT'L  1";
    add_message(p, m);
    add_message(p, m);
    EXPECT_EQ(p.message_count, 2);
    EXPECT_EQ(trial_messages(p), (std::vector<std::string>{m, m}));
}

TEST(messages, list_holds_5000_lines_and_the_5001st_is_a_runtime_failure)
{
    Project p;
    set_defaults(p);
    for (int k = 1; k <= 5000; ++k)
        add_message(p, "x");
    EXPECT_EQ(p.message_count, 5000);
    try {
        add_message(p, "one too many");
        FAIL() << "the 5001st line was accepted";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_subscript);
    }
    EXPECT_EQ(p.message_count, 5000);
    EXPECT_EQ(p.message_text[5000], "x");
}

TEST(messages, trial_list_after_a_reset_count_is_empty)
{
    Project p = with_messages(3);
    p.message_count = 0; // what the surface check does once per trial
    EXPECT_TRUE(trial_messages(p).empty());
    add_message(p, "new");
    EXPECT_EQ(trial_messages(p), std::vector<std::string>{"new"});
}

TEST(message_list, captions_of_the_two_modes)
{
    Project p = with_messages(3);
    p.check_text = {"", "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"};
    p.check_count = 12;
    EXPECT_EQ(message_list_caption(p, 0), " 3 warnings and errors issued for this trial surface");
    EXPECT_EQ(message_list_caption(p, -1), " 12 data input errors were found");
}

TEST(message_list, opens_at_the_first_line)
{
    Project p = with_messages(3);
    const MessageListForm f = open_message_list(p, 0);
    EXPECT_EQ(f.mode, 0);
    EXPECT_EQ(f.top, 1);
    EXPECT_EQ(f.current, 1);
    Project empty = with_messages(0);
    EXPECT_EQ(open_message_list(empty, 0).current, 0);
    EXPECT_TRUE(message_list_rows(empty, open_message_list(empty, 0)).empty());
}

TEST(message_list, short_list_shows_one_row_a_line_numbered_in_signed_form)
{
    Project p = with_messages(3);
    const auto rows = message_list_rows(p, open_message_list(p, 0));
    EXPECT_EQ(rows, (std::vector<std::string>{" 1\tline 1", " 2\tline 2", " 3\tline 3"}));
}

TEST(message_list, long_list_shows_eight_rows)
{
    Project p = with_messages(12);
    const auto rows = message_list_rows(p, open_message_list(p, 0));
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows.front(), " 1\tline 1");
    EXPECT_EQ(rows.back(), " 8\tline 8");
}

TEST(message_list, input_mode_shows_the_check_findings)
{
    Project p = with_messages(2);
    p.check_text = {"", "No points in section  2, layer  1."};
    p.check_count = 1;
    const MessageListForm f = open_message_list(p, -1);
    EXPECT_EQ(message_list_count(p, -1), 1);
    EXPECT_EQ(message_list_rows(p, f), std::vector<std::string>{" 1\tNo points in section  2, layer  1."});
}

TEST(message_list, down_arrow_moves_the_window_one_line_past_its_edge)
{
    Project p = with_messages(10);
    MessageListForm f = open_message_list(p, 0);
    for (int k = 0; k < 7; ++k)
        message_list_key(p, f, 40);
    EXPECT_EQ(f.current, 8);
    EXPECT_EQ(f.top, 1);
    message_list_key(p, f, 40);
    EXPECT_EQ(f.current, 9);
    EXPECT_EQ(f.top, 2);
    EXPECT_EQ(message_list_rows(p, f).front(), " 2\tline 2");
    EXPECT_EQ(message_list_rows(p, f).back(), " 9\tline 9");
    message_list_key(p, f, 40);
    EXPECT_EQ(f.current, 10);
    EXPECT_EQ(f.top, 3);
}

TEST(message_list, down_arrow_past_the_last_line_is_undone)
{
    Project p = with_messages(10);
    MessageListForm f = open_message_list(p, 0);
    for (int k = 0; k < 9; ++k)
        message_list_key(p, f, 40);
    ASSERT_EQ(f.current, 10);
    message_list_key(p, f, 40);
    EXPECT_EQ(f.current, 10);
    EXPECT_EQ(f.top, 3);

    Project q = with_messages(3);
    MessageListForm g = open_message_list(q, 0);
    for (int k = 0; k < 5; ++k)
        message_list_key(q, g, 40);
    EXPECT_EQ(g.current, 3);
    EXPECT_EQ(g.top, 1);
}

TEST(message_list, up_arrow_moves_the_window_back_and_stops_at_the_first_line)
{
    Project p = with_messages(10);
    MessageListForm f = open_message_list(p, 0);
    for (int k = 0; k < 9; ++k)
        message_list_key(p, f, 40);
    ASSERT_EQ(f.top, 3);
    for (int k = 0; k < 7; ++k)
        message_list_key(p, f, 38);
    EXPECT_EQ(f.current, 3);
    EXPECT_EQ(f.top, 3);
    message_list_key(p, f, 38);
    EXPECT_EQ(f.current, 2);
    EXPECT_EQ(f.top, 2);
    message_list_key(p, f, 38);
    message_list_key(p, f, 38);
    EXPECT_EQ(f.current, 1);
    EXPECT_EQ(f.top, 1);
}

TEST(message_list, other_keys_change_nothing)
{
    Project p = with_messages(10);
    MessageListForm f = open_message_list(p, 0);
    message_list_key(p, f, 13);
    message_list_key(p, f, 37);
    EXPECT_EQ(f.current, 1);
    EXPECT_EQ(f.top, 1);
}

TEST(message_list, scroll_bar_redraws_from_the_new_top_line)
{
    Project p = with_messages(12);
    MessageListForm f = open_message_list(p, 0);
    message_list_key(p, f, 40); // current row is the second of the window
    message_list_scroll(p, f, 3);
    EXPECT_EQ(f.top, 3);
    EXPECT_EQ(f.current, 4);
    const auto rows = message_list_rows(p, f);
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows.front(), " 3\tline 3");
    EXPECT_EQ(rows.back(), " 10\tline 10");
}

TEST(message_list, scroll_bar_stays_within_the_list)
{
    Project p = with_messages(12);
    MessageListForm f = open_message_list(p, 0);
    message_list_scroll(p, f, 40);
    EXPECT_EQ(f.top, 5); // the last eight lines are 5..12
    EXPECT_EQ(message_list_rows(p, f).back(), " 12\tline 12");
    message_list_scroll(p, f, -4);
    EXPECT_EQ(f.top, 1);

    Project q = with_messages(3);
    MessageListForm g = open_message_list(q, 0);
    message_list_scroll(q, g, 2);
    EXPECT_EQ(g.top, 1);
}

TEST(message_list, no_trial_messages_no_form)
{
    Project p = with_messages(0);
    p.error_list_mode = -1;
    ScriptedPort port;
    show_trial_messages(p, port);
    EXPECT_TRUE(port.texts.empty());
    EXPECT_EQ(p.error_list_mode, -1);
}

TEST(message_list, trial_messages_open_the_form_in_trial_mode)
{
    Project p = with_messages(2);
    p.error_list_mode = -1;
    ScriptedPort port;
    show_trial_messages(p, port);
    ASSERT_EQ(port.texts.size(), 1u);
    EXPECT_EQ(port.texts[0].caption, " 2 warnings and errors issued for this trial surface");
    EXPECT_EQ(port.texts[0].lines, (std::vector<std::string>{"line 1", "line 2"}));
    EXPECT_EQ(p.error_list_mode, 0);
}

TEST(message_list, sound_input_shows_no_form_and_lets_the_solve_go_on)
{
    Project p = sound_model();
    ScriptedPort port;
    EXPECT_TRUE(run_input_checks_for_solve(p, port));
    EXPECT_TRUE(port.texts.empty());
    EXPECT_EQ(p.check_count, 0);
}

TEST(message_list, input_list_with_warnings_only_lets_the_solve_go_on)
{
    Project p = sound_model();
    p.sections.y(2, 2, 1) = 90;
    ScriptedPort port;
    EXPECT_TRUE(run_input_checks_for_solve(p, port));
    ASSERT_EQ(port.texts.size(), 1u);
    EXPECT_EQ(port.texts[0].caption, " 1 data input errors were found");
    EXPECT_EQ(port.texts[0].lines,
              std::vector<std::string>{"Layer  1 in section  2 does not extend to right boundary."});
    EXPECT_EQ(p.error_list_mode, -1);
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(message_list, material_error_shows_the_list_and_stops_the_solve)
{
    Project p = sound_model();
    p.mat_unit_weight[1] = 0;
    p.sections.y(1, 1, 1) = 3;
    ScriptedPort port;
    EXPECT_FALSE(run_input_checks_for_solve(p, port));
    ASSERT_EQ(port.texts.size(), 1u);
    EXPECT_EQ(port.texts[0].caption, " 2 data input errors were found");
    EXPECT_EQ(port.texts[0].lines,
              (std::vector<std::string>{"Material # 1: properties incorrect!",
                                        "Layer  1 in section  1 does not extend to left boundary."}));
    EXPECT_EQ(p.error_list_mode, -1);
    EXPECT_EQ(p.check_fatal, -1);
}
