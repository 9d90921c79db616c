#include <gtest/gtest.h>

#include <string>

#include "commands/commands.h"
#include "commands/menu_model.h"
#include "project/runtime_error.h"
#include "project/settings.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScratchDir;

const std::int32_t shipped_layer[15] = {46888,   32456,   53728, 10072702, 30890,   1697070, 36297,  43727,
                                        8361818, 7444951, 24576, 57814,    6778228, 13231,   9408399};
const std::int32_t shipped_piezo[15] = {16750969, 16736075, 16721956, 13972837, 16756600,
                                        16745029, 16733262, 16719973, 16754797, 16739666,
                                        16729391, 15631495, 16759178, 15631495, 16748108};

void expect_shipped_colours(const Project& p)
{
    for (int i = 1; i <= 15; ++i) {
        EXPECT_EQ(p.layer_colour[std::size_t(i)], shipped_layer[i - 1]) << i;
        EXPECT_EQ(p.piezo_colour[std::size_t(i)], shipped_piezo[i - 1]) << i;
    }
    EXPECT_EQ(p.selected_colour, 255);
    EXPECT_EQ(p.sliding_colour, 16711935);
}

// Colours 1..15 of each table, two colours, drive, count and files, a line each.
std::string settings_text(int first_colour, const std::string& drive, const std::string& tail)
{
    std::string s;
    for (int i = 0; i < 30; ++i)
        s += std::to_string(first_colour + i) + "\r\n";
    s += "7\r\n8\r\n" + drive + "\r\n" + tail;
    return s;
}

TEST(settings, missing_file_gives_defaults_without_a_message)
{
    ScratchDir dir;
    Project p;
    p.recent_count = 1;
    p.recent_file[1] = "kept.tob";
    read_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.work_drive, "C:");
    expect_shipped_colours(p);
    EXPECT_EQ(p.recent_count, 1);
    EXPECT_EQ(p.recent_file[1], "kept.tob");
}

TEST(settings, default_colours_fill_the_repeats)
{
    Project p;
    default_colours(p);
    EXPECT_EQ(p.layer_colour[16], 46888);
    EXPECT_EQ(p.layer_colour[30], 9408399);
    EXPECT_EQ(p.layer_colour[31], 46888);
    EXPECT_EQ(p.layer_colour[45], 9408399);
    EXPECT_EQ(p.layer_colour[46], 46888);
    EXPECT_EQ(p.layer_colour[51], 1697070); // entry 6
    EXPECT_EQ(p.piezo_colour[51], 16745029);
}

TEST(settings, reading_a_file_takes_every_item_and_refreshes_the_repeats)
{
    ScratchDir dir;
    test::write_bytes(dir.file("tob.cfg"),
                      settings_text(100, "D:\\work", " 2 \r\nC:\\a.tob\r\nC:\\b.tob\r\n"));
    Project p;
    read_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.layer_colour[1], 100);
    EXPECT_EQ(p.layer_colour[15], 114);
    EXPECT_EQ(p.piezo_colour[1], 115);
    EXPECT_EQ(p.piezo_colour[15], 129);
    EXPECT_EQ(p.selected_colour, 7);
    EXPECT_EQ(p.sliding_colour, 8);
    EXPECT_EQ(p.work_drive, "D:\\work");
    EXPECT_EQ(p.recent_count, 2);
    EXPECT_EQ(p.recent_file[1], "C:\\a.tob");
    EXPECT_EQ(p.recent_file[2], "C:\\b.tob");
    EXPECT_EQ(p.layer_colour[16], 100);
    EXPECT_EQ(p.layer_colour[33], 102);
    EXPECT_EQ(p.layer_colour[51], 105);
    EXPECT_EQ(p.piezo_colour[46], 115);
}

TEST(settings, writing_gives_one_item_a_line_and_refreshes_the_repeats)
{
    ScratchDir dir;
    Project p;
    default_colours(p);
    p.layer_colour[16] = 1; // a stale repeat
    p.work_drive = "C:\\data";
    p.recent_count = 2;
    p.recent_file[1] = "old.tob";
    p.recent_file[2] = "new.tob";
    write_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.layer_colour[16], 46888);

    std::string expected;
    for (auto c : shipped_layer)
        expected += std::to_string(c) + "\r\n";
    for (auto c : shipped_piezo)
        expected += std::to_string(c) + "\r\n";
    expected += "255\r\n16711935\r\nC:\\data\r\n 2 \r\nold.tob\r\nnew.tob\r\n";
    EXPECT_EQ(test::read_bytes(dir.file("tob.cfg")), expected);
}

