// The files the desktop sessions open and compare: the shipped examples by
// name, and a file's whole content.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace tobel::test {

inline std::string example(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/examples/" + name;
}

inline std::string read_all(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

} // namespace tobel::test
