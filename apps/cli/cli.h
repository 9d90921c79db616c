// Subcommands of the command-line program.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"
#include "ui/port.h"

namespace tobel::cli {

int run_info(const std::vector<std::string>& args);
int run_solve(const std::vector<std::string>& args);
int run_script(const std::vector<std::string>& args);
int run_export(const std::vector<std::string>& args);
int run_search(const std::vector<std::string>& args);
int run_report(const std::vector<std::string>& args);
int run_convert(const std::vector<std::string>& args);

// The settings file named by --settings, read at the main window's load and
// written when the command ends; without it no settings file is touched.
void set_settings_path(const std::string& path);
void start_project(Project& p);
void finish_project(Project& p, Port& port);

// Shared by the subcommands.
std::string json_string(const std::string& s);
int method_number(const std::string& name); // 0 when unknown
const char* method_name(int method);
void print_project(const Project& p, std::ostream& out);

} // namespace tobel::cli
