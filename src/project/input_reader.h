// Item reading of text data: whole lines, and items split at blanks, tabs,
// commas and line ends, with the rules of the runtime's sequential input that
// the data file and the grid files were written for.
#pragma once

#include <string>

namespace tobel {

class InputReader {
  public:
    // Reads the whole file as single-byte text. A file that cannot be opened
    // throws RuntimeError(err_file_not_found, path); a device, a pipe or a
    // folder given for a file throws RuntimeError(err_bad_file_name, path).
    explicit InputReader(const std::string& path);

    // Reads text held in memory; `name` stands for the file in error texts.
    static InputReader from_text(std::string text, std::string name = "text");

    // The rest of the current line, without its line end (CR, LF or CR LF).
    std::string line();

    // One item as a number: leading blanks and tabs skipped, the item runs to
    // a blank, tab, comma or line end; blanks after it and then one comma or
    // one line end belong to the same separator. A word gives 0, and so does
    // an empty item (a lone comma or an empty line).
    double number();

    // number() rounded half to even; outside -32768..32767 throws
    // RuntimeError(err_overflow) naming the item.
    long integer16();

    // number() stored as a single; a value beyond the single range throws
    // RuntimeError(err_overflow) naming the item, as storing it would.
    float single();

    // One item as text: leading blanks skipped, runs to the next comma or line
    // end, trailing blanks trimmed. The comma or line end is consumed.
    std::string text_item();

    bool eof() const { return pos_ >= data_.size(); }

    // "<name>, line N" for the line on which the last item or line started.
    std::string where() const;

    // Refuses a count that the tables cannot hold, naming it, its value and
    // where it was read (RuntimeError err_subscript).
    void check_count(const char* what, long value, long low, long high) const;
    int item_line() const { return item_line_; }
    const std::string& name() const { return name_; }

  private:
    InputReader() = default;
    bool at_line_end() const;
    void skip_blanks();
    void take_line_end();
    void start_item(); // throws when nothing is left
    double number(std::string& item);
    std::string data_;
    std::string name_;
    std::size_t pos_ = 0;
    int line_ = 1;
    int item_line_ = 1;
};

} // namespace tobel
