// The runtime's number rules: rounding, general text, parsing, masks and
// print zones. Every expected text below is worked out by hand.
#include <gtest/gtest.h>

#include <string>

#include "project/numtext.h"

using namespace tobel;

static std::string blanks(int n)
{
    return std::string(std::size_t(n), ' ');
}

TEST(numtext, cint_rounds_ties_to_even)
{
    EXPECT_EQ(cint(0.5), 0);
    EXPECT_EQ(cint(1.5), 2);
    EXPECT_EQ(cint(2.5), 2);
    EXPECT_EQ(cint(3.5), 4);
    EXPECT_EQ(cint(-0.5), 0);
    EXPECT_EQ(cint(-1.5), -2);
    EXPECT_EQ(cint(-2.5), -2);
}

TEST(numtext, cint_rounds_non_ties_to_nearest)
{
    EXPECT_EQ(cint(2.4999), 2);
    EXPECT_EQ(cint(2.5001), 3);
    EXPECT_EQ(cint(-2.6), -3);
    EXPECT_EQ(cint(32767.4), 32767);
}

TEST(numtext, vb_int_is_floor)
{
    EXPECT_EQ(vb_int(-0.5), -1);
    EXPECT_EQ(vb_int(0.999), 0);
    EXPECT_EQ(vb_int(-1.0), -1);
    EXPECT_EQ(vb_int(-1.0001), -2);
    EXPECT_EQ(vb_int(7.0), 7);
}

TEST(numtext, str_of_integers_has_sign_blank)
{
    EXPECT_EQ(str(5), " 5");
    EXPECT_EQ(str(-5), "-5");
    EXPECT_EQ(str(0), " 0");
    EXPECT_EQ(str(long(123456)), " 123456");
    EXPECT_EQ(str(short(-32768)), "-32768");
}

TEST(numtext, str_of_singles_uses_general_text)
{
    EXPECT_EQ(str(0.5f), " .5");
    EXPECT_EQ(str(-0.5f), "-.5");
    EXPECT_EQ(str(9.81f), " 9.81");
    EXPECT_EQ(str(1e7f), " 1E+07");
}

TEST(numtext, str_of_double_keeps_fifteen_digits)
{
    EXPECT_EQ(str(0.1), " .1");
    EXPECT_EQ(str(1.0 / 3.0), " .333333333333333");
    EXPECT_EQ(str(-2.25), "-2.25");
}

TEST(numtext, general_text_drops_zero_before_point)
{
    EXPECT_EQ(general_text(0.5f), ".5");
    EXPECT_EQ(general_text(-0.5f), "-.5");
    EXPECT_EQ(general_text(0.0001f), ".0001");
    EXPECT_EQ(general_text(-0.25f), "-.25");
}

TEST(numtext, general_text_exponent_forms)
{
    EXPECT_EQ(general_text(1e7f), "1E+07");
    EXPECT_EQ(general_text(1.5e-5f), "1.5E-05");
    EXPECT_EQ(general_text(12345678.f), "1.234568E+07");
    EXPECT_EQ(general_text(-12345678.f), "-1.234568E+07");
    EXPECT_EQ(general_text(1e-5f), "1E-05");
    EXPECT_EQ(general_text(1.70141e38f), "1.70141E+38");
}

TEST(numtext, general_text_plain_forms)
{
    EXPECT_EQ(general_text(float(100.0 / 49.0)), "2.040816");
    EXPECT_EQ(general_text(9.81f), "9.81");
    EXPECT_EQ(general_text(1234567.f), "1234567");
    EXPECT_EQ(general_text(9999999.f), "9999999");
    EXPECT_EQ(general_text(0.f), "0");
    EXPECT_EQ(general_text(-0.f), "0");
    EXPECT_EQ(general_text(62.4f), "62.4");
    EXPECT_EQ(general_text(100.f), "100");
    EXPECT_EQ(general_text(-3.f), "-3");
}

TEST(numtext, general_text_rounds_to_seven_digits)
{
    // 1/3 in single is .3333333432674408; seven digits give .3333333.
    EXPECT_EQ(general_text(1.0f / 3.0f), ".3333333");
    // 2/3 in single is .6666666865348816, rounded up in the seventh digit.
    EXPECT_EQ(general_text(2.0f / 3.0f), ".6666667");
}

TEST(numtext, val_takes_leading_number)
{
    EXPECT_DOUBLE_EQ(val("  12.5abc"), 12.5);
    EXPECT_DOUBLE_EQ(val("abc"), 0.0);
    EXPECT_DOUBLE_EQ(val("True"), 0.0);
    EXPECT_DOUBLE_EQ(val("False"), 0.0);
    EXPECT_DOUBLE_EQ(val("-3E2x"), -300.0);
    EXPECT_DOUBLE_EQ(val(""), 0.0);
    EXPECT_DOUBLE_EQ(val("-.5"), -0.5);
    EXPECT_DOUBLE_EQ(val(".25"), 0.25);
    EXPECT_DOUBLE_EQ(val("\t7"), 7.0);
    EXPECT_DOUBLE_EQ(val("1.5E-05"), 1.5e-5);
    EXPECT_DOUBLE_EQ(val("1.5.3"), 1.5);
    EXPECT_DOUBLE_EQ(val("2E"), 2.0);
    EXPECT_DOUBLE_EQ(val("-"), 0.0);
    EXPECT_DOUBLE_EQ(val("+4"), 4.0);
    EXPECT_DOUBLE_EQ(val("*.GRD"), 0.0);
}

