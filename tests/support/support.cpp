#include <atomic>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel::test {

ScratchDir::ScratchDir()
{
    static std::atomic<int> counter{0};
    path = std::filesystem::temp_directory_path() /
           ("tobel-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
}

ScratchDir::~ScratchDir()
{
    std::error_code ec;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all, ec);
    std::filesystem::remove_all(path, ec);
}

std::string read_bytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void write_bytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
}

} // namespace tobel::test
