// A still picture stretched to its places, and pictures that move by timers of the dialog.
#include <array>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

enum Timer : UINT { kCometTimer = 21, kPairTimer = 22, kHiddenTimer = 23 };

constexpr int kStillTop = grid::kTop + 34;
constexpr int kStillHeight = 184;
constexpr int kMovingTop = kStillTop + kStillHeight + 20;
constexpr int kMovingWell = kMovingTop + 34;
constexpr int kMovingHeight = 160;

struct Still {
    int left;
    int width;
    int height;
    LPCWSTR text;
};
constexpr std::array<Still, 3> kStills = {{
    {0, 240, 160, u"its own size, 240 x 160"},
    {256, 92, 160, u"narrower"},
    {364, 200, 100, u"wider and lower"},
}};

struct Field {
    int left;
    int width;
    LPCWSTR text;
};
constexpr std::array<Field, 3> kFields = {{
    {0, 180, u"A comet, 24 frames"},
    {196, 200, u"Two on one timer"},
    {412, 152, u"Runs on while hidden"},
}};

class ImagesPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink&) override {}
    void Pose() override;

  private:
    void AddStills();
    void AddMoving();
    QKGifImage& AddMovingImage(const char* file, Timer timer, CPoint centre, CSize size);
    void AddLive();

    Shell* shell_ = nullptr;
    QKGifImage* comet_ = nullptr;
    QKGifImage* small_ = nullptr;
    QKGifImage* large_ = nullptr;
    QKGifImage* hidden_ = nullptr;
    TextButton* toggle_ = nullptr;
    LiveValues live_;
};

void ImagesPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddStills();
    AddMoving();
    AddLive();
}

void ImagesPage::AddStills() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, grid::kTop, grid::kContentRight, grid::kTop + 28),
             u"One picture, stretched");
    for (const Still& still : kStills) {
        const int left = grid::kLeft + still.left;
        auto& image = Add<QKImage>(*shell_);
        image.SetImage(SkinFile("picture.png"));
        image.SetRect(left, kStillTop, still.width, still.height);
        const int below = kStillTop + still.height + 4;
        AddLabel(*shell_, TextStyle::Note, CRect(left, below, left + still.width, below + 20), still.text);
    }
}

QKGifImage& ImagesPage::AddMovingImage(const char* file, Timer timer, CPoint centre, CSize size) {
    auto& image = Add<QKGifImage>(*shell_);
    image.SetImage(SkinFile(file));
    image.SetRect(centre.x - size.cx / 2, centre.y - size.cy / 2, size.cx, size.cy);
    image.StartRun(timer, shell_->m_hWnd);
    return image;
}

void ImagesPage::AddMoving() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, kMovingTop, grid::kContentRight, kMovingTop + 28),
             u"Pictures that move");
    std::array<CPoint, kFields.size()> centres;
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        const int left = grid::kLeft + kFields[i].left;
        const CRect place(left, kMovingWell, left + kFields[i].width, kMovingWell + kMovingHeight);
        Add<Well>(*shell_).PlaceAt(place);
        centres[i] = place.CenterPoint();
        AddLabel(*shell_, TextStyle::Note, CRect(left, place.bottom + 4, place.right, place.bottom + 24),
                 kFields[i].text);
    }
    comet_ = &AddMovingImage("comet.gif", kCometTimer, centres[0], CSize(160, 120));
    small_ =
        &AddMovingImage("spinner.gif", kPairTimer, CPoint(centres[1].x - 52, centres[1].y), CSize(64, 64));
    large_ =
        &AddMovingImage("spinner.gif", kPairTimer, CPoint(centres[1].x + 44, centres[1].y), CSize(96, 96));
    hidden_ =
        &AddMovingImage("spinner.gif", kHiddenTimer, CPoint(centres[2].x, centres[2].y - 22), CSize(64, 64));

    toggle_ = &Add<TextButton>(*shell_);
    Dress(*toggle_, CPoint(centres[2].x - skin::kWideButton.width / 2, kMovingWell + kMovingHeight - 48),
          u"Hide");
    toggle_->OnClick([this] {
        hidden_->SetShow(!hidden_->IsShow());
        toggle_->SetText(hidden_->IsShow() ? u"Hide" : u"Show");
        shell_->UpdateView();
    });
}

void ImagesPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    const auto rows = [this](LPCWSTR frame, LPCWSTR time, const QKGifImage* image) {
        live_.Row(frame, [image] {
            CString text;
            text.Format(u"%d of %d", image->GetFrameIndex() + 1, image->GetFrameCount());
            return text;
        });
        live_.Row(time, [image] {
            CString text;
            text.Format(u"%d ms", static_cast<int>(image->GetFrameTime().value_or(0)));
            return text;
        });
    };
    rows(u"Comet, frame", u"stays for", comet_);
    rows(u"Small lamp, frame", u"stays for", small_);
    rows(u"Large lamp, frame", u"stays for", large_);
    rows(u"Third lamp, frame", u"stays for", hidden_);
    live_.Row(u"Third lamp shown", [this] { return YesNo(hidden_->IsShow()); });
    live_.Row(u"Picture's width",
              [this] { return Number(static_cast<int>(comet_->GetImage()->GetWidth())); });
}

void ImagesPage::Leave() {
    for (const Timer timer : {kCometTimer, kPairTimer, kHiddenTimer})
        shell_->KillTimer(timer);
    live_.Close();
    Page::Leave();
}

void ImagesPage::Pose() {
    Headless::Advance(60);
    ClickOn(*shell_, *toggle_);
    Headless::Advance(60);
    ClickOn(*shell_, *toggle_);
}

const PageEntry entry(
    {9, "images", u"Images", IDP_TAB_IMAGES, u"Still and moving pictures",
     u"A picture fills its item. Animated ones go on by a timer, each frame for its own time."},
    [] { return std::unique_ptr<Page>(new ImagesPage); });

}  // namespace
}  // namespace gallery