TEST(settings, written_file_reads_back_the_same)
{
    ScratchDir dir;
    Project p;
    default_colours(p);
    p.layer_colour[3] = 123456;
    p.piezo_colour[15] = 654321;
    p.work_drive = "E:";
    p.recent_count = 4;
    for (int i = 1; i <= 4; ++i)
        p.recent_file[std::size_t(i)] = "f" + std::to_string(i) + ".tob";
    write_settings(p, dir.file("tob.cfg"));
    Project q;
    read_settings(q, dir.file("tob.cfg"));
    EXPECT_EQ(q.layer_colour, p.layer_colour);
    EXPECT_EQ(q.piezo_colour, p.piezo_colour);
    EXPECT_EQ(q.layer_colour[33], 123456);
    EXPECT_EQ(q.work_drive, "E:");
    EXPECT_EQ(q.recent_count, 4);
    EXPECT_EQ(q.recent_file, p.recent_file);
}

TEST(settings, short_file_gives_defaults_but_keeps_recent_files_read_so_far)
{
    ScratchDir dir;
    // Three files promised, one present.
    test::write_bytes(dir.file("tob.cfg"), settings_text(100, "D:", " 3 \r\nfirst.tob\r\n"));
    Project p;
    read_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.work_drive, "C:");
    expect_shipped_colours(p);
    EXPECT_EQ(p.layer_colour[16], 46888);
    EXPECT_EQ(p.recent_file[1], "first.tob");
    EXPECT_EQ(p.recent_count, 3);
}

TEST(settings, more_than_four_recent_files_is_a_bad_file)
{
    ScratchDir dir;
    test::write_bytes(dir.file("tob.cfg"), settings_text(100, "D:", " 5 \r\na\r\nb\r\nc\r\nd\r\ne\r\n"));
    Project p;
    read_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.work_drive, "C:");
    expect_shipped_colours(p);
    EXPECT_EQ(p.recent_file[4], "d");
}

TEST(settings, file_cut_inside_the_colours_gives_all_default_colours)
{
    ScratchDir dir;
    test::write_bytes(dir.file("tob.cfg"), "1\r\n2\r\n3\r\n");
    Project p;
    p.work_drive = "Z:";
    read_settings(p, dir.file("tob.cfg"));
    EXPECT_EQ(p.work_drive, "C:");
    expect_shipped_colours(p);
}

TEST(settings, unwritable_place_throws_path_access)
{
    ScratchDir dir;
    Project p;
    default_colours(p);
    try {
        write_settings(p, dir.file("missing/tob.cfg"));
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_path_access);
    }
}

// With fewer than four files the captions count from the newest while the
// items open recent_file(4 - i), so item 0 opens an empty entry.
TEST(recent_files, three_files_from_settings_caption_newest_first_but_item_0_opens_entry_4)
{
    ScratchDir dir;
    test::write_bytes(dir.file("tob.cfg"), settings_text(100, "C:", " 3 \r\na.tob\r\nb.tob\r\nc.tob\r\n"));
    Project p;
    main_load(p);
    read_settings(p, dir.file("tob.cfg"));
    refresh_recent_menu(p);
    EXPECT_EQ(p.menus.at("FileName(0)").caption, " 1 c.tob");
    EXPECT_EQ(p.menus.at("FileName(2)").caption, " 3 a.tob");
    EXPECT_TRUE(p.menus.at("FileName(2)").visible);
    test::ScriptedPort port;
    file_open_recent(p, port, 0);
    EXPECT_EQ(p.data_file_path, "");
    EXPECT_TRUE(port.dialog_filters.empty());
}

TEST(recent_files, full_list_items_open_what_their_captions_show)
{
    Project p;
    main_load(p);
    p.recent_count = 4;
    for (int i = 1; i <= 4; ++i)
        p.recent_file[std::size_t(i)] = std::string(1, char('a' + i - 1)) + ".tob";
    refresh_recent_menu(p);
    EXPECT_EQ(p.menus.at("FileName(1)").caption, " 2 c.tob");
    test::ScriptedPort port;
    file_open_recent(p, port, 1);
    EXPECT_EQ(p.data_file_path, "c.tob");
}

} // namespace
} // namespace tobel
