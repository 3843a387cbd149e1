#include "platform/window/x11/display_plan.h"

#include <utility>

namespace platform::x11 {

namespace {

// Without a compositor a pixel is there or not; from half on it is.
constexpr std::uint8_t kVisibleAlpha = 128;

}  // namespace

bool NeedsAlphaChannel(const Compositing& compositing) {
    using Mode = Compositing::Mode;
    return compositing.mode != Mode::Nothing && compositing.mode != Mode::Opaque;
}

DisplayPlan PlanDisplay(const Compositing& compositing, bool alphaChannel, bool compositor) {
    using Mode = Compositing::Mode;
    const bool blends = alphaChannel && compositor;
    DisplayPlan plan;
    const bool faded = compositing.mode == Mode::Constant || compositing.mode == Mode::PerPixel;
    if (compositing.IsInvisible()) {
        plan.bounding.kind = SpanRule::Kind::Nothing;
        return plan;
    }
    // In the pixels themselves: a property for the compositor is read by some from the frame that the window
    // manager made, where it is not, and by some not at all.
    if (faded && blends) plan.opacity = compositing.alpha;
    if (compositing.mode == Mode::PerPixel) {
        SpanRule& rule = blends ? plan.input : plan.bounding;
        rule = {SpanRule::Kind::AlphaAtLeast, blends ? std::uint8_t{1} : kVisibleAlpha, 0};
        if (!blends) plan.conversion = Conversion::Unpremultiply;
        return plan;
    }
    if (alphaChannel) plan.conversion = Conversion::ForceOpaque;
    if (compositing.mode == Mode::Constant && compositing.hasKey) {
        plan.key = compositing.key & 0xFFFFFF;
        SpanRule& rule = blends ? plan.input : plan.bounding;
        rule = {SpanRule::Kind::NotKey, 0, plan.key};
        if (blends) plan.conversion = Conversion::KeyToTransparent;
    }
    return plan;
}

DisplayPlan PlanOverBackdrop(const Compositing& compositing, bool alphaChannel) {
    DisplayPlan plan = PlanDisplay(compositing, alphaChannel, true);
    // What lets the pointer through shows what is behind: icons among it, which are not part of the
    // wallpaper.
    if (plan.bounding.kind == SpanRule::Kind::Everything) std::swap(plan.bounding, plan.input);
    plan.overBackdrop = plan.bounding.kind != SpanRule::Kind::Nothing &&
                        (plan.opacity != 255 || compositing.mode == Compositing::Mode::PerPixel);
    return plan;
}

}  // namespace platform::x11
