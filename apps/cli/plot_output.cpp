#include "plot_output.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <unistd.h>

#include "qt/picture_files.h"
#include "qt/qt_app.h"

namespace tobel::cli {

void parse_picture_size(const std::string& text, int& width, int& height)
{
    const auto x = text.find_first_of("xX");
    auto whole = [&](const std::string& part, int& out) {
        if (part.empty() || part.size() > 6 || part.find_first_not_of("0123456789") != std::string::npos)
            return false;
        out = std::stoi(part);
        return out >= 1 && out <= 20000;
    };
    if (x == std::string::npos || !whole(text.substr(0, x), width) || !whole(text.substr(x + 1), height))
        throw std::runtime_error("--size takes WxH, two whole numbers of pixels from 1 to 20000, not '" +
                                 text + "'");
}

void check_picture_path(const std::string& path)
{
    if (!picture_format_of(path))
        throw std::runtime_error("cannot write '" + path +
                                 "': the picture's name must end in .png, .svg or .pdf");
    namespace fs = std::filesystem;
    fs::path folder = fs::path(path).parent_path();
    if (folder.empty())
        folder = ".";
    std::error_code ec;
    if (!fs::is_directory(folder, ec))
        throw std::runtime_error("cannot write '" + path + "': the folder '" + folder.string() +
                                 "' does not exist");
    if (::access(folder.c_str(), W_OK) != 0)
        throw std::runtime_error("cannot write '" + path + "': the folder '" + folder.string() +
                                 "' cannot be written");
}

bool write_picture_file(const DisplayList& picture, const std::string& path, int width, int height)
{
    try {
        ensure_gui_application();
        write_picture(picture, path, width, height);
        return true;
    } catch (const std::exception& e) {
        std::cerr << "tobel: " << e.what() << "\n";
        return false;
    }
}

void use_picture_size(Project& p, int width, int height)
{
    p.view.picture_width = float(width);
    p.view.picture_height = float(height);
}

} // namespace tobel::cli
