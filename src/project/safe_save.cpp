#include "project/safe_save.h"

#include <filesystem>
#include <fstream>

#include "project/runtime_error.h"

namespace tobel {

void write_file_safely(const std::string& path, const std::string& text)
{
    const std::string temp = path + ".tmp";
    {
        std::ofstream f(temp, std::ios::binary | std::ios::trunc);
        if (!f)
            throw RuntimeError(err_path_access, path);
        f.write(text.data(), std::streamsize(text.size()));
        f.close();
        if (!f) {
            std::error_code ec;
            std::filesystem::remove(temp, ec);
            throw RuntimeError(err_path_access, path);
        }
    }
    std::error_code ec;
    std::filesystem::rename(temp, path, ec);
    if (ec) {
        std::filesystem::remove(temp, ec);
        throw RuntimeError(err_path_access, path);
    }
}

} // namespace tobel
