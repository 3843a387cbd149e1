#include "platform/window/x11/drag/drag_icon.h"

#include <utility>

#include "platform/window/x11/pixel_buffer.h"
#include "platform/window/x11/pixel_conversion.h"
#include "platform/window/x11/reply.h"
#include "platform/window/x11/window_outline.h"

namespace platform::x11 {

xcb_pixmap_t DragIcon::Upload(const Surface& picture, const DisplayPlan& plan, std::uint8_t depth) {
    const auto pixels = PixelBuffer::Create(connection_, picture.Width(), picture.Height());
    if (!pixels) return 0;
    const auto count = static_cast<std::size_t>(picture.Width());
    for (int y = 0; y < picture.Height(); ++y)
        ConvertPixels(plan, picture.Row(y), pixels->Row(y), count);
    xcb_connection_t* c = connection_->Get();
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_create_pixmap(c, depth, pixmap, connection_->Root(), ToExtent(picture.Width()),
                      ToExtent(picture.Height()));
    const xcb_gcontext_t context = xcb_generate_id(c);
    xcb_create_gc(c, context, pixmap, 0, nullptr);
    pixels->Put(pixmap, context, depth, Region(CRect(0, 0, picture.Width(), picture.Height())));
    xcb_free_gc(c, context);
    return pixmap;
}

void DragIcon::Show(const XdndAtoms& atoms, const Surface& picture, POINT hot, POINT pointer,
                    bool compositor) {
    Hide();
    // Where the server knows no shapes the picture would be in the way of what is dropped.
    if (!connection_->IsAlive() || !connection_->Has().shape) return;
    xcb_connection_t* c = connection_->Get();
    const bool blends = compositor && connection_->AlphaFormat();
    const PixelFormat& format = blends ? connection_->AlphaFormat() : connection_->OpaqueFormat();
    const DisplayPlan plan = PlanDisplay({Compositing::Mode::PerPixel}, blends, blends);
    // As the background, so that the server itself repairs it wherever it was covered.
    const xcb_pixmap_t pixmap = Upload(picture, plan, format.depth);
    if (pixmap == 0) return;
    hot_ = hot;
    window_ = xcb_generate_id(c);
    const std::uint32_t values[] = {pixmap, 0, 1, format.colormap};
    xcb_create_window(c, format.depth, window_, connection_->Root(), ToX(pointer.x - hot.x),
                      ToX(pointer.y - hot.y), ToExtent(picture.Width()), ToExtent(picture.Height()), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, format.visual,
                      XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                      values);
    xcb_free_pixmap(c, pixmap);
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, connection_->Names().netWmWindowType,
                        XCB_ATOM_ATOM, 32, 1, &atoms.typeDnd);
    WindowOutline outline;
    outline.SetRules(plan.bounding, {SpanRule::Kind::Nothing}, &picture);
    outline.Send(*connection_, window_, 0);
    xcb_map_window(c, window_);
}

void DragIcon::Follow(POINT pointer) {
    if (window_ == 0 || !connection_->IsAlive()) return;
    const std::uint32_t place[] = {ToBits(pointer.x - hot_.x), ToBits(pointer.y - hot_.y),
                                   XCB_STACK_MODE_ABOVE};
    xcb_configure_window(connection_->Get(), window_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_STACK_MODE, place);
}

void DragIcon::Hide() {
    const xcb_window_t window = std::exchange(window_, 0);
    if (window != 0 && connection_->IsAlive()) xcb_destroy_window(connection_->Get(), window);
}

}  // namespace platform::x11
