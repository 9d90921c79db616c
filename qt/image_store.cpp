#include "qt/image_store.h"

#include <QImageReader>

namespace tobel {

std::optional<ImageHandle> ImageStore::load(const std::string& path)
{
    QImageReader reader(QString::fromStdString(path));
    // A scanned drawing may be large; Qt's default cap of 256 MB would refuse
    // a 600 dpi A0 sheet, which an engineer may well calibrate against.
    reader.setAllocationLimit(1024);
    QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    const int id = next_++;
    images_[id] = std::move(image);
    return ImageHandle{id, images_[id].width(), images_[id].height()};
}

void ImageStore::unload(const ImageHandle& image)
{
    images_.erase(image.id);
}

const QImage* ImageStore::find(int id) const
{
    const auto it = images_.find(id);
    return it == images_.end() ? nullptr : &it->second;
}

} // namespace tobel
