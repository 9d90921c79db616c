#include "project/numtext.h"

#include "project/runtime_error.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tobel {

// A value that has no integer (not a number, or beyond the integers the
// runtime holds) is its Overflow error, never an undefined conversion.
static long checked_integer(double rounded)
{
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
        throw RuntimeError(err_overflow, "the value " + general_text_double(rounded) + " has no integer");
    return long(rounded);
}

long cint(double x)
{
    return checked_integer(std::nearbyint(x)); // default rounding mode: ties to even
}

long vb_int(double x)
{
    return checked_integer(std::floor(x));
}

// %G gives the exponent rule wanted (exponent form below 1E-04 and from
// 1E+precision on) and drops trailing zeros; only the zero before the point
// has to go.
static std::string general_form(double x, int digits)
{
    if (x == 0)
        return "0";
    char buf[48];
    std::snprintf(buf, sizeof buf, "%.*G", digits, x);
    std::string s = buf;
    if (s.rfind("0.", 0) == 0)
        s.erase(0, 1);
    else if (s.rfind("-0.", 0) == 0)
        s.erase(1, 1);
    return s;
}

std::string general_text(float x)
{
    return general_form(double(x), 7);
}
std::string general_text_double(double x)
{
    return general_form(x, 15);
}

static std::string signed_form(std::string s)
{
    return s[0] == '-' ? s : " " + s;
}

std::string str(float x)
{
    return signed_form(general_text(x));
}
std::string str(double x)
{
    return signed_form(general_text_double(x));
}
std::string str(long x)
{
    return signed_form(std::to_string(x));
}
std::string str(int x)
{
    return str(long(x));
}
std::string str(short x)
{
    return str(long(x));
}

double val(std::string_view t)
{
    std::size_t i = 0;
    while (i < t.size() && (t[i] == ' ' || t[i] == '\t'))
        ++i;
    std::string num;
    if (i < t.size() && (t[i] == '+' || t[i] == '-'))
        num += t[i++];
    bool digits = false;
    while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i])))
        num += t[i++], digits = true;
    if (i < t.size() && t[i] == '.') {
        num += t[i++];
        while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i])))
            num += t[i++], digits = true;
    }
    if (!digits)
        return 0;
    if (i < t.size() && (t[i] == 'E' || t[i] == 'e' || t[i] == 'D' || t[i] == 'd')) {
        std::size_t j = i + 1;
        std::string e = "E";
        if (j < t.size() && (t[j] == '+' || t[j] == '-'))
            e += t[j++];
        bool ed = false;
        while (j < t.size() && std::isdigit(static_cast<unsigned char>(t[j])))
            e += t[j++], ed = true;
        if (ed)
            num += e;
    }
    return std::strtod(num.c_str(), nullptr);
}

// Decimal digits of |x| rounded half away from zero to `decimals` places,
// starting from `sig` significant digits of the binary value.
static std::string fixed_digits(double ax, int sig, int decimals)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*e", sig - 1, ax);
    // buf: d.ddddde[+-]xx
    std::string mant;
    for (const char* c = buf; *c && *c != 'e'; ++c)
        if (*c != '.')
            mant += *c;
    int exp10 = std::atoi(std::strchr(buf, 'e') + 1);
    // Value = 0.mant * 10^(exp10 + 1). Place the digits on a fixed grid.
    int int_digits = exp10 + 1;
    std::string intpart, frac;
    for (int k = 0; k < int(mant.size()); ++k) {
        int pos = k - int_digits; // <0: integer part, >=0: fraction index
        if (pos < 0)
            intpart += mant[std::size_t(k)];
        else {
            while (int(frac.size()) < pos)
                frac += '0';
            frac += mant[std::size_t(k)];
        }
    }
    while (int(intpart.size()) < int_digits)
        intpart += '0';
    if (int_digits < 0)
        frac = std::string(std::size_t(-int_digits), '0') + mant;
    if (intpart.empty())
        intpart = "0";
    // Round half away from zero at `decimals`.
    bool up = int(frac.size()) > decimals && frac[std::size_t(decimals)] >= '5';
    frac.resize(std::size_t(decimals), '0');
    std::string all = intpart + frac;
    if (up) {
        int k = int(all.size()) - 1;
        while (k >= 0 && all[std::size_t(k)] == '9')
            all[std::size_t(k--)] = '0';
        if (k < 0)
            all.insert(all.begin(), '1');
        else
            ++all[std::size_t(k)];
    }
    std::size_t ip = all.size() - std::size_t(decimals);
    std::string ipart = all.substr(0, ip);
    while (ipart.size() > 1 && ipart[0] == '0')
        ipart.erase(0, 1);
    return ipart + "." + all.substr(ip);
}

static std::string format_digits(double x, std::string_view mask, int sig)
{
    const std::size_t point = mask.find('.');
    const std::string_view ipart_mask = mask.substr(0, point);
    const std::string_view fpart_mask = point == std::string_view::npos ? "" : mask.substr(point + 1);
    int req_int = 0, decimals = 0, req_dec = 0;
    bool comma = false;
    for (char c : ipart_mask) {
        if (c == '0')
            ++req_int;
        if (c == ',')
            comma = true;
    }
    for (char c : fpart_mask) {
        if (c == '0' || c == '#')
            ++decimals;
        if (c == '0')
            req_dec = decimals;
    }
    if (!std::isfinite(x))
        return general_text_double(x);
    std::string fixed = fixed_digits(std::fabs(x), sig, decimals);
    std::size_t dot = fixed.find('.');
    std::string ip = fixed.substr(0, dot), fp = fixed.substr(dot + 1);
    while (int(fp.size()) > req_dec && !fp.empty() && fp.back() == '0')
        fp.pop_back();
    if (ip == "0")
        ip = "";
    while (int(ip.size()) < req_int)
        ip.insert(ip.begin(), '0');
    if (comma)
        for (int k = int(ip.size()) - 3; k > 0; k -= 3)
            ip.insert(std::size_t(k), ",");
    bool zero = true;
    for (char c : ip + fp)
        if (c != '0' && c != ',')
            zero = false;
    std::string out = (x < 0 && !zero) ? "-" : "";
    out += ip;
    if (point != std::string_view::npos && (!fp.empty() || fpart_mask.empty()))
        out += "." + fp;
    return out;
}

std::string format(double x, std::string_view mask)
{
    return format_digits(x, mask, 15);
}
std::string format(float x, std::string_view mask)
{
    return format_digits(double(x), mask, 7);
}

std::string print_item(float x)
{
    std::string g = general_text(x);
    return (g[0] == '-' ? g : " " + g) + " ";
}

std::string print_item(long x)
{
    return str(x) + " ";
}

void PrintLine::next_zone()
{
    if (first_) {
        first_ = false;
        return;
    }
    // The print position is the column of the next character, 1-based.
    const std::size_t pos = line_.size() + 1;
    const std::size_t next = ((pos - 1) / 14 + 1) * 14 + 1;
    line_.append(next - pos, ' ');
}

PrintLine& PrintLine::number(float x)
{
    next_zone();
    line_ += print_item(x);
    return *this;
}

PrintLine& PrintLine::integer(long x)
{
    next_zone();
    line_ += print_item(x);
    return *this;
}

PrintLine& PrintLine::text(std::string_view s)
{
    next_zone();
    line_ += s;
    return *this;
}

} // namespace tobel
