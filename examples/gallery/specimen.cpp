#include "examples/gallery/specimen.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kMargin = 14;

DemoLooks PlainLooks(CSize size) {
    DemoLooks looks;
    looks.size = size;
    looks.filled = true;
    looks.fill = Tint(skin::Mix(skin::palette::kNight, skin::palette::kIndigo, 0.35));
    return looks;
}

}  // namespace

SpecimenWindow::SpecimenWindow(CSize size) : window_(PlainLooks(size)) {}

bool SpecimenWindow::Open() {
    // Not where the pointer rests.
    return window_.Open(nullptr, CPoint(0, 0));
}

void SpecimenWindow::Draw(std::function<void(Ink&)> draw) {
    window_.draw = std::move(draw);
}

void SpecimenWindow::PointAt(int x, int y) {
    gallery::PointAt(window_, CPoint(x, y));
}

void SpecimenWindow::PressAt(int x, int y) {
    PointAt(x, y);
    Headless::ButtonDown();
    Headless::RunPending();
}

void SpecimenWindow::ClickAt(int x, int y) {
    PointAt(x, y);
    Click();
}

Headless::Picture SpecimenWindow::Capture() {
    window_.UpdateView();
    Headless::RunPending();
    if (!screen_) return Headless::Capture(window_.m_hWnd);
    const Headless::Picture screen = Headless::CaptureScreen();
    const int scale = GetScreenScale();
    Headless::Picture part{window_.Looks().size.cx * scale, window_.Looks().size.cy * scale, {}};
    for (int y = 0; y < part.height; ++y)  // the window lies at the screen's top left corner
        for (int x = 0; x < part.width; ++x)
            part.argb.push_back(screen.At(x, y));
    return part;
}

std::vector<Specimen> AllSpecimens() {
    std::vector<Specimen> all;
    for (const auto family :
         {ButtonSpecimens, TextSpecimens, ChoiceSpecimens, ImageSpecimens, ProgressSpecimens, ScrollSpecimens,
          FrameSpecimens, ListSpecimens, KeyboardSpecimens}) {
        std::vector<Specimen> some = family();
        std::move(some.begin(), some.end(), std::back_inserter(all));
    }
    return all;
}

void Strike(SpecimenWindow& window, Pose pose, const QKItemBase& item) {
    CRect place;
    item.GetRect(&place);
    const CPoint middle = place.CenterPoint();
    if (pose == Pose::Over) window.PointAt(middle.x, middle.y);
    if (pose == Pose::Pressed) window.PressAt(middle.x, middle.y);
}

CRect SpecimenPlace(skin::PictureSize size) {
    return CRect(CPoint(kMargin, kMargin), CSize(size.width, size.height));
}

CSize SpecimenRoom(skin::PictureSize size) {
    return CSize(size.width + 2 * kMargin, size.height + 2 * kMargin);
}

const Gdiplus::Font& SpecimenFont() {
    static const Gdiplus::Font font(u"Noto Sans CJK SC", 14, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    return font;
}

}  // namespace gallery
