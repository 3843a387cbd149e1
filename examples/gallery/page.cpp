#include "examples/gallery/page.h"

#include <algorithm>

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

QKStaticText& Page::AddLabel(CQKDialogBase& shell, TextStyle style, const CRect& place, const CString& text,
                             Align align) {
    auto& label = Add<QKStaticText>(shell);
    Dress(label, style, place, text, align);
    return label;
}

void Page::Leave() {
    items_.Clear();
}

void Page::Refresh() {}
void Page::Pressed(CPoint) {}
void Page::ShellMoved(CSize) {}
void Page::Reminded() {}
void Page::Ticked(UINT_PTR) {}
void Page::Pose() {}

}  // namespace gallery
