#include "commands/input_review.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <new>
#include <optional>

#include "commands/commands.h"
#include "commands/surface_commands.h"
#include "geometry/grid_file.h"
#include "geometry/surface_stack.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/validity.h"
#include "surfaces/grid_surface.h"

namespace tobel {

namespace {

// Answers as the command line does by default and keeps every box's text, so
// that nothing is shown and what would have been can be reported.
class RecordingPort : public QuietPort {
  public:
    std::vector<std::string> boxes;
    Answer message_box(const std::string& text, Buttons buttons, Icon icon, const std::string& title) override
    {
        boxes.push_back(text);
        return QuietPort::message_box(text, buttons, icon, title);
    }
};

// Length of the leading number of the text as val() takes it: sign, digits,
// point, digits, and an exponent only when it has digits.
std::size_t leading_number_length(const std::string& t)
{
    std::size_t i = 0;
    if (i < t.size() && (t[i] == '+' || t[i] == '-'))
        ++i;
    bool digits = false;
    while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i])))
        ++i, digits = true;
    if (i < t.size() && t[i] == '.') {
        ++i;
        while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i])))
            ++i, digits = true;
    }
    if (!digits)
        return 0;
    if (i < t.size() && (t[i] == 'E' || t[i] == 'e' || t[i] == 'D' || t[i] == 'd')) {
        std::size_t j = i + 1;
        if (j < t.size() && (t[j] == '+' || t[j] == '-'))
            ++j;
        const std::size_t from = j;
        while (j < t.size() && std::isdigit(static_cast<unsigned char>(t[j])))
            ++j;
        if (j > from)
            i = j;
    }
    return i;
}

bool is_number(const std::string& t)
{
    return !t.empty() && leading_number_length(t) == t.size();
}

bool is_numeric(const ReadItem& r)
{
    return r.kind == ReadItem::Kind::number || r.kind == ReadItem::Kind::integer;
}

std::string value_text(const ReadItem& r)
{
    return r.kind == ReadItem::Kind::integer ? std::to_string(long(r.value)) : general_text(float(r.value));
}

bool same_word(const std::string& a, const char* b)
{
    std::string u = a;
    std::transform(u.begin(), u.end(), u.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return u == b;
}

// The items of one reading of a statement, first to last, in the record.
struct Group {
    std::size_t first = 0, last = 0;
};

std::vector<Group> statement_groups(const std::vector<ReadItem>& items)
{
    std::vector<Group> groups;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (groups.empty() || items[i].instance != items[groups.back().first].instance)
            groups.push_back({i, i});
        else
            groups.back().last = i;
    }
    return groups;
}

void review_token(const std::vector<ReadItem>& items, std::size_t i, bool shifted, std::vector<Finding>& out)
{
    const ReadItem& r = items[i];
    const bool same_line_before = i > 0 && items[i - 1].line == r.line;
    if (r.kind == ReadItem::Kind::text) {
        if (r.comma)
            out.push_back({r.line, r.name,
                           "the name stops at a comma: '" + r.text +
                               "' is taken, and the rest of the line is read as the next items",
                           true});
        return;
    }
    if (!is_numeric(r) || shifted)
        return;
    // The last line holds a truth word, which reads as 0 on purpose.
    if (r.statement == "18") {
        if (!same_word(r.text, "true") && !same_word(r.text, "false"))
            out.push_back({r.line, r.name,
                           (r.text.empty() ? std::string("nothing") : "'" + r.text + "'") +
                               " where the word True or False is expected; read as " + value_text(r),
                           r.value != 0});
        return;
    }
    if (r.text.empty()) {
        const std::string what = r.comma            ? "an empty item before a comma"
                                 : same_line_before ? "an empty item after a comma at the end of the line"
                                                    : "an empty line where a number is expected";
        out.push_back({r.line, r.name, what + "; read as 0", true});
        return;
    }
    if (!is_number(r.text)) {
        out.push_back({r.line, r.name, "'" + r.text + "' is not a number; read as " + value_text(r), true});
        return;
    }
    if (r.kind == ReadItem::Kind::integer && val(r.text) != r.value)
        out.push_back(
            {r.line, r.name, "'" + r.text + "' is not a whole number; read as " + value_text(r), true});
    // A decimal comma: the writer never separates numbers by commas.
    if (r.comma && i + 1 < items.size()) {
        const ReadItem& next = items[i + 1];
        if (next.line == r.line && is_numeric(next) && !next.text.empty())
            out.push_back({r.line, r.name,
                           "'" + r.text + "," + next.text +
                               "' holds a comma, which separates items: read as " + value_text(r) + " for " +
                               r.name + " and " + value_text(next) + " for " + next.name +
                               ", and every later item moves on by one",
                           true});
    }
}

} // namespace

