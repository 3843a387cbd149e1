// Image buttons: each state, and what the number of frames and their layout make of it.
#include <string>

#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

struct ButtonState {
    int frames = 4;
    QKButton::QKBT_TYPE layout = QKButton::QKBT_VERTICAL;
    bool active = false;
    bool enabled = true;
    Pose pose = Pose::Away;
    int height = -1;
};

Specimen ButtonIn(const char* name, const ButtonState& state) {
    const auto show = [state](SpecimenWindow& window) {
        auto& button = window.Add<QKButton>(SpecimenPlace(skin::kPillButton));
        const bool stacked = state.layout != QKButton::QKBT_HORIZONTAL;
        const std::string file = "btn" + std::to_string(state.frames) + (stacked ? "_v.png" : "_h.png");
        button.SetImage(SkinFile(file.c_str()), static_cast<QKButton::QKBT_IMGS>(state.frames), state.layout);
        button.SetButtonHeight(state.height);
        button.SetActive(state.active);
        button.SetEnable(state.enabled);
        Strike(window, state.pose, button);
    };
    return {name, SpecimenRoom(skin::kPillButton), show};
}

}  // namespace

std::vector<Specimen> ButtonSpecimens() {
    constexpr auto kStacked = QKButton::QKBT_VERTICAL;
    constexpr auto kSideBySide = QKButton::QKBT_HORIZONTAL;
    return {
        ButtonIn("button-normal", {4, kStacked, false, true, Pose::Away}),
        ButtonIn("button-over", {4, kStacked, false, true, Pose::Over}),
        ButtonIn("button-pressed", {4, kStacked, false, true, Pose::Pressed}),
        ButtonIn("button-active", {4, kStacked, true, true, Pose::Away}),
        ButtonIn("button-active-over-stacked", {4, kStacked, true, true, Pose::Over}),
        ButtonIn("button-active-over-side-by-side", {4, kSideBySide, true, true, Pose::Over}),
        ButtonIn("button-active-pressed", {4, kStacked, true, true, Pose::Pressed}),
        ButtonIn("button-disabled", {5, kStacked, false, false, Pose::Over}),
        ButtonIn("button-disabled-four-frames", {4, kStacked, false, false, Pose::Over}),
        ButtonIn("button-active-five-frames", {5, kStacked, true, true, Pose::Away}),
        ButtonIn("button-one-frame-pressed", {1, kStacked, false, true, Pose::Pressed}),
        ButtonIn("button-two-frames-pressed", {2, kStacked, false, true, Pose::Pressed}),
        ButtonIn("button-cropped", {4, kStacked, false, true, Pose::Away, 18}),
        ButtonIn("button-too-high", {4, kStacked, false, true, Pose::Away, 54}),
    };
}

}  // namespace gallery
