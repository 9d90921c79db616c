// Locations for tests: the source tree's examples and a fresh scratch folder.
#pragma once

#include <filesystem>
#include <string>

namespace tobel::test {

inline std::string example_path(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/examples/" + name;
}

// A new empty folder under the system's temporary folder, removed by the destructor.
struct ScratchDir {
    std::filesystem::path path;
    ScratchDir();
    ~ScratchDir();
    std::string file(const std::string& name) const { return (path / name).string(); }
};

// The whole content of a file, bytes as they are.
std::string read_bytes(const std::string& path);
void write_bytes(const std::string& path, const std::string& bytes);

} // namespace tobel::test
