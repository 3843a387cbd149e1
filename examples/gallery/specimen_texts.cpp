// Labels, buttons with a caption, and texts that glow.
#include <string>

#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

const CSize kLabelWindow(260, 64);
const CSize kGlowWindow(260, 64);

// A label in a frame that shows its rectangle.
Specimen Label(const char* name, LPCWSTR text, std::function<void(QKStaticText&)> configure) {
    const auto show = [text, configure](SpecimenWindow& window) {
        const CRect place(14, 10, kLabelWindow.cx - 14, kLabelWindow.cy - 10);
        auto& label = window.Add<QKStaticText>(place);
        label.SetText(text);
        label.SetFont(SpecimenFont());
        configure(label);
        window.Draw([place](Ink& ink) {
            CRect around = place;
            around.InflateRect(1, 1);
            ink.Frame(around, skin::WithAlpha(skin::palette::kMist, 0.25));
        });
    };
    return {name, kLabelWindow, show};
}

Specimen Caption(const char* name, Pose pose, bool active, bool enabled) {
    const auto show = [pose, active, enabled](SpecimenWindow& window) {
        auto& button = window.Add<QKTextButton>(SpecimenPlace(skin::kWideButton));
        button.SetImage(SkinFile("btn_wide_v.png"), QKButton::QKBT_IMGS_4, QKButton::QKBT_VERTICAL);
        button.SetText(u"Play 播放");
        button.SetFont(SpecimenFont());
        button.SetActive(active);
        button.SetEnable(enabled);
        Strike(window, pose, button);
    };
    return {name, SpecimenRoom(skin::kWideButton), show};
}

// How a text glows.
struct Glow {
    float factor = 3;
    Gdiplus::PointF origin{1, 1};
    bool cached = false;  // through a list entry
    float stretched = 1;  // the second time, on a rectangle so many times as wide
};

Specimen GlowText(const char* name, const Glow& glow) {
    const auto show = [glow](SpecimenWindow& window) {
        DemoWindow& dialog = window.Dialog();
        const std::shared_ptr<QKListItem> entry(new QKListItem, [](QKListItem* used) {
            delete used->pTextImage;  // a list would have freed it
            delete used;
        });
        window.Draw([glow, entry, &dialog](Ink& ink) {
            const Gdiplus::Font font(u"Noto Sans CJK SC", 24, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
            Gdiplus::StringFormat format;
            format.SetAlignment(Gdiplus::StringAlignmentCenter);
            format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
            const Gdiplus::Color text = Tint(skin::palette::kMoon);
            const Gdiplus::Color light =
                Tint(glow.cached ? skin::palette::kPeriwinkle : skin::palette::kAmber);
            const CString words(u"Moonrise 月出");
            Gdiplus::RectF place(10, 8, 240, 48);
            if (!glow.cached) {
                dialog.DrawShadowText(&ink.Graphics(), words, font, format, text, light, place, glow.origin,
                                      glow.factor);
                return;
            }
            // Drawn into the entry once; what is shown comes out of it.
            const auto draw = [&](Gdiplus::Graphics& target) {
                dialog.DrawShadowText(&target, entry.get(), words, font, format, text, light, place,
                                      glow.origin, glow.factor);
            };
            Gdiplus::Bitmap aside(240, 48);
            Gdiplus::Graphics elsewhere(&aside);
            place.X = place.Y = 0;
            draw(elsewhere);
            place = Gdiplus::RectF(10, 8, 240 * glow.stretched, 48);
            draw(ink.Graphics());
        });
    };
    return {name, kGlowWindow, show};
}

}  // namespace

std::vector<Specimen> TextSpecimens() {
    const auto nothing = [](QKStaticText&) {};
    const auto aligned = [](Gdiplus::StringAlignment alignment) {
        return [alignment](QKStaticText& label) { label.SetTextFormat(alignment); };
    };
    return {
        Label("text-near", u"Moonrise at 21:04", nothing),
        Label("text-centre", u"Moonrise at 21:04", aligned(Gdiplus::StringAlignmentCenter)),
        Label("text-far", u"Moonrise at 21:04", aligned(Gdiplus::StringAlignmentFar)),
        Label("text-scripts", u"Moon 月亮 Луна σελήνη ירח", nothing),
        Label("text-wrapped", u"A text that is wider than its rectangle goes on below, as far as it fits.",
              nothing),
        Label("text-trimmed", u"A text that is wider than its rectangle ends in dots",
              [](QKStaticText& label) {
                  label.GetFormat().SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap);
                  label.GetFormat().SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
                  label.GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter);
                  label.SetTextColor(Tint(skin::palette::kAmber));
              }),
        Label("text-defaults", u"Nothing but a text 月亮",
              [](QKStaticText& label) {
                  label.SetFont(Gdiplus::Font(u"宋体", 9, Gdiplus::FontStyleRegular, Gdiplus::UnitPoint));
              }),
        Caption("text-button-normal", Pose::Away, false, true),
        Caption("text-button-over", Pose::Over, false, true),
        Caption("text-button-pressed", Pose::Pressed, false, true),
        Caption("text-button-active", Pose::Away, true, true),
        GlowText("glow-narrow", {2}),
        GlowText("glow", {3}),
        GlowText("glow-wide", {6}),
        GlowText("glow-moved", {3, {5, 5}}),
        GlowText("glow-entry", {3, {1, 1}, true}),
        GlowText("glow-entry-stretched", {3, {1, 1}, true, 0.6F}),
    };
}

}  // namespace gallery
