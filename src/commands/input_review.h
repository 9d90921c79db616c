// A data file looked at as a careful engineer would before trusting a result:
// items the reader took otherwise than they stand, statements whose items
// moved to other lines, values outside their sense, section lines that do not
// hold together, the input checks, and the stored single ellipsoid solved once.
// Each finding names the file line and the item.
#pragma once

#include <string>
#include <vector>

#include "project/input_reader.h"
#include "project/project.h"

namespace tobel {

struct Finding {
    int line = 0;     // line of the file, 0 when the finding has none
    std::string item; // the state's name of the item, "mat_phi(2)"
    std::string text;
    // The value in use is not what the file means, or a solution would be
    // refused or would mislead; otherwise a warning.
    bool serious = false;
};

struct Review {
    std::vector<Finding> findings;  // in the order of the file's lines
    std::vector<std::string> notes; // what was not looked at, and why
    bool readable = true;           // false: the file could not be read to its end
    std::string read_error;         // the Open command's error text when not readable
};

// Reads the file as File > Open does (the grid files too, the stack rebuilt),
// keeping the record of items, and reviews what it read. Never shows or asks
// anything. A file that cannot be read gives readable = false, the findings
// of the items read before the error, and the error itself as the last one.
Review review_data_file(const std::string& path);

// Reads the items of the data file into a project of its own with the
// record on, as read_data_file reads them, grid files aside. False when the
// file cannot be read to its end; `items` then holds those read before.
bool read_recorded_items(const std::string& path, std::vector<ReadItem>& items);

// The findings of the recorded items alone: tokens that are not numbers,
// empty items, a comma inside a number, statements whose items run on to
// the next line, lines with items left over for the next statement.
std::vector<Finding> review_items(const std::vector<ReadItem>& items);

// The findings over the project as read, lines taken from the record: values
// outside their sense, section lines, crossing layers, the input checks with
// the property that makes a material incorrect. Runs check_input, which
// fills the project's check list.
std::vector<Finding> review_values(Project& p, const std::vector<ReadItem>& items);

// One property that makes check_input call material m incorrect: its item
// and what is wrong with it.
struct MaterialProblem {
    std::string item; // "mat_cohesion(2)"
    std::string text; // "cohesion -5 is below 0"
};

// The problems of material m in the order of check_input's findings for it,
// one per finding; empty when it has none.
std::vector<MaterialProblem> material_problems(const Project& p, int m);

// The same as one text, the problems joined by "; " and each with its item:
// "mat_cohesion(2): cohesion -5 is below 0". Empty when none.
std::string material_property_problem(const Project& p, int m);

} // namespace tobel
