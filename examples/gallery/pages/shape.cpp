// Windows with rounded corners, from none to an ellipse.
#include <array>
#include <memory>
#include <vector>

#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/sample_window.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin_files.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

struct Sample {
    CRect place;  // on the page; the window opens in this size
    CSize corners;
    LPCWSTR title;
    const char* file;
};

constexpr int kSquare = 148;
constexpr int kSquarePitch = (grid::kWidth - kSquare) / 4;
constexpr int kBroad = 257;
constexpr int kBroadPitch = (grid::kWidth - kBroad) / 2;
constexpr int kLower = grid::kTop + kSquare + 104;

CRect Square(int column) {
    const int left = grid::kLeft + column * kSquarePitch;
    return CRect(left, grid::kTop, left + kSquare, grid::kTop + kSquare);
}
CRect Broad(int column) {
    const int left = grid::kLeft + column * kBroadPitch;
    return CRect(left, kLower, left + kBroad, kLower + kSquare);
}

std::array<Sample, 8> Samples() {
    return {{
        {Square(0), CSize(0, 0), u"Square", "background_tall.png"},
        {Square(1), CSize(16, 16), u"16 x 16", "background_tall.png"},
        {Square(2), CSize(40, 40), u"40 x 40", "background_tall.png"},
        {Square(3), CSize(80, 80), u"80 x 80", "background_tall.png"},
        {Square(4), CSize(kSquare, kSquare), u"A circle", "background_tall.png"},
        {Broad(0), CSize(120, 40), u"120 x 40", "background.jpg"},
        {Broad(1), CSize(40, 120), u"40 x 120", "background.jpg"},
        {Broad(2), CSize(kBroad, kSquare), u"An ellipse", "background.jpg"},
    }};
}

DemoLooks LooksOf(const Sample& sample, bool closable) {
    DemoLooks looks;
    looks.size = sample.place.Size();
    looks.background = SkinFile(sample.file);
    looks.keepRatio = true;
    looks.corners = sample.corners;
    if (closable) looks.close = CPoint(looks.size.cx / 2 - 16, 14);
    return looks;
}

class ShapePage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    struct Shown {
        Sample sample;
        std::unique_ptr<SampleWindow> window;
    };

    Shell* shell_ = nullptr;
    std::vector<Shown> shown_;
};

void ShapePage::Enter(Shell& shell) {
    shell_ = &shell;
    for (const Sample& sample : Samples()) {
        // Over the shell's right edge, each a little lower.
        const int nth = static_cast<int>(shown_.size());
        const CPoint opensAt(1018 + 24 * (nth % 3), 16 + 78 * nth);
        PushButton& opener = Add(shell);
        shown_.push_back({sample, std::make_unique<SampleWindow>(shell, opener, LooksOf(sample, true),
                                                                 LooksOf(sample, false), opensAt)});
        opener.PlaceAt(sample.place.CenterPoint().x - 48, sample.place.bottom + 32);
    }
}

void ShapePage::Leave() {
    shown_.clear();
    Page::Leave();
}

void ShapePage::Draw(Ink& ink) {
    for (const auto& [sample, window] : shown_) {
        const CRect& place = sample.place;
        if (window->Picture()) ink.Graphics().DrawImage(window->Picture(), place.left, place.top);
        const CRect button = window->Opener().Place();
        ink.Label(TextStyle::Title, CRect(place.left, place.bottom + 6, place.right, place.bottom + 30),
                  sample.title);
        ink.Label(TextStyle::Button, CRect(button.left, button.top, button.right, button.bottom - 2),
                  window->Action());
    }
}

void ShapePage::Pose() {
    for (const std::size_t nth : {2U, 4U, 7U})
        ClickOn(*shell_, shown_[nth].window->Opener());
}

const PageEntry entry({3, "shape", u"Shape", IDP_TAB_SHAPE, u"Rounded windows",
                       u"Width and height of the ellipse that the corners are cut from, in pixels."},
                      [] { return std::unique_ptr<Page>(new ShapePage); });

}  // namespace
}  // namespace gallery
