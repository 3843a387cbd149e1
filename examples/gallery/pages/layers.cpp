// How a window can show its pixels: the four styles, each in a window of its own, and a modal question.
#include <array>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/page.h"
#include "examples/gallery/question.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/skin_files.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kRows = 5;
constexpr int kRowHeight = 92;
constexpr int kTextWidth = 280;
constexpr int kButtonLeft = grid::kLeft + kTextWidth + grid::kGap;

struct Row {
    LPCWSTR title;
    LPCWSTR text;
};
constexpr std::array<Row, kRows> kTexts = {{
    {u"Ordinary", u"An opaque rectangle. It paints what an update region asks for."},
    {u"Colour key", u"Pixels of one colour are left out, to sight and to the pointer."},
    {u"Constant alpha", u"The whole window under one alpha, here 180 of 255."},
    {u"Per-pixel alpha", u"Each pixel has its own: soft shadows, smooth edges, glass."},
    {u"Modal", u"DoModal waits for the answer; this window is disabled meanwhile."},
}};

DemoLooks OrdinaryLooks() {
    DemoLooks looks;
    looks.size = CSize(300, 188);
    looks.background = SkinFile("background_tile.bmp");
    looks.close = CPoint(260, 8);
    return looks;
}

DemoLooks ColourKeyLooks() {
    DemoLooks looks;
    looks.size = CSize(skin::kPanelKey.width, skin::kPanelKey.height);
    looks.style = LAY_COLORKEY;
    looks.background = SkinFile("panel_key.png");
    looks.close = CPoint(skin::kPanelKeyCentreX - 16, skin::kPanelKeyCentreY + 62);
    return looks;
}

DemoLooks ConstantAlphaLooks() {
    DemoLooks looks;
    looks.size = CSize(336, 210);
    looks.style = LAY_ALPHA;
    looks.alpha = 180;
    looks.background = SkinFile("background_wide.png");
    looks.keepRatio = true;
    looks.corners = CSize(28, 28);
    looks.close = CPoint(296, 8);
    return looks;
}

DemoLooks PerPixelLooks() {
    DemoLooks looks;
    looks.size = CSize(skin::kPanelAlpha.width, skin::kPanelAlpha.height);
    looks.style = LAY_OPAQUE;
    looks.background = SkinFile("panel_alpha.png");
    looks.cached = true;
    looks.close =
        CPoint(skin::kPanelAlphaBodyLeft + skin::kPanelAlphaBodyWidth - 44, skin::kPanelAlphaBodyTop + 8);
    return looks;
}

class LayersPage : public Page {
  public:
    LayersPage();

    void Enter(Shell& shell) override;
    void Leave() override;
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    struct Demo {
        DemoWindow window;
        CPoint place;  // relative to the shell
        PushButton* button;
    };

    void Toggle(Demo& demo);
    void Ask();

    Shell* shell_ = nullptr;
    // In the order of the rows, and of the stack they build.
    std::array<Demo, 4> demos_;
    PushButton* ask_ = nullptr;
    CString answer_;
};

LayersPage::LayersPage()
    : demos_{{{DemoWindow(OrdinaryLooks()), CPoint(672, 172), nullptr},
              {DemoWindow(ColourKeyLooks()), CPoint(1040, 64), nullptr},
              {DemoWindow(ConstantAlphaLooks()), CPoint(884, 384), nullptr},
              {DemoWindow(PerPixelLooks()), CPoint(796, 468), nullptr}}} {
    demos_[0].window.draw = [](Ink& ink) {
        ink.Frame(CRect(0, 0, 300, 188), skin::WithAlpha(skin::palette::kMist, 0.35));
        ink.Text(TextStyle::Title, CRect(20, 14, 250, 40), u"Ordinary window");
        ink.Text(TextStyle::Body, CRect(20, 44, 280, 180),
                 u"LAY_NONE\nA weave of 64 x 64 pixels, a BMP file, "
                 u"stretched over the client.");
    };
    demos_[1].window.draw = [](Ink& ink) {
        const int x = skin::kPanelKeyCentreX;
        const int y = skin::kPanelKeyCentreY;
        ink.Label(TextStyle::Heading, CRect(x - 100, y - 56, x + 100, y - 18), u"Colour key", Align::Centre,
                  skin::palette::kGold);
        ink.Text(TextStyle::Body, CRect(x - 88, y - 8, x + 88, y + 58),
                 u"Nothing of 255, 0, 255\nis ever seen.", Align::Centre);
    };
    demos_[2].window.draw = [](Ink& ink) {
        ink.Text(TextStyle::Title, CRect(20, 14, 290, 40), u"Constant alpha");
        ink.Text(TextStyle::Body, CRect(20, 44, 190, 120), u"LAY_ALPHA, and the corners are rounded.");
    };
    demos_[3].window.draw = [](Ink& ink) {
        constexpr int kLeft = skin::kPanelAlphaBodyLeft;
        constexpr int kTop = skin::kPanelAlphaBodyTop;
        ink.Label(TextStyle::Title, CRect(152, kTop, 460, kTop + skin::kPanelAlphaTitleHeight),
                  u"Per-pixel alpha", Align::Left);
        ink.Text(TextStyle::Body, CRect(152, kTop + 62, kLeft + skin::kPanelAlphaBodyWidth - 28, kTop + 200),
                 u"LAY_OPAQUE: the picture brings its own shadow and its own glass. What lies behind shows "
                 u"through, and where nothing is drawn the pointer goes through too.");
        ink.Label(TextStyle::Note,
                  CRect(kLeft + 24, kTop + skin::kPanelAlphaBodyHeight - skin::kPanelAlphaFooterHeight, 500,
                        kTop + skin::kPanelAlphaBodyHeight),
                  u"Drag it by any place that holds no item.", Align::Left);
    };
}