namespace {

// A stretch read out of step: from the first statement whose items are not
// on a line of their own to the last before three statements in step again.
// Only its first finding is told; the rest follow from it.
struct Episode {
    std::size_t finding = 0;
    int first_line = 0, last_line = 0;
    bool to_end = false;
};

std::optional<Finding> statement_finding(const std::vector<ReadItem>& items, const std::vector<Group>& groups,
                                         std::size_t g)
{
    const ReadItem& head = items[groups[g].first];
    const ReadItem& tail = items[groups[g].last];
    const std::size_t count = groups[g].last - groups[g].first + 1;
    // Items left over on a line go to the next statement.
    if (g > 0 && items[groups[g - 1].last].line == head.line) {
        const Group& before = groups[g - 1];
        const ReadItem& prev = items[before.first];
        const std::size_t prev_count = before.last - before.first + 1;
        std::string text;
        if (head.kind == ReadItem::Kind::line)
            text = "the rest of the line, '" + head.text + "', is read as " + head.name + " (line " +
                   head.statement + " of the format)";
        else
            text = "more items than the " + std::to_string(prev_count) + " of line " + prev.statement +
                   " of the format: " + (head.text.empty() ? "an empty item" : "'" + head.text + "'") +
                   " is read as " + head.name + " (line " + head.statement + " of the format)";
        return Finding{head.line, head.name, text + ", and every later item moves on", true};
    }
    // A line short of items takes them from the next.
    if (tail.line != head.line) {
        std::size_t k = groups[g].first;
        while (items[k].line == head.line)
            ++k;
        return Finding{head.line, items[k].name,
                       "fewer items than the " + std::to_string(count) + " of line " + head.statement +
                           " of the format: " + items[k].name + " is read from line " +
                           std::to_string(items[k].line) + ", and every later item moves on",
                       true};
    }
    return std::nullopt;
}

std::vector<Episode> statement_episodes(const std::vector<ReadItem>& items, std::vector<Finding>& out)
{
    std::vector<Episode> episodes;
    const auto groups = statement_groups(items);
    bool in_episode = false;
    int in_step = 0;
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const ReadItem& head = items[groups[g].first];
        const ReadItem& tail = items[groups[g].last];
        if (auto f = statement_finding(items, groups, g)) {
            if (!in_episode) {
                out.push_back(*f);
                episodes.push_back({out.size() - 1, head.line, tail.line, false});
                in_episode = true;
            }
            episodes.back().last_line = std::max(episodes.back().last_line, tail.line);
            in_step = 0;
            continue;
        }
        if (!in_episode)
            continue;
        const bool next_shares = g + 1 < groups.size() && items[groups[g + 1].first].line == tail.line;
        if (tail.line == head.line && !next_shares) {
            if (++in_step >= 3)
                in_episode = false;
            continue;
        }
        in_step = 0;
        episodes.back().last_line = std::max(episodes.back().last_line, tail.line);
    }
    if (in_episode) {
        episodes.back().to_end = true;
        episodes.back().last_line = items.back().line;
    }
    for (const auto& e : episodes) {
        if (e.to_end)
            out[e.finding].text += "; the items stay out of step to the end of the file";
        else if (e.last_line > e.first_line)
            out[e.finding].text += "; the items are out of step down to line " + std::to_string(e.last_line);
    }
    return episodes;
}

} // namespace

// Line order, findings without a line last.
static void sort_by_line(std::vector<Finding>& findings)
{
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        const long la = a.line > 0 ? a.line : 0x7fffffffL, lb = b.line > 0 ? b.line : 0x7fffffffL;
        return la < lb;
    });
}

std::vector<Finding> review_items(const std::vector<ReadItem>& items)
{
    std::vector<Finding> structure;
    const auto episodes = statement_episodes(items, structure);
    std::vector<Finding> out;
    for (std::size_t i = 0; i < items.size(); ++i) {
        // Within a stretch read out of step a word where a number belongs
        // is a consequence, not news.
        bool shifted = false;
        for (const auto& e : episodes)
            shifted = shifted || (items[i].line > e.first_line && items[i].line <= e.last_line);
        review_token(items, i, shifted, out);
    }
    out.insert(out.end(), structure.begin(), structure.end());
    sort_by_line(out);
    return out;
}

