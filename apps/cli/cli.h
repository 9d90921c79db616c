// Subcommands of the command-line program.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"

namespace tobel::cli {

int run_info(const std::vector<std::string>& args);
int run_solve(const std::vector<std::string>& args);
int run_script(const std::vector<std::string>& args);
int run_export(const std::vector<std::string>& args);

// Shared by the subcommands.
std::string json_string(const std::string& s);
int method_number(const std::string& name);  // 0 when unknown
const char* method_name(int method);
void print_project(const Project& p, std::ostream& out);

} // namespace tobel::cli
