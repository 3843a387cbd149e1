// Where a per-pixel window takes the pointer: what is drawn, an item's rectangle, or all of it. And the
// rubber band, which takes empty space.
#include <array>
#include <memory>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/skin_files.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kFieldWidth = 252;
constexpr int kFieldHeight = 150;
constexpr int kFieldPitch = (grid::kWidth - kFieldWidth) / 2;
constexpr int kGrain = 7;  // distance of the dots of a map
constexpr int kBandTop = grid::kTop + kFieldHeight + 96;
constexpr int kBandHeight = 224;
constexpr int kBandText = 296;  // width of the shaded part

struct Field {
    LPCWSTR title;
    LPCWSTR text;
    bool itemCatches;
    bool windowCatches;
};
constexpr std::array<Field, 3> kFields = {{
    {u"Passing through", u"Only what is drawn takes the pointer.", false, false},
    {u"An item catches", u"Its rectangle does: SetTranMouseOver(0).", true, false},
    {u"The window catches", u"All of it does: SetMouseTranOver(0).", false, true},
}};

DemoLooks LooksOf(const Field& field) {
    DemoLooks looks;
    looks.size = CSize(kFieldWidth, kFieldHeight);
    looks.style = LAY_OPAQUE;
    looks.catches = field.windowCatches;
    return looks;
}

DemoLooks BandLooks() {
    DemoLooks looks;
    looks.size = CSize(grid::kWidth, kBandHeight);
    looks.background = SkinFile("background.jpg");
    looks.keepRatio = true;
    looks.corners = CSize(24, 24);
    looks.band = true;
    return looks;
}

// A window that is clear but for one button, over a field of the page. The dots that the page draws beneath
// it say for each point whether the window would take the pointer there.
class Clear {
  public:
    Clear(const Field& field, CPoint place) : window(LooksOf(field)), facts(field), corner(place) {
        button.Load(IDP_PLAY, 4);
        button.PlaceAt((kFieldWidth - skin::kPlayButton.width) / 2,
                       (kFieldHeight - skin::kPlayButton.height) / 2);
        button.SetTranMouseOver(!field.itemCatches);
        button.SetMouseMoveHand(1);
        button.OnClick([this] {
            button.SetActive(!button.GetActive());
            window.UpdateView();
        });
        window.Add(&button);
    }

    DemoWindow window;
    PushButton button;
    Field facts;
    CPoint corner;  // of the field, in client pixels of the shell
    std::unique_ptr<Gdiplus::Bitmap> map;
    int caught = 0;
    int passed = 0;
};

class AreasPage : public Page {
  public:
    AreasPage();

    void Enter(Shell& shell) override;
    void Leave() override;
    void Draw(Ink& ink) override;
    void Pressed(CPoint point) override;
    void ShellMoved(CSize by) override;
    void Reminded() override;
    void Pose() override;

  private:
    void OpenAll();
    // Asks for each point of a field, which takes a while: not for every frame.
    std::unique_ptr<Gdiplus::Bitmap> MapOf(const Clear& clear) const;

    Shell* shell_ = nullptr;
    std::array<std::unique_ptr<Clear>, kFields.size()> clears_;
    DemoWindow band_{BandLooks()};
    bool entered_ = false;
};

AreasPage::AreasPage() {
    for (std::size_t i = 0; i < kFields.size(); ++i)
        clears_[i] = std::make_unique<Clear>(
            kFields[i], CPoint(grid::kLeft + static_cast<int>(i) * kFieldPitch, grid::kTop));
}

void AreasPage::Enter(Shell& shell) {
    shell_ = &shell;
    for (const auto& clear : clears_) {
        clear->window.moved = [this] {
            if (entered_) shell_->Remind();
        };
        clear->window.pressed = [this, counted = clear.get()] {
            ++counted->caught;
            shell_->UpdateView();
        };
    }
    band_.draw = [](Ink& ink) {
        ink.Fill(CRect(0, 0, kBandText, kBandHeight), skin::WithAlpha(skin::palette::kInk, 0.62));
        ink.Text(TextStyle::Title, CRect(24, 20, kBandText - 24, 44), u"Rubber band");
        ink.Text(TextStyle::Body, CRect(24, 48, kBandText - 24, kBandHeight),
                 u"Double-click on empty space, hold and draw. SetSelRect(1) allows it.");
    };
    // Windows over this one need it on the screen.
    shell.Later([this, &shell] {
        if (shell.Current() == this) OpenAll();
    });
}

