// Pictures of things, for the entries of a list.
#pragma once

#include <array>

#include "examples/gallery/skin/canvas.h"

namespace skin {

struct ListIcon {
    const char* name;  // of its file, between "icon_" and ".png"
    void (*paint)(Canvas&);
};

extern const std::array<ListIcon, 10> kListIcons;

Canvas DrawListIcon(const ListIcon& icon);

}  // namespace skin
