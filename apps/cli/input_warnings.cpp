// Input the reader took although an engineer would question it, said on
// standard error around a result.
#include <iostream>

#include "cli.h"
#include "commands/input_review.h"

namespace tobel::cli {

void explain_fatal_checks(const Project& p, std::ostream& out)
{
    // The program's own findings first, as the desktop program shows them,
    // then each refused property by name so the engineer knows what to fix.
    out << "tobel: the input checks refused the data:";
    for (int i = 1; i <= p.check_count && i < int(p.check_text.size()); ++i)
        out << "\n  " << p.check_text[std::size_t(i)];
    for (int m = 1; m <= p.num_mat_entries; ++m) {
        const std::string problem = material_property_problem(p, m);
        if (!problem.empty())
            out << "\n  Material # " << m << " (" << p.mat_name[std::size_t(m)] << "): " << problem;
    }
    out << "\n";
}

void warn_about_tokens(const Project&, const std::string& file)
{
    std::vector<ReadItem> items;
    if (!read_recorded_items(file, items))
        return; // the reading itself has already said what is wrong
    for (const Finding& f : review_items(items))
        std::cerr << "tobel: warning: " << file << ":" << f.line << ": " << f.item << ": " << f.text << "\n";
}

} // namespace tobel::cli