void AreasPage::OpenAll() {
    for (const auto& clear : clears_)
        clear->window.Open(shell_, shell_->ToScreen(clear->corner));
    band_.Open(shell_, shell_->ToScreen(CPoint(grid::kLeft, kBandTop)));
    entered_ = true;
    shell_->Remind();
}

void AreasPage::Reminded() {
    for (const auto& clear : clears_)
        clear->map = MapOf(*clear);
    shell_->UpdateView();
}

void AreasPage::Leave() {
    entered_ = false;
    for (const auto& clear : clears_)
        clear->window.Close();
    band_.Close();
    Page::Leave();
}

void AreasPage::ShellMoved(CSize by) {
    if (!entered_) return;
    entered_ = false;  // they keep their places over the fields
    const auto follow = [by](DemoWindow& window) {
        if (!window.IsOpen()) return;
        CRect place;
        window.GetWindowRect(place);
        window.SetWindowPos(HWND(), place.left + by.cx, place.top + by.cy, 0, 0,
                            SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (const auto& clear : clears_)
        follow(clear->window);
    follow(band_);
    entered_ = true;
}

void AreasPage::Pressed(CPoint point) {
    for (const auto& clear : clears_) {
        if (!CRect(clear->corner, CSize(kFieldWidth, kFieldHeight)).PtInRect(point)) continue;
        ++clear->passed;
        shell_->UpdateView();
    }
}

std::unique_ptr<Gdiplus::Bitmap> AreasPage::MapOf(const Clear& clear) const {
    if (!clear.window.IsOpen()) return nullptr;
    auto map = std::make_unique<Gdiplus::Bitmap>(kFieldWidth, kFieldHeight);
    Gdiplus::Graphics graphics(map.get());
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    const CPoint origin = shell_->ToScreen(clear.corner);
    for (int y = kGrain; y < kFieldHeight - 2; y += kGrain) {
        for (int x = kGrain; x < kFieldWidth - 2; x += kGrain) {
            if (WindowFromPoint(CPoint(origin.x + x, origin.y + y)) == clear.window.m_hWnd)
                FillDot(graphics, x, y, 1.9F, skin::palette::kAmber);
            else
                FillDot(graphics, x, y, 1.0F, skin::WithAlpha(skin::palette::kMist, 0.30));
        }
    }
    return map;
}

void AreasPage::Draw(Ink& ink) {
    for (const auto& clear : clears_) {
        ink.Well(CRect(clear->corner, CSize(kFieldWidth, kFieldHeight)));
        if (clear->map) ink.Graphics().DrawImage(clear->map.get(), clear->corner.x, clear->corner.y);
        const int left = clear->corner.x;
        int y = clear->corner.y + kFieldHeight + 6;
        ink.Label(TextStyle::Title, CRect(left, y, left + kFieldWidth, y + 24), clear->facts.title,
                  Align::Left);
        ink.Label(TextStyle::Note, CRect(left, y + 24, left + kFieldWidth + 16, y + 44), clear->facts.text,
                  Align::Left);
        CString presses;
        presses.Format(u"%d caught, %d passed through", clear->caught, clear->passed);
        ink.Label(TextStyle::Note, CRect(left, y + 44, left + kFieldWidth, y + 64), presses, Align::Left,
                  skin::palette::kGold);
    }
}

void AreasPage::Pose() {
    for (const auto& clear : clears_) {
        ClickOn(clear->window, clear->button);
        for (const int x : {30, 60, 92}) {
            PointAt(clear->window, CPoint(x, 40));
            Click();
        }
    }
    DoubleClickAndDrag(band_, CPoint(410, 52), CPoint(688, 176));
}

const PageEntry entry(
    {6, "areas", u"Areas", IDP_TAB_AREAS, u"Passing and catching the pointer",
     u"Three clear windows lie over these fields. Bright dots: the window takes the pointer."},
    [] { return std::unique_ptr<Page>(new AreasPage); });

}  // namespace
}  // namespace gallery
