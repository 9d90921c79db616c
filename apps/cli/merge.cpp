// tobel merge: the parts of a grid search shared among several runs
// (`tobel search --shard K/N --out PART.json`), replayed in the order of the
// centres: the result is that of the whole search in one run.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "search_across.h"
#include "search_parts.h"

namespace tobel::cli {

void add_merge_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<MergeOptions>();
    auto* sub = app.add_subcommand(
        "merge",
        "replay the parts of a shared grid search (search --shard K/N --out PART.json) as one search");
    sub->add_option("parts", o->parts, "PART.json files, one of each shard")->required();
    add_settings_option(*sub);
    sub->add_option("--json", o->json_out, "OUT: also write the result as `search --json` prints it");
    sub->add_flag("--trials", o->trials, "list every recorded trial");
    sub->add_option("--summary", o->summary, "OUT.txt: save the search summary table");
    sub->callback([o, &run] { run = [o] { return run_merge(*o); }; });
}

// The parts must be those of one run, one of each shard, each whole.
static std::shared_ptr<MergedParts> check_parts(const std::vector<SearchPart>& parts)
{
    const SearchPart& first = parts.front();
    std::vector<const SearchPart*> by_shard(std::size_t(first.shards) + 1, nullptr);
    auto merged = std::make_shared<MergedParts>();
    for (const SearchPart& part : parts) {
        if (part.fingerprint != first.fingerprint || part.shards != first.shards ||
            part.centres != first.centres)
            throw std::runtime_error(part.path + " belongs to another search than " + first.path +
                                     " (its data file, settings or number of shards differ)");
        if (part.shard < 1 || part.shard > part.shards)
            throw std::runtime_error(part.path + " holds shard " + std::to_string(part.shard) + " of " +
                                     std::to_string(part.shards));
        const SearchPart*& seen = by_shard[std::size_t(part.shard)];
        if (seen != nullptr)
            throw std::runtime_error(part.path + " repeats shard " + std::to_string(part.shard) + " of " +
                                     seen->path);
        seen = &part;
        long expected = part.shard - 1;
        for (const CentreOutcome& o : part.outcomes) {
            if (o.index != expected)
                throw std::runtime_error(part.path + " is incomplete: centre " + std::to_string(expected) +
                                         " of shard " + std::to_string(part.shard) + " is missing");
            merged->outcomes[o.index] = o;
            expected += part.shards;
        }
        if (expected < part.centres)
            throw std::runtime_error(part.path + " is incomplete: centre " + std::to_string(expected) +
                                     " of shard " + std::to_string(part.shard) + " is missing");
    }
    for (int k = 1; k <= first.shards; ++k)
        if (by_shard[std::size_t(k)] == nullptr)
            throw std::runtime_error("the parts are incomplete: shard " + std::to_string(k) + "/" +
                                     std::to_string(first.shards) + " is missing");
    return merged;
}

int run_merge(MergeOptions& o)
{
    if (!o.parts.empty() && is_across_part(o.parts.front()))
        return merge_across_parts(o.parts, o);
    std::vector<SearchPart> parts;
    std::shared_ptr<MergedParts> merged;
    try {
        for (const std::string& path : o.parts)
            parts.push_back(read_search_part(path));
        merged = check_parts(parts);
        const SearchSettings& s = parts.front().settings;
        if (!std::filesystem::exists(s.file))
            throw std::runtime_error("the data file " + s.file + " of " + parts.front().path +
                                     " cannot be found");
        if (search_fingerprint(s) != parts.front().fingerprint)
            throw std::runtime_error("the data file " + s.file + " has changed since " + parts.front().path +
                                     " was written");
    } catch (const std::exception& e) {
        std::cerr << "tobel merge: " << e.what() << "\n";
        return exit_bad_input;
    }
    const SearchPart& first = parts.front();
    SearchOptions so;
    so.trial.file = first.settings.file;
    so.trial.method = first.settings.method;
    so.grid = true;
    so.composite = first.settings.composite;
    so.valid_only = first.settings.valid_only;
    so.trials = o.trials;
    so.summary = o.summary;

    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = so.trial.answer;
    port.show_windows = false;
    port.show_progress = true;
    p.search.exchange = merged;
    if (!run_stored_search(p, port, so.trial, true, so.composite, so.valid_only))
        return exit_bad_input;
    if (p.search.point_last + 1 != first.centres) {
        std::cerr << "tobel merge: " << first.settings.file << " gives " << p.search.point_last + 1
                  << " centres, the parts " << first.centres << "\n";
        return exit_bad_input;
    }
    if (o.json_out.empty())
        return report_search(p, port, so, nullptr);
    std::ofstream json(o.json_out, std::ios::binary | std::ios::trunc);
    if (!json) {
        std::cerr << "tobel merge: cannot write " << o.json_out << "\n";
        return exit_bad_input;
    }
    return report_search(p, port, so, &json);
}

} // namespace tobel::cli
