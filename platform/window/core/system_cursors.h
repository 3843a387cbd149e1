// The cursors of the system, by the numbers of their resources.
#pragma once

#include <cstdint>

#include "platform/window/window_system.h"

namespace platform {

struct SystemCursor {
    std::uint32_t id;
    CursorShape shape;
};

inline constexpr SystemCursor kSystemCursors[] = {
    {32512, CursorShape::Arrow},       {32513, CursorShape::IBeam},    {32514, CursorShape::Wait},
    {32515, CursorShape::Cross},       {32642, CursorShape::SizeNWSE}, {32643, CursorShape::SizeNESW},
    {32644, CursorShape::SizeWE},      {32645, CursorShape::SizeNS},   {32646, CursorShape::SizeAll},
    {32648, CursorShape::DropRefused}, {32649, CursorShape::Hand},
};

// Null for a number without a cursor.
inline const SystemCursor* FindCursor(std::uint32_t id) {
    for (const SystemCursor& cursor : kSystemCursors)
        if (cursor.id == id) return &cursor;
    return nullptr;
}

// 0 for the shapes that have no number.
inline std::uint32_t IdOfCursor(CursorShape shape) {
    for (const SystemCursor& cursor : kSystemCursors)
        if (cursor.shape == shape) return cursor.id;
    return 0;
}

}  // namespace platform
