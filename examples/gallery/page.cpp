#include "examples/gallery/page.h"

#include <algorithm>

#include "examples/gallery/shell.h"

namespace gallery {
namespace {

// Filled while the program's objects are constructed, in no particular order.
std::vector<const PageEntry*>& Registered() {
    static std::vector<const PageEntry*> entries;
    return entries;
}

}  // namespace

PageEntry::PageEntry(const PageFacts& facts, Maker make) : facts_(facts), make_(make) {
    Registered().push_back(this);
}

std::vector<const PageEntry*> AllPages() {
    std::vector<const PageEntry*> pages = Registered();
    std::sort(pages.begin(), pages.end(), [](const PageEntry* first, const PageEntry* second) {
        return first->Facts().order < second->Facts().order;
    });
    return pages;
}

Page::~Page() = default;

PushButton& Page::Add(Shell& shell) {
    shell_ = &shell;
    items_.push_back(std::make_unique<PushButton>());
    shell.AddQKItem(items_.back().get());
    return *items_.back();
}

void Page::Leave() {
    for (const auto& item : items_)
        shell_->RemoveQKItem(item.get());
    items_.clear();
}

void Page::Pressed(CPoint) {}
void Page::ShellMoved(CSize) {}
void Page::Reminded() {}
void Page::Pose() {}

}  // namespace gallery
