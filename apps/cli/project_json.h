// The JSON form of the .TOB data file: the same items under their names, for
// people and scripts to read and write. docs/project.schema.json describes the
// document and docs/data-file.md the file.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "project/project.h"

namespace tobel::cli {

// A stored single as JSON wants it: the double nearest to the shortest text
// of 6 to 9 significant digits that reads back as the same single, so that
// 0.1f shows as 0.1 and not as 0.10000000149011612.
double json_float(float x);

// The document of the data file items held in `p`, with the word of the last
// line given as eq_coef_is_zero (True is written when the earthquake
// coefficient is 0). Stored singles go in by json_float; whole ones as
// integers.
nlohmann::ordered_json project_to_json(const Project& p, bool eq_coef_is_zero);

// Reads a .TOB as File > Open reads it (reset_project, then every item) but
// loads no grid file: the document names them. The last line's word is kept
// as the file holds it. A file the reader refuses throws its RuntimeError.
nlohmann::ordered_json data_file_to_json(const std::string& tob_path);

// Fills `p` from a document, as reading the file the document stands for
// would: reset_project first, the counts from the arrays, the grids sized,
// eq_coef left 0. Returns eq_coef_is_zero. A bad document throws
// std::runtime_error whose text starts with the JSON path of the offending
// item ("materials[2].mat_phi: expected a number"); arrays count from 0 there.
// The project is then left as far as the filling got.
bool json_to_project(const nlohmann::ordered_json& doc, Project& p);

// The .TOB text the program's own writer gives for the document.
std::string json_to_data_file_text(const nlohmann::ordered_json& doc);

// Writes the .TOB of a document beside the target first and then in its
// place, without touching the recent files. A bad document throws before
// anything is written; a failed write throws RuntimeError(err_path_access).
void json_to_data_file(const nlohmann::ordered_json& doc, const std::string& tob_path);

// The document as text, indented by two, with arrays of plain values (a point
// [y, z]) kept on one line; ends with a line end.
std::string project_json_text(const nlohmann::ordered_json& doc);

} // namespace tobel::cli