TEST(numtext, format_four_decimals)
{
    EXPECT_EQ(format(0.5, "#0.0000"), "0.5000");
    EXPECT_EQ(format(1.23456, "#0.0000"), "1.2346");
    EXPECT_EQ(format(-1.23456, "#0.0000"), "-1.2346");
    EXPECT_EQ(format(12.0, "#0.0000"), "12.0000");
    EXPECT_EQ(format(123.0, "#0.0000"), "123.0000");
}

TEST(numtext, format_two_decimals)
{
    EXPECT_EQ(format(12345.678, "####0.00"), "12345.68");
    EXPECT_EQ(format(3.14159, "###0.00"), "3.14");
    EXPECT_EQ(format(1234567.891, "######0.00"), "1234567.89");
    EXPECT_EQ(format(-7.0, "###0.00"), "-7.00");
    EXPECT_EQ(format(0.0, "###0.00"), "0.00");
}

TEST(numtext, format_rounds_half_away_from_zero)
{
    EXPECT_EQ(format(2.675, "0.00"), "2.68");
    EXPECT_EQ(format(0.125, "0.00"), "0.13");
    EXPECT_EQ(format(-0.125, "0.00"), "-0.13");
    EXPECT_EQ(format(2.5, "##0"), "3");
    EXPECT_EQ(format(1.5, "##0"), "2");
    EXPECT_EQ(format(-2.5, "##0"), "-3");
    EXPECT_EQ(format(0.000005, "#0.00000"), "0.00001");
    EXPECT_EQ(format(99.95, "####0.0"), "100.0");
    EXPECT_EQ(format(2.675f, "0.00"), "2.68");
}

TEST(numtext, format_integer_mask)
{
    EXPECT_EQ(format(0.4, "##0"), "0");
    EXPECT_EQ(format(42.49, "##0"), "42");
    EXPECT_EQ(format(999.5, "##0"), "1000"); // more digits than the mask still show
    EXPECT_EQ(format(-12.0, "##0"), "-12");
}

TEST(numtext, format_values_rounding_to_zero_carry_no_sign)
{
    EXPECT_EQ(format(-0.004, "####0.00"), "0.00");
    EXPECT_EQ(format(-0.4, "##0"), "0");
    EXPECT_EQ(format(0.00000449, "#0.00000"), "0.00000");
}

TEST(numtext, format_thousands_separator)
{
    EXPECT_EQ(format(1234567.891, "#,##0.00"), "1,234,567.89");
    EXPECT_EQ(format(999.999, "#,##0.00"), "1,000.00");
    EXPECT_EQ(format(12.0, "#,##0.00"), "12.00");
    EXPECT_EQ(format(-1234.5, "#,##0.00"), "-1,234.50");
    EXPECT_EQ(format(0.0, "#,##0.00"), "0.00");
    EXPECT_EQ(format(100000.0, "#,##0.00"), "100,000.00");
}

TEST(numtext, format_other_masks)
{
    EXPECT_EQ(format(1.234565, "#0.00000"), "1.23457"); // 1.23456500000000 at 15 digits
    EXPECT_EQ(format(45.25, "####0.0"), "45.3");
    EXPECT_EQ(format(-45.25, "####0.0"), "-45.3");
    EXPECT_EQ(format(1e20, "0.00"), "100000000000000000000.00");
}

TEST(numtext, print_item_forms)
{
    EXPECT_EQ(print_item(1.5f), " 1.5 ");
    EXPECT_EQ(print_item(-1.5f), "-1.5 ");
    EXPECT_EQ(print_item(0.5f), " .5 ");
    EXPECT_EQ(print_item(long(3)), " 3 ");
    EXPECT_EQ(print_item(long(-3)), "-3 ");
}

TEST(numtext, print_line_single_item_has_no_padding)
{
    EXPECT_EQ(PrintLine().integer(7).str(), " 7 ");
    EXPECT_EQ(PrintLine().text("abc").str(), "abc");
    EXPECT_EQ(PrintLine().number(-2.5f).str(), "-2.5 ");
}

TEST(numtext, print_line_pads_to_zone_starts)
{
    // " 1 " ends at column 3, the next item starts at column 15.
    EXPECT_EQ(PrintLine().integer(1).integer(2).str(), " 1 " + blanks(11) + " 2 ");
    // Third item at column 29.
    EXPECT_EQ(PrintLine().integer(1).integer(2).integer(3).str(),
              " 1 " + blanks(11) + " 2 " + blanks(11) + " 3 ");
    // Text items carry no blanks of their own.
    EXPECT_EQ(PrintLine().text("x").text("y").str(), "x" + blanks(13) + "y");
}

TEST(numtext, print_line_item_filling_a_zone_moves_a_whole_zone)
{
    // "-1.234568E+07 " is 14 characters: the print position is column 15, and
    // the next zone start beyond it is column 29.
    EXPECT_EQ(PrintLine().number(-12345678.f).integer(1).str(), "-1.234568E+07 " + blanks(14) + " 1 ");
    // Thirteen characters leave the position at column 14, so column 15 follows.
    EXPECT_EQ(PrintLine().text("abcdefghijklm").integer(1).str(), "abcdefghijklm" + blanks(1) + " 1 ");
}

TEST(numtext, print_line_long_item_goes_to_following_zone)
{
    // 17 characters: position 18, next zone at 29.
    EXPECT_EQ(PrintLine().text("abcdefghijklmnopq").text("z").str(), "abcdefghijklmnopq" + blanks(11) + "z");
    // 28 characters: position 29, next zone at 43.
    const std::string t28(28, 'a');
    EXPECT_EQ(PrintLine().text(t28).text("z").str(), t28 + blanks(14) + "z");
}
