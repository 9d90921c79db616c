// Item reading of text data: whole lines, and items split at blanks, tabs,
// commas and line ends, with the rules of the runtime's sequential input that
// the data file and the grid files were written for.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tobel {

// The state's name of an item with up to three indices: "unit_weight_water",
// "mat_phi(2)", "section_y(1, 3, 2)". Held as its parts so that naming costs
// nothing while no record is kept.
struct ItemName {
    const char* base = nullptr;
    std::array<int, 3> index{};
    int count = 0;

    ItemName() = default;
    ItemName(const char* b) : base(b) {}
    ItemName(const char* b, int i) : base(b), index{i, 0, 0}, count(1) {}
    ItemName(const char* b, int i, int j) : base(b), index{i, j, 0}, count(2) {}
    ItemName(const char* b, int i, int j, int k) : base(b), index{i, j, k}, count(3) {}
    std::string str() const;
};

// One item as the reader took it, kept while the record is on.
struct ReadItem {
    enum class Kind { number, integer, text, line };
    Kind kind = Kind::number;
    int line = 0;          // file line on which the item started
    std::string text;      // its characters as they stand; empty for an empty item
    double value = 0;      // the value stored: a single, or the rounded integer
    std::string name;      // ItemName::str()
    std::string statement; // the line of the file layout it belongs to: "4", "8b", "10c"
    int instance = 0;      // one per statement read; the items of one reading share it
    bool comma = false;    // a comma ended it
};

class InputReader {
  public:
    // Reads the whole file as single-byte text. A file that cannot be opened
    // throws RuntimeError(err_file_not_found, path); a device, a pipe or a
    // folder given for a file throws RuntimeError(err_bad_file_name, path).
    explicit InputReader(const std::string& path);

    // Reads text held in memory; `name` stands for the file in error texts.
    static InputReader from_text(std::string text, std::string name = "text");

    // The rest of the current line, without its line end (CR, LF or CR LF).
    std::string line(ItemName name = {});

    // One item as a number: leading blanks and tabs skipped, the item runs to
    // a blank, tab, comma or line end; blanks after it and then one comma or
    // one line end belong to the same separator. A word gives 0, and so does
    // an empty item (a lone comma or an empty line).
    double number(ItemName name = {});

    // number() rounded half to even; outside -32768..32767 throws
    // RuntimeError(err_overflow) naming the item.
    long integer16(ItemName name = {});

    // number() stored as a single; a value beyond the single range throws
    // RuntimeError(err_overflow) naming the item, as storing it would.
    float single(ItemName name = {});

    // One item as text: leading blanks skipped, runs to the next comma or line
    // end, trailing blanks trimmed. The comma or line end is consumed.
    std::string text_item(ItemName name = {});

    bool eof() const { return pos_ >= data_.size(); }

    // "<name>, line N" for the line on which the last item or line started.
    std::string where() const;

    // Refuses a count that the tables cannot hold, naming it, its value and
    // where it was read (RuntimeError err_subscript).
    void check_count(const char* what, long value, long low, long high) const;
    int item_line() const { return item_line_; }
    const std::string& name() const { return name_; }

    // The record of items, off unless asked for: tools that look at a file
    // see each item with its line, its text, the value taken and its name.
    // Keeping it changes no value and no error.
    void record_items(bool on) { recording_ = on; }
    const std::vector<ReadItem>& items() const { return items_; }
    // Starts a statement of the file layout (a string literal, "8b"); the
    // items read until the next call belong to it.
    void statement(const char* label)
    {
        statement_ = label;
        ++instance_;
    }
    // The name of the item read last or being read when an error stopped it.
    std::string item_name() const { return current_.str(); }
    // The line the reader has reached, and whether only blanks and line ends
    // are left after it.
    int line_number() const { return line_; }
    bool only_blanks_left() const;

  private:
    InputReader() = default;
    bool at_line_end() const;
    void skip_blanks();
    void take_line_end();
    void start_item(); // throws when nothing is left
    double read_number(std::string& item, ReadItem::Kind kind);
    void record(ReadItem::Kind kind, const std::string& text, double value, bool comma);
    std::string data_;
    std::string name_;
    std::size_t pos_ = 0;
    int line_ = 1;
    int item_line_ = 1;

    bool recording_ = false;
    std::vector<ReadItem> items_;
    const char* statement_ = "";
    int instance_ = 0;
    ItemName current_;
};

} // namespace tobel
