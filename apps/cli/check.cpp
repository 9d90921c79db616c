#include "check.h"

#include <ostream>

#include <nlohmann/json.hpp>

#include "cli.h"
#include "commands/input_review.h"

namespace tobel::cli {

int check_file(const std::string& path, bool json, std::ostream& out)
{
    const Review review = review_data_file(path);
    const int status = !review.readable ? exit_bad_input : review.findings.empty() ? exit_ok : exit_stopped;
    if (json) {
        auto list = nlohmann::ordered_json::array();
        for (const auto& f : review.findings)
            list.push_back({{"file", path},
                            {"line", f.line},
                            {"item", f.item},
                            {"text", latin1_to_utf8(f.text)},
                            {"serious", f.serious}});
        // A path is the system's; bytes that are not UTF-8 are replaced.
        out << list.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
        return status;
    }
    int serious = 0;
    for (const auto& f : review.findings) {
        out << path << ":";
        if (f.line > 0)
            out << f.line << ":";
        out << " " << (f.item.empty() ? "" : f.item + ": ") << f.text << "\n";
        serious += f.serious ? 1 : 0;
    }
    for (const auto& note : review.notes)
        out << path << ": note: " << note << "\n";
    const auto n = review.findings.size();
    out << path << ": ";
    if (!review.readable)
        out << "cannot be read; ";
    if (n == 0)
        out << "nothing to question\n";
    else
        out << n << (n == 1 ? " finding" : " findings") << ", " << serious << " serious\n";
    return status;
}

} // namespace tobel::cli
