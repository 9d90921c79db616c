// A grid search shared among several runs: each run (a shard) evaluates the
// centres k with k % shards == shard - 1 and writes their outcomes to a part
// file; merging the parts replays every centre in order, as one run would.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "project/project.h"
#include "search/centre_outcome.h"

namespace tobel::cli {

// What makes two runs the same search: the data file's bytes and the
// settings that change a trial.
struct SearchSettings {
    std::string file;
    int method = 1;
    bool composite = false;
    bool valid_only = false;
};

// FNV-1a of the file and the settings, as 16 hex digits. Throws
// std::runtime_error when the file cannot be read.
std::string search_fingerprint(const SearchSettings& s);

// "K/N" with 1 <= K <= N; throws std::runtime_error otherwise.
void parse_shard(const std::string& text, int& shard, int& shards);

// A float as JSON and back, bit for bit: through double, which holds it
// exactly; NaN and the infinities as text.
nlohmann::ordered_json put_float(float x);
float get_float(const nlohmann::json& j);

// Outcomes to JSON and back, every float bit for bit.
nlohmann::ordered_json outcome_json(const CentreOutcome& o);
CentreOutcome outcome_from_json(const nlohmann::json& j);

// The shard's side: evaluates its share and keeps the outcomes.
class ShardRun : public CentreExchange {
  public:
    ShardRun(int shard, int shards) : shard_(shard), shards_(shards) {}
    bool evaluates(long k) const override { return k % shards_ == shard_ - 1; }
    bool replays() const override { return false; }
    void evaluated(const CentreOutcome& o) override { outcomes.push_back(o); }
    CentreOutcome given(long k) override;
    std::vector<CentreOutcome> outcomes;

  private:
    int shard_, shards_;
};

// The merge's side: every centre comes from a part.
class MergedParts : public CentreExchange {
  public:
    bool evaluates(long) const override { return false; }
    bool replays() const override { return true; }
    CentreOutcome given(long k) override;
    std::map<long, CentreOutcome> outcomes;
};

// A part file as written by a shard.
struct SearchPart {
    std::string path; // where it was read from
    std::string fingerprint;
    SearchSettings settings;
    int shard = 0, shards = 0;
    long centres = 0; // the grid's centres, all shards together
    std::vector<CentreOutcome> outcomes;
};

void write_search_part(const SearchPart& part, const std::string& path);
// Throws std::runtime_error naming the file when it is not a part.
SearchPart read_search_part(const std::string& path);

} // namespace tobel::cli