namespace {

// The line and item of a name in the record; the last reading of it.
const ReadItem* find_item(const std::vector<ReadItem>& items, const std::string& name)
{
    for (auto it = items.rbegin(); it != items.rend(); ++it)
        if (it->name == name)
            return &*it;
    return nullptr;
}

Finding finding_at(const std::vector<ReadItem>& items, const std::string& name, std::string text,
                   bool serious)
{
    const ReadItem* r = find_item(items, name);
    return {r ? r->line : 0, name, std::move(text), serious};
}

// Crossings that the rebuild corrected between the sections' points, which
// the review of the lines cannot see; those it saw are not said twice.
void review_rebuild_boxes(const Project& p, const std::vector<std::string>& boxes,
                          const std::vector<ReadItem>& items, std::vector<Finding>& out)
{
    const std::string prefix = "Line crossing conflict has been corrected by adjusting surface";
    for (const auto& box : boxes) {
        if (box.rfind(prefix, 0) != 0)
            continue;
        const int surface = std::atoi(box.c_str() + prefix.size());
        const std::string tag = "(" + std::to_string(surface) + ")";
        const std::string crossing = surface_item_caption(p, surface) + " rises above ";
        bool seen = false;
        for (const auto& f : out)
            seen = seen || f.text.rfind(crossing, 0) == 0;
        if (!seen)
            out.push_back(
                finding_at(items, "surf_method" + tag, box + ", between the points of the sections", false));
    }
}

// Builds the stored single ellipsoid as its form's Continue does and solves
// it with Bishop's method, silently; a result that is not valid is a finding.
void review_trial(Project& p, RecordingPort& port, const std::vector<ReadItem>& items, Review& review)
{
    const std::string what = "the stored single ellipsoid";
    if (p.check_fatal) {
        review.notes.push_back(what + " was not solved: the input checks refuse the materials");
        return;
    }
    if (p.single_y == 0 && p.single_z == 0) {
        review.notes.push_back(what +
                               " was not solved: the file holds no centre (single_y and single_z are 0)");
        return;
    }
    const std::size_t boxes = port.boxes.size();
    if (!confirm_surface(p, port, SurfaceCommand::ellipsoid)) {
        std::string why = port.boxes.size() > boxes ? ": " + port.boxes.back() : "";
        review.notes.push_back(what + " was not solved: no sliding surface could be built" + why);
        return;
    }
    p.solution_method = 1;
    p.solve_interactive = 0;
    check_surface(p);
    try {
        solve_bishop_janbu(p, port);
    } catch (const RuntimeError& e) {
        p.factor_of_safety = 0;
        review.notes.push_back(what + ": " + error_report_text(e));
    }
    const ResultFlaw flaw = result_flaw(p);
    if (flaw == ResultFlaw::none)
        return;
    const char* item = "single_z";
    if (flaw == ResultFlaw::moves_towards_plus_y || flaw == ResultFlaw::no_driving_force)
        item = "single_y";
    else if (flaw == ResultFlaw::outside_geometry || flaw == ResultFlaw::no_active_column)
        item = "tangent_z";
    review.findings.push_back(
        finding_at(items, item, what + ", solved by Bishop's method: " + result_flaw_text(flaw), true));
}

// The rest of Open once the items are read: the grid files, the menus, the
// stack. Problems of a grid file become findings on its name.
void finish_open(Project& p, RecordingPort& port, const std::vector<ReadItem>& items, Review& review)
{
    for (int k = 1; k <= p.sliding_index; ++k) {
        if (p.surf_method[k] != 1)
            continue;
        const std::size_t boxes = port.boxes.size();
        read_grid_file(p, p.surf_grd_file[k], k, port);
        for (std::size_t b = boxes; b < port.boxes.size(); ++b)
            review.findings.push_back(
                finding_at(items, "surf_grd_file(" + std::to_string(k) + ")", port.boxes[b], true));
    }
    show_project_menus(p);
    reset_forces(p);
    port.boxes.clear();
    rebuild_surfaces(p, port);
}

} // namespace

bool read_recorded_items(const std::string& path, std::vector<ReadItem>& items)
{
    items.clear();
    Project p;
    set_defaults(p);
    reset_project(p);
    std::optional<InputReader> in;
    try {
        in.emplace(path);
        in->record_items(true);
        read_data_items(p, *in);
    } catch (const std::exception&) {
        if (in)
            items = in->items();
        return false;
    }
    items = in->items();
    return true;
}

Review review_data_file(const std::string& path)
{
    Review review;
    Project p;
    main_load(p);
    reset_project(p);
    p.data_file_path = path;
    RecordingPort port;

    std::vector<ReadItem> items;
    std::optional<InputReader> in;
    try {
        try {
            in.emplace(path);
            in->record_items(true);
            read_data_items(p, *in);
        } catch (const RuntimeError&) {
            throw;
        } catch (const std::bad_alloc&) {
            throw RuntimeError(err_out_of_memory, std::string());
        } catch (const std::exception& e) {
            throw RuntimeError(err_io, e.what(), true);
        }
    } catch (const RuntimeError& e) {
        review.readable = false;
        review.read_error = error_report_text(e);
    }
    if (in)
        items = in->items();
    review.findings = review_items(items);

    if (!review.readable) {
        sort_by_line(review.findings);
        const int line = in ? in->item_line() : 0;
        review.findings.push_back({line, in ? in->item_name() : std::string(), review.read_error, true});
        review.notes.push_back("the values were not reviewed: the file could not be read to its end");
        return review;
    }
    if (!in->only_blanks_left())
        review.findings.push_back(
            {in->line_number(), "eq_coef",
             "the file goes on after its last line (True or False): the rest is not read", true});

    finish_open(p, port, items, review);
    auto values = review_values(p, items);
    review_rebuild_boxes(p, port.boxes, items, values);
    review.findings.insert(review.findings.end(), values.begin(), values.end());
    review_trial(p, port, items, review);

    sort_by_line(review.findings);
    return review;
}

} // namespace tobel
