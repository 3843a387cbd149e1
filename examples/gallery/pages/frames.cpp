// Frames of nine pictures, around entries that follow the pointer and at every size; and one alpha for a
// whole bitmap.
#include <array>
#include <memory>
#include <string>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kEntryTop = grid::kTop + 34;
constexpr skin::PictureSize kEntry{104, 108};
constexpr int kEntryPitch = (grid::kContentWidth - kEntry.width) / 4;
constexpr int kSizesTop = kEntryTop + kEntry.height + 16;
constexpr int kAlphaTop = kSizesTop + 34 + 108 + 16;

struct Thing {
    const char* icon;
    LPCWSTR name;
};
constexpr std::array<Thing, 5> kThings = {{
    {"icon_folder.png", u"Lake"},
    {"icon_music.png", u"Reeds"},
    {"icon_picture.png", u"Moon"},
    {"icon_globe.png", u"Shore"},
    {"icon_archive.png", u"Winter"},
}};

constexpr std::array<const char*, 3> kLooks = {"hover", "press", "focus"};
enum Look : std::size_t { kHover, kPress, kFocus };

// Sizes of the samples; the corners measure 6.
const std::array<CRect, 6> kSizes = {{
    {CPoint(0, 0), CSize(190, 108)},
    {CPoint(206, 0), CSize(250, 40)},
    {CPoint(206, 56), CSize(80, 52)},
    {CPoint(302, 56), CSize(154, 16)},
    {CPoint(302, 88), CSize(40, 20)},
    {CPoint(472, 0), CSize(12, 108)},
}};
const CRect kTiny(CPoint(500, 49), CSize(9, 9));

constexpr std::array<int, 4> kAlphas = {-1, 255, 150, 60};  // -1: as drawn

class FramesPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    using Entry = Clickable<QKButton>;
    using Parts = std::array<std::unique_ptr<Gdiplus::Image>, 9>;

    void LoadFrames();
    void AddEntries();
    void MakeAlphas();
    void AddLive();
    void DrawFrame(Ink& ink, Look look, const CRect& place);
    CString NameOf(QKItemBase::QK_STATUS status) const;

    Shell* shell_ = nullptr;
    std::array<Parts, kLooks.size()> frames_;
    std::array<Entry*, kThings.size()> entries_ = {};
    std::array<std::unique_ptr<Gdiplus::Bitmap>, kAlphas.size()> alphas_;
    std::size_t chosen_ = kThings.size();
    LiveValues live_;
};

void FramesPage::Enter(Shell& shell) {
    shell_ = &shell;
    LoadFrames();
    AddEntries();
    MakeAlphas();
    AddLabel(shell, TextStyle::Title, CRect(grid::kLeft, kSizesTop, grid::kContentRight, kSizesTop + 28),
             u"Corners stay, edges stretch");
    AddLive();
}

void FramesPage::LoadFrames() {
    for (std::size_t look = 0; look < kLooks.size(); ++look) {
        for (std::size_t part = 0; part < frames_[look].size(); ++part) {
            const std::string file =
                std::string("frame_") + kLooks[look] + "_" + std::to_string(part) + ".png";
            frames_[look][part] = std::make_unique<Gdiplus::Image>(SkinFile(file.c_str()));
        }
    }
}

// A button without a picture takes the pointer in its rectangle; what it shows is drawn around it.
void FramesPage::AddEntries() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, grid::kTop, grid::kContentRight, grid::kTop + 28),
             u"Under the pointer, pressed, chosen");
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const CRect place(CPoint(grid::kLeft + static_cast<int>(i) * kEntryPitch, kEntryTop),
                          CSize(kEntry.width, kEntry.height));
        Add<Well>(*shell_).PlaceAt(place);
        auto& icon = Add<QKImage>(*shell_);
        icon.SetImage(SkinFile(kThings[i].icon));
        icon.SetRect(place.left + (kEntry.width - 64) / 2, place.top + 10, 64, 64);
        AddLabel(*shell_, TextStyle::Body, CRect(place.left, place.top + 76, place.right, place.bottom - 6),
                 kThings[i].name, Align::Centre);
        entries_[i] = &Add<Entry>(*shell_);
        entries_[i]->SetRect(&place);
        entries_[i]->OnClick([this, i] {
            chosen_ = i;
            shell_->UpdateView();
        });
    }
}