void LayersPage::Enter(Shell& shell) {
    shell_ = &shell;
    int y = grid::kTop + 12;
    for (Demo& demo : demos_) {
        demo.button = &Add(shell);
        demo.button->Load(IDP_WIDE, 4);
        demo.button->PlaceAt(kButtonLeft, y);
        demo.button->SetMouseMoveHand(1);
        demo.button->OnClick([this, &demo] { Toggle(demo); });
        demo.window.closed = [this, &demo] {
            demo.button->SetActive(0);
            shell_->UpdateView();
        };
        y += kRowHeight;
    }
    ask_ = &Add(shell);
    ask_->Load(IDP_WIDE, 4);
    ask_->PlaceAt(kButtonLeft, y);
    ask_->SetMouseMoveHand(1);
    ask_->OnClick([this] { Ask(); });
}

void LayersPage::Leave() {
    for (Demo& demo : demos_)
        demo.window.Close();
    Page::Leave();
}

void LayersPage::Toggle(Demo& demo) {
    if (demo.window.IsOpen())
        demo.window.Close();
    else
        demo.button->SetActive(demo.window.Open(shell_, shell_->ToScreen(demo.place)));
    shell_->UpdateView();
}

void LayersPage::Ask() {
    Shell& shell = *shell_;
    Question question(shell_, u"A modal question", u"Is the lake calm tonight?");
    const INT_PTR result = question.DoModal();
    if (shell.Current() != this) return;  // the page went while the question stood
    answer_ = result == IDOK ? u"Answer: IDOK" : u"Answer: IDCANCEL";
    shell_->UpdateView();
}

void LayersPage::Draw(Ink& ink) {
    int y = grid::kTop;
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
        ink.Label(TextStyle::Title, CRect(grid::kLeft, y, grid::kLeft + kTextWidth, y + 26), kTexts[i].title,
                  Align::Left);
        ink.Text(TextStyle::Body, CRect(grid::kLeft, y + 27, grid::kLeft + kTextWidth, y + kRowHeight),
                 kTexts[i].text);
        const bool last = i + 1 == kTexts.size();
        const CRect place = last ? ask_->Place() : demos_[i].button->Place();
        const bool open = !last && demos_[i].window.IsOpen();
        ink.Label(TextStyle::Button, CRect(place.left, place.top, place.right, place.bottom - 2),
                  last   ? u"Ask"
                  : open ? u"Close"
                         : u"Open");
        if (!last)
            ink.Fill(CRect(grid::kLeft, y + kRowHeight - 15, place.right, y + kRowHeight - 14),
                     skin::WithAlpha(skin::palette::kMist, 0.10));
        y += kRowHeight;
    }
    const CRect place = ask_->Place();
    ink.Text(TextStyle::Note, CRect(place.right + 16, place.top + 8, place.right + 160, place.bottom),
             answer_, Align::Left, skin::palette::kGold);
}

void LayersPage::Pose() {
    Headless::WhenIdle([](void*) { ClickOn(GetActiveWindow(), IDC_QUESTION_YES); }, nullptr);
    ClickOn(*shell_, *ask_);
    for (Demo& demo : demos_)
        ClickOn(*shell_, *demo.button);
}

const PageEntry entry({1, "layers", u"Layers", IDP_TAB_LAYERS, u"Layered windows",
                       u"Four ways to show the pixels of a window. Each opens as a dialog of its own."},
                      [] { return std::unique_ptr<Page>(new LayersPage); });

}  // namespace
}  // namespace gallery
