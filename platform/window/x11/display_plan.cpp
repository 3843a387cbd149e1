#include "platform/window/x11/display_plan.h"

namespace platform::x11 {

namespace {

// Without a compositor a pixel is there or not; from half on it is.
constexpr std::uint8_t kVisibleAlpha = 128;

bool HasKey(const Compositing& compositing) {
    return compositing.mode == Compositing::Mode::ColorKey ||
           (compositing.mode == Compositing::Mode::Constant && compositing.hasKey);
}

}  // namespace

bool NeedsAlphaChannel(const Compositing& compositing) {
    return compositing.mode == Compositing::Mode::PerPixel || HasKey(compositing);
}

DisplayPlan PlanDisplay(const Compositing& compositing, bool alphaChannel, bool compositor) {
    using Mode = Compositing::Mode;
    const bool blends = alphaChannel && compositor;
    DisplayPlan plan;
    const bool faded = compositing.mode == Mode::Constant || compositing.mode == Mode::PerPixel;
    if (faded) plan.opacity = compositing.alpha;
    if (compositing.mode == Mode::Nothing || plan.opacity == 0) {
        plan.bounding.kind = SpanRule::Kind::Nothing;
        return plan;
    }
    if (compositing.mode == Mode::PerPixel) {
        SpanRule& rule = blends ? plan.input : plan.bounding;
        rule = {SpanRule::Kind::AlphaAtLeast, blends ? std::uint8_t{1} : kVisibleAlpha, 0};
        if (!blends) plan.conversion = Conversion::Unpremultiply;
        return plan;
    }
    if (alphaChannel) plan.conversion = Conversion::ForceOpaque;
    if (HasKey(compositing)) {
        plan.key = compositing.key & 0xFFFFFF;
        SpanRule& rule = blends ? plan.input : plan.bounding;
        rule = {SpanRule::Kind::NotKey, 0, plan.key};
        if (blends) plan.conversion = Conversion::KeyToTransparent;
    }
    return plan;
}

}  // namespace platform::x11
