// tobel search --across: the classic search for every X of a range and
// every aspect of a list.
#pragma once

#include <string>
#include <vector>

#include "cli.h"
#include "commands/across_search.h"

namespace tobel::cli {

// "X0,X1,DX" and "A1,A2,..." into the plan; throws std::runtime_error naming
// the option and what is wrong. An empty aspect list is left empty.
void parse_across(const std::string& across, const std::string& aspects, AcrossPlan& plan);

// Opens the file, runs the searches through `run` and prints the result
// (text or --json), the picture with --plot; the exit status as for search.
// With --shard K/N the searches k with k % N == K - 1 only, written to --out.
int run_across_search(const SearchOptions& o, const std::string& across, const std::string& aspects,
                      ParallelRunner& run);

// Whether a part file is one of a search across the slope.
bool is_across_part(const std::string& path);

// tobel merge of such parts: checks that they are all the parts of one run
// and prints what the whole run prints.
int merge_across_parts(const std::vector<std::string>& paths, const MergeOptions& m);

} // namespace tobel::cli
