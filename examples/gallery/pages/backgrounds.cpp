// What a dialog can have behind its items: pictures stretched, cut to the client's ratio or cached, a colour.
#include <array>
#include <memory>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
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
        explicit Shown(const Sample& of) : sample(of), window(LooksOf(of)) {}
        Sample sample;
        DemoWindow window;
        std::unique_ptr<Gdiplus::Bitmap> picture;
        PushButton* open = nullptr;
    };

    void Open(Shown& shown);

    Shell* shell_ = nullptr;
    std::vector<std::unique_ptr<Shown>> shown_;
};

void BackgroundsPage::Enter(Shell& shell) {
    shell_ = &shell;
    for (const Sample& sample : Samples()) {
        shown_.push_back(std::make_unique<Shown>(sample));
        Shown& shown = *shown_.back();
        // The picture on the page is painted by a dialog of its size that is never shown.
        DemoLooks small = LooksOf(sample);
        small.size = sample.place.Size();
        small.close = CPoint(-1, -1);
        DemoWindow painter(small);
        if (painter.Prepare(&shell, CPoint())) shown.picture = PictureOf(painter);

        shown.open = &Add(shell);
        shown.open->Load(IDP_WIDE, 4);
        shown.open->PlaceAt(sample.place.right - 104, sample.place.bottom - 42);
        shown.open->SetMouseMoveHand(1);
        shown.open->OnClick([this, &shown] { Open(shown); });
        shown.window.closed = [this, &shown] {
            shown.open->SetActive(0);
            shell_->UpdateView();
        };
    }
}

void BackgroundsPage::Leave() {
    shown_.clear();
    Page::Leave();
}

void BackgroundsPage::Open(Shown& shown) {
    if (shown.window.IsOpen()) {
        shown.window.Close();
    } else {
        const CSize size = shown.window.Looks().size;
        const CPoint centre(grid::kLeft + grid::kWidth / 2, (grid::kTop + grid::kBottom) / 2);
        const CPoint place = shell_->ToScreen(CPoint(centre.x - size.cx / 2, centre.y - size.cy / 2));
        shown.open->SetActive(shown.window.Open(shell_, place));
    }
    shell_->UpdateView();
}

void BackgroundsPage::Draw(Ink& ink) {
    for (const auto& shown : shown_) {
        const CRect& place = shown->sample.place;
        if (shown->sample.perPixel) ink.Well(place);
        if (shown->picture) ink.Graphics().DrawImage(shown->picture.get(), place.left, place.top);
        if (!shown->sample.perPixel) ink.Frame(place, skin::WithAlpha(skin::palette::kMist, 0.28));
        // The picture lies above the frame's items.
        shell_->DrawButton(ink.Context(), shown->open);
        CRect caption = shown->open->Place();
        caption.bottom -= 2;
        ink.Label(TextStyle::Button, caption, shown->window.IsOpen() ? u"Close" : u"Open");
        ink.Label(TextStyle::Title, CRect(place.left, place.bottom + 4, place.right, place.bottom + 26),
                  shown->sample.title, Align::Left);
        ink.Label(TextStyle::Note, CRect(place.left, place.bottom + 26, place.right, place.bottom + 44),
                  shown->sample.text, Align::Left);
    }
}

void BackgroundsPage::Pose() {
    PointAt(*shell_, shown_.front()->open->Place().CenterPoint());
}

const PageEntry entry({2, "backgrounds", u"Backdrop", IDP_TAB_BACKGROUND, u"Backgrounds",
                       u"A picture file or a colour behind the items. The moon shows what became of it."},
                      [] { return std::unique_ptr<Page>(new BackgroundsPage); });

}  // namespace
}  // namespace gallery
