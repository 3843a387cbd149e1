// A browser in the pane: a page of the program's resources whose links drive the gallery.
#include <cstdlib>
#include <string>

#include <platform/headless_pages.h>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"

namespace gallery {
namespace {

constexpr UINT kPlaceholder = 3001;
constexpr LPCWSTR kStart = u"start.html";
constexpr DWORD kOpaque = 0xFF000000;
const CRect kPlace(grid::kLeft, grid::kTop, grid::kContentRight, grid::kBottom);
constexpr int kSwatch = 56;

class Browser : public CHtmlCtrls {
  public:
    std::function<void(const CString&)> command;
    std::function<void()> changed;
    CString title;

    void OnAppCmd(LPCWSTR where) override { command(where); }
    void OnTitleChange(LPCWSTR text) override {
        title = text;
        changed();
    }
};

class WebPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    bool OpenBrowser();
    void AddButtons();
    void Loaded(bool failed);
    // What a link asks for: "colour/RRGGBB", "number/+N", "close".
    void Command(const CString& text);

    Shell* shell_ = nullptr;
    std::unique_ptr<Browser> browser_;
    CString trouble_;  // why there is no browser
    LiveValues live_;
    DWORD colour_ = 0xFF8F8CF5;
    int number_ = 7;
    int loads_ = 0;
    bool failed_ = false;  // as the last load had it
};

void WebPage::Enter(Shell& shell) {
    shell_ = &shell;
    live_.Open(shell, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Title", [this] { return browser_->title; });
    live_.Row(u"Pages loaded", [this] { return Number(loads_); });
    live_.Row(u"The last failed", [this] { return YesNo(failed_); });
    live_.Row(u"Something failed", [this] { return YesNo(browser_->m_bHasNavError); });
    live_.Row(u"Number", [this] { return Number(number_); });
    browser_ = std::make_unique<Browser>();
    if (OpenBrowser())
        AddButtons();
    else
        trouble_ = ErrorText(GetLastError());
}

bool WebPage::OpenBrowser() {
    browser_->command = [this](const CString& text) { Command(text); };
    browser_->changed = [this] { shell_->UpdateView(); };
    browser_->m_pDocCompleteParam = reinterpret_cast<DWORD_PTR>(this);
    browser_->m_pfnDocComplete = [](DWORD_PTR self, IDispatch*, BOOL failed) {
        reinterpret_cast<WebPage*>(self)->Loaded(failed != FALSE);
    };
    // A template would bring the control whose place the browser takes.
    CreateWindowExW(0, u"STATIC", nullptr, WS_CHILD, kPlace.left, kPlace.top, kPlace.Width(), kPlace.Height(),
                    shell_->m_hWnd, kPlaceholder, {}, nullptr);
    if (!browser_->CreateFromStatic(kPlaceholder, shell_)) return false;
    browser_->LoadFromResource(kStart);
    browser_->ShowWindow(SW_SHOW);
    return true;
}

void WebPage::AddButtons() {
    struct Action {
        LPCWSTR caption;
        void (*run)(Browser&);
    };
    const Action actions[] = {
        {u"Start", [](Browser& browser) { browser.LoadFromResource(kStart); }},
        {u"Back", [](Browser& browser) { browser.GoBack(); }},
        {u"Reload", [](Browser& browser) { browser.Refresh(); }},
        {u"Broken", [](Browser& browser) { browser.LoadFromResource(u"missing.html"); }},
    };
    int index = 0;
    for (const Action& action : actions) {
        const CPoint place(index % 2 ? grid::kRight - 96 : grid::kPanelLeft,
                           grid::kBottom - 80 + index / 2 * 44);
        auto& button = Add<TextButton>(*shell_);
        Dress(button, place, action.caption);
        button.OnClick([this, run = action.run] { run(*browser_); });
        ++index;
    }
}

void WebPage::Leave() {
    live_.Close();
    browser_.reset();
    Page::Leave();
}

void WebPage::Loaded(bool failed) {
    ++loads_;
    failed_ = failed;
    shell_->UpdateView();
}

void WebPage::Command(const CString& text) {
    const int slash = text.Find(u'/');
    const CString verb = slash < 0 ? text : text.Left(slash);
    const std::string value = ToUtf8(slash < 0 ? CString() : text.Mid(slash + 1));
    if (verb == u"colour")
        colour_ = kOpaque | (static_cast<DWORD>(std::strtoul(value.c_str(), nullptr, 16)) & 0xFFFFFF);
    else if (verb == u"number")
        number_ += static_cast<int>(std::strtol(value.c_str(), nullptr, 10));
    else if (verb == u"close")
        shell_->Later([shell = shell_] { shell->CloseQKDlg(); });
    shell_->UpdateView();
}

void WebPage::Draw(Ink& ink) {
    // Beneath the browser nothing may be transparent: there the pointer would fall through.
    ink.Fill(kPlace, skin::palette::kNight);
    ink.Frame(kPlace, skin::palette::kIndigo);
    const CRect inner(kPlace.left + 24, kPlace.top + 20, kPlace.right - 24, kPlace.bottom - 20);
    if (!trouble_.IsEmpty())
        ink.Text(TextStyle::Body, inner, CString(u"There is no browser here: ") + trouble_);
    else
        ink.Text(TextStyle::Body, inner,
                 CString(u"The page shows here on a display. Without one a script stands for the browser: it "
                         u"finds pages, tells of them, and follows links.\n\n") +
                     browser_->GetLocationName());
    const CRect swatch(grid::kPanelLeft, live_.Bottom() + grid::kGap, grid::kRight,
                       live_.Bottom() + grid::kGap + kSwatch);
    const Gdiplus::SolidBrush brush{Gdiplus::Color(colour_)};
    ink.Graphics().FillRectangle(&brush, swatch.left, swatch.top, swatch.Width(), swatch.Height());
    ink.Frame(swatch, skin::palette::kInk);
}

void WebPage::Pose() {
    for (LPCWSTR link : {u"app:colour/ff9d5c", u"app:number/+35"})
        Headless::FollowLink(browser_->m_hWnd, link);
    Headless::SetPageTitle(browser_->m_hWnd, u"A page from the resources");
}

const PageEntry entry({15, "web", u"Web", IDP_TAB_WEB, u"A browser in a dialog",
                       u"A page from the program's resources; its links tell the dialog what to do."},
                      [] { return std::unique_ptr<Page>(new WebPage); });

}  // namespace
}  // namespace gallery
