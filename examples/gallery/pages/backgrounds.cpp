// What a dialog can have behind its items: pictures stretched, cut to the client's ratio or cached, a colour.
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
    CRect place;  // on the page
    LPCWSTR title;
    LPCWSTR text;
    const char* file;
    bool keepRatio;
    bool perPixel;  // cached, with an alpha for each pixel
};

constexpr int kNarrow = 150;
constexpr int kBroad = 228;
constexpr int kFirst = grid::kLeft;
constexpr int kSecond = kFirst + kNarrow + grid::kGap;
constexpr int kThird = kSecond + kNarrow + grid::kGap;
constexpr int kFourth = kThird + kBroad + grid::kGap;
constexpr int kUpper = grid::kTop;
constexpr int kLower = kUpper + 224 + 60;

// How much larger than its picture on the page a window opens.
constexpr int kEnlarged = 2;

CRect Box(int left, int top, int width, int height) {
    return CRect(left, top, left + width, top + height);
}

std::array<Sample, 8> Samples() {
    return {{
        {Box(kFirst, kUpper, kNarrow, 224), u"Stretched", u"PNG, 1600 x 900", "background_wide.png", false,
         false},
        {Box(kSecond, kUpper, kNarrow, 224), u"Ratio kept", u"the same, cut", "background_wide.png", true,
         false},
        {Box(kThird, kUpper, kBroad, 224), u"Stretched", u"PNG, 700 x 1100", "background_tall.png", false,
         false},
        {Box(kFourth, kUpper, kBroad, 224), u"Ratio kept", u"the same, cut", "background_tall.png", true,
         false},
        {Box(kFirst, kLower, kNarrow, 140), u"Colour", u"no picture at all", nullptr, false, false},
        {Box(kSecond, kLower, kNarrow, 140), u"Bitmap", u"BMP, 64 x 64", "background_tile.bmp", false, false},
        {Box(kThird, kLower, kBroad, 140), u"Photograph", u"JPEG, 1280 x 800", "background.jpg", true, false},
        {Box(kFourth, kLower, kBroad, 140), u"Cached", u"PNG with alpha, drawn once", "panel_alpha.png",
         false, true},
    }};
}

DemoLooks LooksOf(const Sample& sample) {
    DemoLooks looks;
    looks.size = CSize(sample.place.Width() * kEnlarged, sample.place.Height() * kEnlarged);
    if (sample.file) looks.background = SkinFile(sample.file);
    looks.keepRatio = sample.keepRatio;
    looks.filled = !sample.file;
    looks.fill = Tint(skin::Mix(skin::palette::kPlum, skin::palette::kIndigo, 0.35));
    looks.style = sample.perPixel ? LAY_OPAQUE : LAY_NONE;
    looks.cached = sample.perPixel;
    looks.close = sample.perPixel ? CPoint(looks.size.cx - 78, 40) : CPoint(looks.size.cx - 40, 8);
    return looks;
}

class BackgroundsPage : public Page {
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

void BackgroundsPage::Enter(Shell& shell) {
    shell_ = &shell;
    for (const Sample& sample : Samples()) {
        const DemoLooks looks = LooksOf(sample);
        DemoLooks small = looks;
        small.size = sample.place.Size();
        small.close = CPoint(-1, -1);
        const CPoint centre(grid::kLeft + grid::kWidth / 2, (grid::kTop + grid::kBottom) / 2);
        const CPoint opensAt(centre.x - looks.size.cx / 2, centre.y - looks.size.cy / 2);
        PushButton& opener = Add(shell);
        shown_.push_back({sample, std::make_unique<SampleWindow>(shell, opener, looks, small, opensAt)});
        opener.PlaceAt(sample.place.right - 104, sample.place.bottom - 42);
    }
}

void BackgroundsPage::Leave() {
    shown_.clear();
    Page::Leave();
}

void BackgroundsPage::Draw(Ink& ink) {
    for (const auto& [sample, window] : shown_) {
        const CRect& place = sample.place;
        if (sample.perPixel) ink.Well(place);
        if (window->Picture()) ink.Graphics().DrawImage(window->Picture(), place.left, place.top);
        if (!sample.perPixel) ink.Frame(place, skin::WithAlpha(skin::palette::kMist, 0.28));
        // The picture lies above the frame's items.
        shell_->DrawButton(ink.Context(), &window->Opener());
        CRect caption = window->Opener().Place();
        caption.bottom -= 2;
        ink.Label(TextStyle::Button, caption, window->Action());
        ink.Label(TextStyle::Title, CRect(place.left, place.bottom + 4, place.right, place.bottom + 26),
                  sample.title, Align::Left);
        ink.Label(TextStyle::Note, CRect(place.left, place.bottom + 26, place.right, place.bottom + 44),
                  sample.text, Align::Left);
    }
}

void BackgroundsPage::Pose() {
    PointAt(*shell_, shown_.front().window->Opener().Place().CenterPoint());
}

const PageEntry entry({2, "backgrounds", u"Backdrop", IDP_TAB_BACKGROUND, u"Backgrounds",
                       u"A picture file or a colour behind the items. The moon shows what became of it."},
                      [] { return std::unique_ptr<Page>(new BackgroundsPage); });

}  // namespace
}  // namespace gallery
