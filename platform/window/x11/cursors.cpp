#include "platform/window/x11/cursors.h"

#include <span>

namespace platform::x11 {

namespace {

// Names in the order of preference: those of themes first, at the end those of the server's cursor font.
std::span<const char* const> NamesOf(CursorShape shape) {
    static constexpr const char* kArrow[] = {"default", "left_ptr"};
    static constexpr const char* kHand[] = {"pointer", "hand2", "hand1", "pointing_hand"};
    static constexpr const char* kText[] = {"text", "xterm", "ibeam"};
    static constexpr const char* kMove[] = {"all-scroll", "size_all", "move", "fleur"};
    static constexpr const char* kCopy[] = {"dnd-copy", "copy", "hand2", "hand1"};
    static constexpr const char* kMoveDrop[] = {"dnd-move", "move", "fleur"};
    static constexpr const char* kRefused[] = {"dnd-none", "no-drop", "not-allowed", "crossed_circle",
                                               "X_cursor"};
    static constexpr const char* kWestEast[] = {"ew-resize", "size_hor", "sb_h_double_arrow"};
    static constexpr const char* kNorthSouth[] = {"ns-resize", "size_ver", "sb_v_double_arrow"};
    static constexpr const char* kFalling[] = {"nwse-resize", "size_fdiag", "bottom_right_corner"};
    static constexpr const char* kRising[] = {"nesw-resize", "size_bdiag", "bottom_left_corner"};
    static constexpr const char* kWait[] = {"wait", "watch"};
    static constexpr const char* kCross[] = {"crosshair", "cross", "tcross"};
    switch (shape) {
        case CursorShape::Arrow:
            return kArrow;
        case CursorShape::Hand:
            return kHand;
        case CursorShape::IBeam:
            return kText;
        case CursorShape::SizeAll:
            return kMove;
        case CursorShape::DropCopy:
            return kCopy;
        case CursorShape::DropMove:
            return kMoveDrop;
        case CursorShape::DropRefused:
            return kRefused;
        case CursorShape::SizeWE:
            return kWestEast;
        case CursorShape::SizeNS:
            return kNorthSouth;
        case CursorShape::SizeNWSE:
            return kFalling;
        case CursorShape::SizeNESW:
            return kRising;
        case CursorShape::Wait:
            return kWait;
        case CursorShape::Cross:
            return kCross;
        case CursorShape::None:
        case CursorShape::Count:
            break;
    }
    return {};
}

}  // namespace

Cursors::~Cursors() {
    if (connection_->IsAlive()) {
        for (const xcb_cursor_t cursor : loaded_)
            if (cursor != 0) xcb_free_cursor(connection_->Get(), cursor);
    }
    if (theme_ != nullptr) xcb_cursor_context_free(theme_);  // also its memory, with the server or without
}

xcb_cursor_t Cursors::Get(CursorShape shape) {
    const auto index = static_cast<std::size_t>(shape);
    if (index >= loaded_.size() || !connection_->IsAlive()) return 0;
    if (!tried_[index]) {
        tried_[index] = true;
        loaded_[index] = shape == CursorShape::None ? MakeInvisible() : Load(shape);
    }
    return loaded_[index];
}

xcb_cursor_t Cursors::Load(CursorShape shape) {
    if (theme_ == nullptr) {
        const xcb_setup_t* setup = xcb_get_setup(connection_->Get());
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
        while (screens.rem > 1 && screens.data->root != connection_->Root())
            xcb_screen_next(&screens);
        if (xcb_cursor_context_new(connection_->Get(), screens.data, &theme_) < 0) {
            theme_ = nullptr;
            return 0;
        }
    }
    for (const char* name : NamesOf(shape))
        if (const xcb_cursor_t cursor = xcb_cursor_load_cursor(theme_, name); cursor != 0) return cursor;
    return 0;
}

xcb_cursor_t Cursors::MakeInvisible() {
    xcb_connection_t* c = connection_->Get();
    const xcb_pixmap_t empty = xcb_generate_id(c);
    xcb_create_pixmap(c, 1, empty, connection_->Root(), 1, 1);
    const xcb_gcontext_t context = xcb_generate_id(c);
    const std::uint32_t clear = 0;
    xcb_create_gc(c, context, empty, XCB_GC_FOREGROUND, &clear);
    const xcb_rectangle_t all{0, 0, 1, 1};
    xcb_poly_fill_rectangle(c, empty, context, 1, &all);
    const xcb_cursor_t cursor = xcb_generate_id(c);
    xcb_create_cursor(c, cursor, empty, empty, 0, 0, 0, 0, 0, 0, 0, 0);
    xcb_free_gc(c, context);
    xcb_free_pixmap(c, empty);
    return cursor;
}

}  // namespace platform::x11
