// Number and text helpers shared by every file, message and report: the
// rounding and conversion rules of the system's runtime.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tobel {

// Nearest integer, ties to the even one (CInt). Not a number, or a value
// beyond the 32-bit integers, throws RuntimeError(err_overflow).
long cint(double x);

// Floor (Int), with the same Overflow.
long vb_int(double x);

// General text of a single: the shortest form of up to 7 significant digits,
// no trailing zeros, no zero before the point (.5, -.5), exponent form with a
// sign and at least two digits (1E+07, 1.5E-05) when the decimal exponent is
// 7 or more or below -4.
std::string general_text(float x);

// General text of a double (up to 15 significant digits, same forms).
std::string general_text_double(double x);

// Signed text form (Str): the general text with one leading blank unless the
// number is negative.
std::string str(float x);
std::string str(double x);
std::string str(long x);
std::string str(int x);
std::string str(short x);

// Longest leading number of the text, 0 when there is none (Val). Leading
// blanks and tabs are skipped.
double val(std::string_view text);

// Writes x by a mask of 0 (required digit), # (optional digit), the decimal
// point and the thousands comma. Rounds half away from zero on the decimal
// digits of the value: a single is taken at 7 significant digits, a double at
// 15, so 2.675 shows as 2.68 with two decimals.
std::string format(double x, std::string_view mask);
std::string format(float x, std::string_view mask);

// One output line built item by item as a print statement whose items are
// separated by commas: after each item but the last, blanks up to the next
// print zone (zones of 14 columns starting at columns 1, 15, 29, ...) lying
// beyond the print position.
class PrintLine {
  public:
    PrintLine& number(float x);          // " 1.5 " or "-1.5 "
    PrintLine& integer(long x);          // " 3 " or "-3 "
    PrintLine& text(std::string_view s); // as it stands
    const std::string& str() const { return line_; }

  private:
    void next_zone();
    std::string line_;
    bool first_ = true;
};

// The item of a number in a print statement: sign blank, general text, blank.
std::string print_item(float x);
std::string print_item(long x);

} // namespace tobel
