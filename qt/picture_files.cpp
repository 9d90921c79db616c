#include "qt/picture_files.h"

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

#include "qt/qt_app.h"
#include "qt/replay.h"

namespace tobel {

namespace fs = std::filesystem;

namespace {

// Limits of a picture file, chosen to stay within what the painter's raster
// coordinates and a desktop's memory take: 32767 pixels a side, and for an
// image in memory 2^28 pixels (1 GB).
constexpr int max_side = 32767;
constexpr double max_png_pixels = 268435456.0;

[[noreturn]] void fail(const std::string& path, const std::string& what)
{
    throw std::runtime_error("cannot write picture \"" + path + "\": " + what);
}

// The temporary file beside the final one: made here, exclusively, so that
// its name is ours and an unwritable folder shows up before any drawing.
// Removed by the destructor unless it was renamed into place.
class TemporaryFile {
  public:
    TemporaryFile(const std::string& path, const fs::path& folder)
    {
        static std::atomic<unsigned> counter{0};
        const std::string base = fs::path(path).filename().string();
        for (int attempt = 0; attempt < 100; ++attempt) {
            const fs::path name = folder / ("." + base + "." + std::to_string(::getpid()) + "." +
                                            std::to_string(counter++) + ".part");
            const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
            if (fd >= 0) {
                ::close(fd);
                name_ = name;
                return;
            }
            if (errno != EEXIST)
                fail(path, "folder \"" + folder.string() + "\" cannot be written");
        }
        fail(path, "no free temporary name in folder \"" + folder.string() + "\"");
    }
    ~TemporaryFile()
    {
        if (!name_.empty()) {
            std::error_code ec;
            fs::remove(name_, ec);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    QString qt_name() const { return QString::fromStdString(name_.string()); }

    // Puts the finished file in place of `path` (replacing an older one).
    void commit(const std::string& path)
    {
        std::error_code ec;
        fs::rename(name_, fs::path(path), ec);
        if (ec)
            fail(path, "cannot be put in place (" + ec.message() + ")");
        name_.clear();
    }

  private:
    fs::path name_;
};

// The folder a file goes in: it must exist and be a folder.
fs::path folder_of(const std::string& path)
{
    fs::path folder = fs::path(path).parent_path();
    if (folder.empty())
        folder = ".";
    std::error_code ec;
    const fs::file_status st = fs::status(folder, ec);
    if (!fs::exists(st))
        fail(path, "folder \"" + folder.string() + "\" does not exist");
    if (!fs::is_directory(st))
        fail(path, "\"" + folder.string() + "\" is not a folder");
    return folder;
}

void write_png(const DisplayList& list, const TemporaryFile& tmp, const std::string& path, int width,
               int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    if (image.isNull())
        fail(path, "a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                       " pixels is too large");
    image.fill(Qt::white);
    QPainter painter(&image);
    replay(list, painter, QSizeF(width, height));
    painter.end();
    if (!image.save(tmp.qt_name(), "PNG"))
        fail(path, "the PNG file could not be written");
}

void write_svg(const DisplayList& list, const TemporaryFile& tmp, const std::string& path, int width,
               int height)
{
    QSvgGenerator svg;
    svg.setFileName(tmp.qt_name());
    svg.setSize(QSize(width, height));
    svg.setViewBox(QRect(0, 0, width, height));
    svg.setResolution(96);
    QPainter painter;
    if (!painter.begin(&svg))
        fail(path, "the SVG file could not be written");
    replay(list, painter, QSizeF(width, height));
    if (!painter.end())
        fail(path, "the SVG file could not be written");
}

// One page the size of the picture at 96 pixels an inch, with no margins,
// landscape when the picture is wider than high.
void write_pdf(const DisplayList& list, const TemporaryFile& tmp, const std::string& path, int width,
               int height)
{
    QPdfWriter pdf(tmp.qt_name());
    pdf.setResolution(96);
    const double w = width * 72.0 / 96.0, h = height * 72.0 / 96.0;
    const QPageSize page(QSizeF(std::min(w, h), std::max(w, h)), QPageSize::Point, QString(),
                         QPageSize::ExactMatch);
    const QPageLayout layout(page, width > height ? QPageLayout::Landscape : QPageLayout::Portrait,
                             QMarginsF(0, 0, 0, 0), QPageLayout::Point);
    if (!pdf.setPageLayout(layout))
        fail(path, "no PDF page of " + std::to_string(width) + " x " + std::to_string(height) +
                       " pixels can be made");
    QPainter painter;
    if (!painter.begin(&pdf))
        fail(path, "the PDF file could not be written");
    // The page's own pixel size, which may differ from the request by rounding.
    replay(list, painter, QSizeF(pdf.width(), pdf.height()));
    if (!painter.end())
        fail(path, "the PDF file could not be written");
}

} // namespace

std::optional<PictureFormat> picture_format_of(const std::string& path)
{
    std::string ext = fs::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    if (ext == ".png")
        return PictureFormat::png;
    if (ext == ".svg")
        return PictureFormat::svg;
    if (ext == ".pdf")
        return PictureFormat::pdf;
    return std::nullopt;
}

void write_picture(const DisplayList& list, const std::string& path, int width, int height)
{
    // 1. Check the request before anything touches the disc.
    const std::optional<PictureFormat> format = picture_format_of(path);
    if (!format)
        fail(path, "unknown file extension (use .png, .svg or .pdf)");
    if (width <= 0 || height <= 0)
        fail(path, "size " + std::to_string(width) + " x " + std::to_string(height) + " is not positive");
    if (width > max_side || height > max_side)
        fail(path, "size " + std::to_string(width) + " x " + std::to_string(height) + " is larger than " +
                       std::to_string(max_side) + " pixels a side");
    if (*format == PictureFormat::png && double(width) * double(height) > max_png_pixels)
        fail(path, "a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                       " pixels is too large for memory");
    if (fs::path(path).filename().empty())
        fail(path, "no file name");
    const fs::path folder = folder_of(path);
    // 2. Draw into a temporary file beside the final one.
    ensure_gui_application();
    TemporaryFile tmp(path, folder);
    switch (*format) {
    case PictureFormat::png: write_png(list, tmp, path, width, height); break;
    case PictureFormat::svg: write_svg(list, tmp, path, width, height); break;
    case PictureFormat::pdf: write_pdf(list, tmp, path, width, height); break;
    }
    // 3. Only a complete file takes the final name.
    tmp.commit(path);
}

} // namespace tobel
