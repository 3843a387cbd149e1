// Items that have the keyboard's focus, and a tooltip.
#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

void LoadPill(QKButton& button) {
    button.SetImage(SkinFile("btn4_v.png"), QKButton::QKBT_IMGS_4, QKButton::QKBT_VERTICAL);
}

void Type(SpecimenWindow& window, const CString& keys) {
    SetForegroundWindow(window.Dialog().m_hWnd);
    window.Dialog().SetTabKeys(1);
    Headless::Type(keys);
}

void FocusOnAButton(SpecimenWindow& window) {
    auto& button = window.Add<QKButton>(SpecimenPlace(skin::kPillButton));
    LoadPill(button);
    Type(window, "\t");
}

void FocusOnABox(SpecimenWindow& window) {
    auto& box = window.Add<QKCheckBox>(CRect(14, 16, 170, 40));
    box.SetImage(SkinFile("check_box_v.png"), SkinFile("check_mark.png"), QKButton::QKBT_IMGS_5,
                 QKButton::QKBT_VERTICAL);
    box.SetFont(SpecimenFont());
    box.SetText("Follow the moon");
    box.SetTextInerLeft(6);
    window.Dialog().SetFocusColor(Tint(skin::palette::kAmber));
    Type(window, "\t ");
}

void Tooltip(SpecimenWindow& window) {
    auto& button = window.Add<QKButton>(SpecimenPlace(skin::kPillButton));
    LoadPill(button);
    button.SetTooltip("Plays the piece that is selected,\nor the first one");
    window.Dialog().SetDefaultFont(SpecimenFont());
    window.PointAt(40, 32);
    Headless::Advance(500);
    window.ShowScreen();
}

}  // namespace

std::vector<Specimen> KeyboardSpecimens() {
    return {
        {"focus-button", SpecimenRoom(skin::kPillButton), FocusOnAButton},
        {"focus-check", CSize(184, 56), FocusOnABox},
        {"tooltip", CSize(290, 120), Tooltip},
    };
}

}  // namespace gallery
