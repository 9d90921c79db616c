// Runs a fuzz target's input routine once on each file named on the command
// line (folders are read file by file, in name order), without libFuzzer. The
// checked build of the tests uses it to replay the seeds and every input that
// once failed, so that they stay fixed with every compiler.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> inputs_of(const std::filesystem::path& arg)
{
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(arg)) {
        for (const auto& e : std::filesystem::directory_iterator(arg))
            if (e.is_regular_file())
                files.push_back(e.path());
        std::sort(files.begin(), files.end());
    } else {
        files.push_back(arg);
    }
    return files;
}

} // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int a = 1; a < argc; ++a) {
        if (!std::filesystem::exists(argv[a])) {
            std::fprintf(stderr, "replay: %s does not exist\n", argv[a]);
            return 2;
        }
        // Inputs are read before the routine runs: it may change the
        // current folder.
        for (const auto& f : inputs_of(std::filesystem::absolute(argv[a]))) {
            std::ifstream in(f, std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(in),
                                          std::istreambuf_iterator<char>()};
            std::printf("replay: %s\n", f.string().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("replay: %d inputs\n", count);
    return count > 0 ? 0 : 1;
}
