#include "platform/graphics/file_pictures.h"

#include <compare>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include "platform/base/weak_map.h"
#include "platform/graphics/image_file.h"

namespace platform {
namespace {

struct Key {
    FileState file;
    int scale;
    auto operator<=>(const Key&) const = default;
};
struct Shown {
    std::mutex mutex;
    WeakMap<Key, ImageData> originals;
};

// Never destroyed: a host's static objects load pictures until the process ends.
Shown& OfProcess() {
    static Shown* const shown = new Shown;
    return *shown;
}

std::shared_ptr<ImageData> FindShown(const Key& key) {
    if (key.file.IsEmpty()) return {};
    Shown& shown = OfProcess();
    const std::lock_guard lock(shown.mutex);
    std::shared_ptr<ImageData> original = shown.originals.Find(key);
    return original ? ImageData::CloneOf(std::move(original)) : nullptr;
}

std::shared_ptr<ImageData> Share(const Key& key, const std::shared_ptr<ImageData>& loaded) try {
    Shown& shown = OfProcess();
    const std::lock_guard lock(shown.mutex);
    shown.originals.Put(key, loaded);
    return ImageData::CloneOf(loaded);
} catch (const std::bad_alloc&) {
    return loaded;
}

}  // namespace

std::shared_ptr<ImageData> LoadPictureFile(LPCWSTR path, int scale) {
    if (std::shared_ptr<ImageData> shown = FindShown({StateOfFile(path), scale})) return shown;
    std::vector<std::uint8_t> bytes;
    Key key{{}, scale};
    const Gdiplus::Status status = ReadFileBytes(path, bytes, &key.file);
    if (status != Gdiplus::Ok) return ImageData::Failed(status);
    std::shared_ptr<ImageData> loaded = ImageData::Decode(std::move(bytes));
    if (loaded->IsGood() && !loaded->SetScale(scale)) return ImageData::Failed(Gdiplus::UnknownImageFormat);
    const bool shareable = loaded->IsGood() && loaded->FrameCount() == 1 && !key.file.IsEmpty();
    return shareable ? Share(key, loaded) : loaded;
}

}  // namespace platform