void FramesPage::MakeAlphas() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, kAlphaTop, grid::kContentRight, kAlphaTop + 28),
             u"One alpha for all that is not black");
    constexpr int kPitch = (grid::kContentWidth + grid::kGap) / static_cast<int>(kAlphas.size());
    for (std::size_t i = 0; i < kAlphas.size(); ++i) {
        alphas_[i] = std::make_unique<Gdiplus::Bitmap>(64, 64);
        Gdiplus::Graphics graphics(alphas_[i].get());
        Gdiplus::Image icon(SkinFile("icon_folder.png"));
        graphics.DrawImage(&icon, 0, 0);
        if (kAlphas[i] >= 0) shell_->SetALPH255(alphas_[i].get(), kAlphas[i]);
        CString text(u"as drawn");
        if (kAlphas[i] >= 0) text.Format(u"SetALPH255, %d", kAlphas[i]);
        const int left = grid::kLeft + static_cast<int>(i) * kPitch;
        const CRect place(left, kAlphaTop + 34, left + kPitch - grid::kGap, kAlphaTop + 110);
        auto& picture = Add<QKImage>(*shell_);
        picture.SetImage(SkinFile("picture.png"));
        picture.SetRect(&place);
        AddLabel(*shell_, TextStyle::Note,
                 CRect(place.left, place.bottom + 2, place.right, place.bottom + 22), text);
    }
}

void FramesPage::DrawFrame(Ink& ink, Look look, const CRect& place) {
    std::array<Gdiplus::Image*, 9> parts;
    for (std::size_t i = 0; i < parts.size(); ++i)
        parts[i] = frames_[look][i].get();
    shell_->DrawStateImage(
        &ink.Graphics(), parts.data(),
        Gdiplus::RectF(static_cast<float>(place.left), static_cast<float>(place.top),
                       static_cast<float>(place.Width()), static_cast<float>(place.Height())));
}

void FramesPage::Draw(Ink& ink) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const QKItemBase::QK_STATUS status = entries_[i]->GetStatus();
        if (i == chosen_) DrawFrame(ink, kFocus, entries_[i]->Place());
        if (status == QKItemBase::QK_MOUSEDOWN) DrawFrame(ink, kPress, entries_[i]->Place());
        if (status == QKItemBase::QK_MOUSEON) DrawFrame(ink, kHover, entries_[i]->Place());
    }
    const CPoint corner(grid::kLeft, kSizesTop + 34);
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        CRect place = kSizes[i];
        place.OffsetRect(corner.x, corner.y);
        DrawFrame(ink, static_cast<Look>(i % kLooks.size()), place);
    }
    CRect tiny = kTiny;
    tiny.OffsetRect(corner.x, corner.y);
    DrawFrame(ink, kFocus, tiny);
    ink.Label(TextStyle::Note, CRect(tiny.left - 4, tiny.bottom + 4, grid::kContentRight, tiny.bottom + 22),
              u"9 x 9", Align::Left);

    constexpr int kPitch = (grid::kContentWidth + grid::kGap) / static_cast<int>(kAlphas.size());
    for (std::size_t i = 0; i < alphas_.size(); ++i) {
        const int left = grid::kLeft + static_cast<int>(i) * kPitch + (kPitch - grid::kGap - 64) / 2;
        ink.Graphics().DrawImage(alphas_[i].get(), left, kAlphaTop + 40);
    }
}

CString FramesPage::NameOf(QKItemBase::QK_STATUS status) const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i]->GetStatus() == status) return kThings[i].name;
    }
    return u"none";
}

void FramesPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Under the pointer", [this] { return NameOf(QKItemBase::QK_MOUSEON); });
    live_.Row(u"Pressed", [this] { return NameOf(QKItemBase::QK_MOUSEDOWN); });
    live_.Row(u"Chosen",
              [this] { return CString(chosen_ < kThings.size() ? kThings[chosen_].name : u"none"); });
    const auto size = [](const Gdiplus::Image& part) {
        CString text;
        text.Format(u"%d x %d", static_cast<int>(part.GetWidth()), static_cast<int>(part.GetHeight()));
        return text;
    };
    live_.Row(u"Corner", [this, size] { return size(*frames_[kHover][0]); });
    live_.Row(u"Upper edge", [this, size] { return size(*frames_[kHover][1]); });
    live_.Row(u"Right edge", [this, size] { return size(*frames_[kHover][5]); });
    live_.Row(u"Centre", [this, size] { return size(*frames_[kHover][4]); });
    // Of a pixel in the folder's shadow, which is not black.
    for (std::size_t i = 0; i < kAlphas.size(); ++i) {
        static constexpr std::array<LPCWSTR, kAlphas.size()> kNames = {u"Alpha, as drawn", u"set to 255",
                                                                       u"set to 150", u"set to 60"};
        live_.Row(kNames[i], [this, i] {
            Gdiplus::Color pixel;
            alphas_[i]->GetPixel(32, 58, &pixel);
            return Number(pixel.GetA());
        });
    }
}

void FramesPage::Leave() {
    live_.Close();
    Page::Leave();
}

void FramesPage::Pose() {
    ClickOn(*shell_, *entries_[2]);
    PointAt(*shell_, *entries_[1]);
}

const PageEntry entry({12, "frames", u"Frames", IDP_TAB_FRAMES, u"Frames of nine pictures",
                       u"Corners at their own size, edges and centre stretched between them."},
                      [] { return std::unique_ptr<Page>(new FramesPage); });

}  // namespace
}  // namespace gallery
