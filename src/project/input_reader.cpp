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

std::string InputReader::line()
{
    start_item();
    const std::size_t from = pos_;
    while (!eof() && !at_line_end())
        ++pos_;
    std::string s = data_.substr(from, pos_ - from);
    take_line_end();
    return s;
}

double InputReader::number()
{
    std::string item;
    return number(item);
}

double InputReader::number(std::string& item)
{
    item.clear();
    skip_blanks();
    start_item();
    // An empty item: the comma or the empty line is the whole of it.
    if (data_[pos_] == ',') {
        ++pos_;
        return 0;
    }
    if (at_line_end()) {
        take_line_end();
        return 0;
    }
    const std::size_t from = pos_;
    while (!eof() && data_[pos_] != ' ' && data_[pos_] != '\t' && data_[pos_] != ',' && !at_line_end())
        ++pos_;
    item = data_.substr(from, pos_ - from);
    // Blanks after the item and one comma or line end make one separator.
    skip_blanks();
    if (!eof() && data_[pos_] == ',')
        ++pos_;
    else
        take_line_end();
    return val(item);
}

long InputReader::integer16()
{
    std::string item;
    const double x = number(item);
    if (!(x >= -32768.5 && x <= 32767.5))
        throw RuntimeError(err_overflow, where() + ": " + item);
    const long n = cint(x);
    if (n < -32768 || n > 32767)
        throw RuntimeError(err_overflow, where() + ": " + item);
    return n;
}

float InputReader::single()
{
    std::string item;
    const float x = float(number(item));
    if (!std::isfinite(x))
        throw RuntimeError(err_overflow, where() + ": " + item);
    return x;
}

std::string InputReader::text_item()
{
    skip_blanks();
    start_item();
    const std::size_t from = pos_;
    while (!eof() && data_[pos_] != ',' && !at_line_end())
        ++pos_;
    std::string s = data_.substr(from, pos_ - from);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.pop_back();
    if (!eof() && data_[pos_] == ',')
        ++pos_;
    else
        take_line_end();
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
