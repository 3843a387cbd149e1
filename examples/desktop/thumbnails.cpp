#include "examples/desktop/thumbnails.h"

#include <algorithm>
#include <utility>

#include "examples/desktop/thumbnail_cache.h"

namespace desktop {
namespace {

// One picture is unpacked at a time: two may be two hundred megabytes.
constexpr int kAtOnce = 1;

}  // namespace

bool Thumbnails::MayHave(const File& file) {
    return !file.folder && file.type.starts_with("image/");
}

Thumbnails::Kept* Thumbnails::FindKept(const File& file) {
    const auto found = byName_.find(file.name);
    if (found == byName_.end() || found->second->modified != file.modified) return nullptr;
    kept_.splice(kept_.begin(), kept_, found->second);
    return &kept_.front();
}

Picture Thumbnails::Find(const File& file) {
    const Kept* kept = MayHave(file) ? FindKept(file) : nullptr;
    return kept ? kept->picture : nullptr;
}

void Thumbnails::Keep(const File& file, Picture picture) {
    if (const auto old = byName_.find(file.name); old != byName_.end()) {
        kept_.erase(old->second);
        byName_.erase(old);
    }
    kept_.push_front({file.name, file.modified, std::move(picture)});
    byName_[file.name] = kept_.begin();
    if (kept_.size() <= kKept) return;
    byName_.erase(kept_.back().name);
    kept_.pop_back();
}

void Thumbnails::Want(std::vector<Wish> wishes) {
    std::erase_if(wishes, [this](const Wish& wish) { return !MayHave(wish.file) || FindKept(wish.file); });
    std::reverse(wishes.begin(), wishes.end());
    wishes_ = std::move(wishes);
    Work();
}

void Thumbnails::Work() {
    while (working_ < kAtOnce && !wishes_.empty()) {
        Wish wish = std::move(wishes_.back());
        wishes_.pop_back();
        ++working_;
        InBackground(
            lifetime_,
            [path = wish.path, modified = wish.file.modified] {
                return LoadThumbnail(path, modified, kThumbnailSide);
            },
            [this, file = std::move(wish.file)](Pixels pixels) {
                --working_;
                Keep(file, pixels ? ThumbnailFrom(pixels) : Picture());
                Work();
                if (made) made(file.name);
            });
    }
}

}  // namespace desktop
