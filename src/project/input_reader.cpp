#include "project/input_reader.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "project/numtext.h"
#include "project/runtime_error.h"

namespace tobel {

InputReader::InputReader(const std::string& path) : name_(path)
{
    // Only a plain file has an end: a device or a pipe named in a data file
    // would be read for ever.
    std::error_code ec;
    const auto kind = std::filesystem::status(path, ec).type();
    if (kind == std::filesystem::file_type::not_found)
        throw RuntimeError(err_file_not_found, path);
    if (!ec && kind != std::filesystem::file_type::regular)
        throw RuntimeError(err_bad_file_name, path);
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw RuntimeError(err_file_not_found, path);
    data_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad())
        throw RuntimeError(err_io, path);
}

InputReader InputReader::from_text(std::string text, std::string name)
{
    InputReader r;
    r.data_ = std::move(text);
    r.name_ = std::move(name);
    return r;
}

std::string ItemName::str() const
{
    if (!base)
        return {};
    std::string s = base;
    if (count > 0) {
        s += '(';
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                s += ", ";
            s += std::to_string(index[std::size_t(i)]);
        }
        s += ')';
    }
    return s;
}

void InputReader::record(ReadItem::Kind kind, const std::string& text, double value, bool comma)
{
    if (!recording_)
        return;
    ReadItem r;
    r.kind = kind;
    r.line = item_line_;
    r.text = text;
    r.value = value;
    r.name = current_.str();
    r.statement = statement_;
    r.instance = instance_;
    r.comma = comma;
    items_.push_back(std::move(r));
}

bool InputReader::only_blanks_left() const
{
    // A Ctrl-Z ended text files of old editors.
    for (std::size_t i = pos_; i < data_.size(); ++i)
        if (data_[i] != ' ' && data_[i] != '\t' && data_[i] != '\r' && data_[i] != '\n' && data_[i] != '\x1a')
            return false;
    return true;
}

std::string InputReader::where() const
{
    return name_ + ", line " + std::to_string(item_line_);
}

bool InputReader::at_line_end() const
{
    return !eof() && (data_[pos_] == '\r' || data_[pos_] == '\n');
}

void InputReader::skip_blanks()
{
    while (!eof() && (data_[pos_] == ' ' || data_[pos_] == '\t'))
        ++pos_;
}

// CR LF, a lone CR and a lone LF each end one line.
void InputReader::take_line_end()
{
    if (eof())
        return;
    if (data_[pos_] == '\r') {
        ++pos_;
        if (!eof() && data_[pos_] == '\n')
            ++pos_;
        ++line_;
    } else if (data_[pos_] == '\n') {
        ++pos_;
        ++line_;
    }
}

void InputReader::start_item()
{
    item_line_ = line_;
    if (eof())
        throw RuntimeError(err_input_past_end, where());
}

std::string InputReader::line(ItemName name)
{
    current_ = name;
    start_item();
    const std::size_t from = pos_;
    while (!eof() && !at_line_end())
        ++pos_;
    std::string s = data_.substr(from, pos_ - from);
    take_line_end();
    record(ReadItem::Kind::line, s, 0, false);
    return s;
}

double InputReader::number(ItemName name)
{
    current_ = name;
    std::string item;
    return read_number(item, ReadItem::Kind::number);
}

double InputReader::read_number(std::string& item, ReadItem::Kind kind)
{
    item.clear();
    skip_blanks();
    start_item();
    // An empty item: the comma or the empty line is the whole of it.
    if (data_[pos_] == ',') {
        ++pos_;
        record(kind, item, 0, true);
        return 0;
    }
    if (at_line_end()) {
        take_line_end();
        record(kind, item, 0, false);
        return 0;
    }
    const std::size_t from = pos_;
    while (!eof() && data_[pos_] != ' ' && data_[pos_] != '\t' && data_[pos_] != ',' && !at_line_end())
        ++pos_;
    item = data_.substr(from, pos_ - from);
    // Blanks after the item and one comma or line end make one separator.
    skip_blanks();
    const bool comma = !eof() && data_[pos_] == ',';
    if (comma)
        ++pos_;
    else
        take_line_end();
    const double x = val(item);
    record(kind, item, x, comma);
    return x;
}

long InputReader::integer16(ItemName name)
{
    current_ = name;
    std::string item;
    const double x = read_number(item, ReadItem::Kind::integer);
    if (!(x >= -32768.5 && x <= 32767.5))
        throw RuntimeError(err_overflow, where() + ": " + item);
    const long n = cint(x);
    if (n < -32768 || n > 32767)
        throw RuntimeError(err_overflow, where() + ": " + item);
    if (recording_)
        items_.back().value = double(n);
    return n;
}

float InputReader::single(ItemName name)
{
    current_ = name;
    std::string item;
    const float x = float(read_number(item, ReadItem::Kind::number));
    if (!std::isfinite(x))
        throw RuntimeError(err_overflow, where() + ": " + item);
    if (recording_)
        items_.back().value = double(x);
    return x;
}

std::string InputReader::text_item(ItemName name)
{
    current_ = name;
    skip_blanks();
    start_item();
    const std::size_t from = pos_;
    while (!eof() && data_[pos_] != ',' && !at_line_end())
        ++pos_;
    std::string s = data_.substr(from, pos_ - from);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.pop_back();
    const bool comma = !eof() && data_[pos_] == ',';
    if (comma)
        ++pos_;
    else
        take_line_end();
    record(ReadItem::Kind::text, s, 0, comma);
    return s;
}

void InputReader::check_count(const char* what, long value, long low, long high) const
{
    if (value < low || value > high)
        throw RuntimeError(err_subscript, where() + ": " + what + " " + std::to_string(value) +
                                              " exceeds the limits " + std::to_string(low) + ".." +
                                              std::to_string(high));
}

} // namespace tobel
