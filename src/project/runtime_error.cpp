#include "project/runtime_error.h"

#include "project/numtext.h"

namespace tobel {

std::string error_description(int number)
{
    switch (number) {
    case err_overflow: return "Overflow";
    case err_out_of_memory: return "Out of memory";
    case err_subscript: return "Subscript out of range";
    case err_division_by_zero: return "Division by zero";
    case err_type_mismatch: return "Type mismatch";
    case err_bad_file_name: return "Bad file name or number";
    case err_file_not_found: return "File not found";
    case err_io: return "Device I/O error";
    case err_input_past_end: return "Input past end of file";
    case err_path_access: return "Path/File access error";
    case err_path_not_found: return "Path not found";
    default: return "Application-defined or object-defined error";
    }
}

static std::string describe(int number, const std::string& where)
{
    return where.empty() ? error_description(number) : error_description(number) + " (" + where + ")";
}

RuntimeError::RuntimeError(int number, const std::string& where)
    : std::runtime_error(describe(number, where)), number_(number), description_(describe(number, where))
{
}

RuntimeError::RuntimeError(int number, const std::string& description, bool)
    : std::runtime_error(description), number_(number), description_(description)
{
}

std::string error_report_text(const RuntimeError& e)
{
    return "Error #" + str(long(e.number())) + " occured: " + e.description();
}

} // namespace tobel
