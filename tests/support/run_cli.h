// Runs the command-line program as a user would and keeps what it printed
// and its exit status. TOBEL_CLI names the program (set for each test
// program by the build).
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace tobel::test {

struct RunResult {
    int status = -1;
    std::string out;
};

// `redirect` is appended to the command: " 2>&1" keeps standard error with
// the output, " 2>/dev/null" drops it.
inline RunResult run_cli_command(const std::string& cmd)
{
    RunResult r;
    FILE* f = popen(cmd.c_str(), "r");
    if (!f)
        return r;
    std::array<char, 4096> buf;
    std::size_t n;
    while ((n = fread(buf.data(), 1, buf.size(), f)) > 0)
        r.out.append(buf.data(), n);
    const int st = pclose(f);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return r;
}

inline RunResult run_cli(const std::string& args, const char* redirect = " 2>&1")
{
    return run_cli_command(std::string(TOBEL_CLI) + " " + args + redirect);
}

// The same, run from the folder `dir`, as a user who changed to it.
inline RunResult run_cli_in(const std::string& dir, const std::string& args, const char* redirect = " 2>&1")
{
    return run_cli_command("cd '" + dir + "' && " + std::string(TOBEL_CLI) + " " + args + redirect);
}

} // namespace tobel::test
