// Check boxes and radio buttons.
#include <array>

#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

const CSize kRoom(200, 56);
const CRect kPlace(14, 16, 190, 40);

struct ChoiceState {
    bool checked = false;
    bool enabled = true;
    Pose pose = Pose::Away;
};

void LoadBox(QKCheckBox& box) {
    box.SetImage(SkinFile("check_box_v.png"), SkinFile("check_mark.png"), QKButton::QKBT_IMGS_5,
                 QKButton::QKBT_VERTICAL);
}

void LoadRadio(QKCheckBox& radio) {
    radio.SetImage(SkinFile("radio_v.png"), SkinFile("radio_mark.png"), QKButton::QKBT_IMGS_5,
                   QKButton::QKBT_VERTICAL);
}

void Write(QKCheckBox& box, LPCWSTR text) {
    box.SetText(text);
    box.SetFont(SpecimenFont());
    box.SetTextInerLeft(6);
    box.SetTextMouseOnColor(Tint(skin::palette::kGold));
    box.SetTextMouseDownColor(Tint(skin::palette::kAmber));
}

template <class Choice>
Specimen Stateful(const char* name, void (*load)(QKCheckBox&), LPCWSTR text, const ChoiceState& state) {
    const auto show = [load, text, state](SpecimenWindow& window) {
        auto& choice = window.Add<Choice>(kPlace);
        load(choice);
        Write(choice, text);
        choice.SetCheck(state.checked);
        choice.SetEnable(state.enabled);
        Strike(window, state.pose, choice);
    };
    return {name, kRoom, show};
}

Specimen Box(const char* name, const ChoiceState& state) {
    return Stateful<QKCheckBox>(name, LoadBox, u"Follow the moon 跟月", state);
}

Specimen Radio(const char* name, const ChoiceState& state) {
    return Stateful<QKRadio>(name, LoadRadio, u"Northern lights", state);
}

// A box that only says how it differs from the others.
Specimen Otherwise(const char* name, CSize room, void (*configure)(QKCheckBox&)) {
    const auto show = [room, configure](SpecimenWindow& window) {
        auto& box = window.Add<QKCheckBox>(CRect(14, 16, room.cx - 10, 40));
        LoadBox(box);
        Write(box, u"Follow the moon 跟月");
        configure(box);
    };
    return {name, room, show};
}

// Three of one group and one of another; the user clicks the first, the last and then the second.
void ShowGroups(SpecimenWindow& window) {
    constexpr std::array<LPCWSTR, 4> kTexts = {u"New moon", u"Half moon", u"Full moon", u"of another group"};
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
        const int top = 12 + 34 * static_cast<int>(i);
        auto& radio = window.Add<QKRadio>(CRect(14, top, 190, top + 24));
        LoadRadio(radio);
        Write(radio, kTexts[i]);
        radio.SetGroupID(i == 3 ? 2 : 1);
    }
    for (const int i : {0, 3, 1})
        window.ClickAt(100, 12 + 34 * i + 12);
    window.PointAt(199, 0);
}

}  // namespace

std::vector<Specimen> ChoiceSpecimens() {
    const auto sideBySide = [](QKCheckBox& box) {
        box.DestroyCheckImage();  // another SetImage does not free it
        box.SetImage(SkinFile("check_box_h.png"), SkinFile("check_mark.png"), QKButton::QKBT_IMGS_5,
                     QKButton::QKBT_HORIZONTAL);
    };
    return {
        Box("check-box", {false, true, Pose::Away}),
        Box("check-box-over", {false, true, Pose::Over}),
        Box("check-box-pressed", {false, true, Pose::Pressed}),
        Box("check-box-checked", {true, true, Pose::Away}),
        Box("check-box-checked-over", {true, true, Pose::Over}),
        Box("check-box-checked-pressed", {true, true, Pose::Pressed}),
        Box("check-box-disabled", {false, false, Pose::Over}),
        Box("check-box-checked-disabled", {true, false, Pose::Over}),
        Otherwise("check-box-side-by-side", CSize(330, 56), sideBySide),
        Otherwise("check-box-text-shifted", CSize(240, 56),
                  [](QKCheckBox& box) {
                      box.SetTextInerLeft(30);
                      box.SetTextInerTop(8);
                  }),
        Otherwise("check-box-without-pictures", CSize(200, 56),
                  [](QKCheckBox& box) {
                      box.DestroyImag();
                      box.SetCheck(1);
                  }),
        Radio("radio", {false, true, Pose::Away}),
        Radio("radio-over", {false, true, Pose::Over}),
        Radio("radio-pressed", {false, true, Pose::Pressed}),
        Radio("radio-checked", {true, true, Pose::Away}),
        Radio("radio-checked-over", {true, true, Pose::Over}),
        Radio("radio-checked-pressed", {true, true, Pose::Pressed}),
        Radio("radio-disabled", {false, false, Pose::Over}),
        Radio("radio-checked-disabled", {true, false, Pose::Over}),
        {"radio-groups", CSize(200, 150), ShowGroups},
    };
}

}  // namespace gallery
