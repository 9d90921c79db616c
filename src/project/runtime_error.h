// Run-time errors of file commands and solutions. Readers and writers throw
// them; the command that started the work catches them and shows
// "Error #" + number + " occured: " + description. They never cross a command.
#pragma once

#include <stdexcept>
#include <string>

namespace tobel {

enum ErrorNumber : int {
    err_overflow = 6,
    err_out_of_memory = 7,
    err_subscript = 9,
    err_division_by_zero = 11,
    err_type_mismatch = 13,
    err_bad_file_name = 52,
    err_file_not_found = 53,
    err_io = 57,
    err_input_past_end = 62,
    err_path_access = 75,
    err_path_not_found = 76,
};

// The runtime's own wording of an error number.
std::string error_description(int number);

class RuntimeError : public std::runtime_error {
  public:
    // `where` names the file and line, added to the runtime's description.
    RuntimeError(int number, const std::string& where);
    RuntimeError(int number, const std::string& description, bool verbatim);
    int number() const { return number_; }
    const std::string& description() const { return description_; }

  private:
    int number_;
    std::string description_;
};

// "Error #" + Str(number) + " occured: " + description, the misspelling kept.
std::string error_report_text(const RuntimeError& e);

} // namespace tobel
