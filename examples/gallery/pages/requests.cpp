// Blocking requests on a thread of their own, to a server that runs while this page is shown.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/page_server.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr UINT_PTR kTimer = 51;
constexpr UINT kTick = 40;  // milliseconds
constexpr int kButtonPitch = skin::kWideButton.width + 14;
constexpr int kBarTop = grid::kTop + 58;
constexpr int kCameTop = grid::kTop + 92;
constexpr int kCameHeight = 132;
constexpr int kSentTop = kCameTop + kCameHeight + 22;
constexpr int kTitle = 30;
constexpr int kMargin = 14;

struct Sample {
    LPCWSTR caption;
    LPCWSTR url;
    LPCWSTR form;  // posted; null for a WebGet
};
constexpr std::array<Sample, 5> kSamples = {{
    {u"Page", u"http://gallery.invalid/page", nullptr},
    {u"Form", u"http://gallery.invalid/form?of=two", u"name=Ada&year=1815"},
    {u"Missing", u"http://gallery.invalid/nothing", nullptr},
    {u"Slow", u"http://gallery.invalid/slow", nullptr},
    {u"Nobody", u"https://gallery.invalid/page", nullptr},
}};

// WebGet takes no port, and the usual one is not for everybody to listen at. So the server stands in as the
// proxy: set before the threads that make requests start, and taken back after their end.
class ProxyOfThisProgram {
  public:
    explicit ProxyOfThisProgram(unsigned short port) {
        if (const char* before = std::getenv(kName)) before_ = before;
        setenv(kName, ("http://127.0.0.1:" + std::to_string(port)).c_str(), 1);
    }
    ~ProxyOfThisProgram() {
        if (before_)
            setenv(kName, before_->c_str(), 1);
        else
            unsetenv(kName);
    }
    ProxyOfThisProgram(const ProxyOfThisProgram&) = delete;
    ProxyOfThisProgram& operator=(const ProxyOfThisProgram&) = delete;

  private:
    static constexpr const char* kName = "http_proxy";
    std::optional<std::string> before_;
};

struct Answer {
    DWORD result = 0;
    CString text;
};

Answer Ask(const Sample& sample) {
    Answer answer;
    try {
        QKBaseFunctions functions;
        answer.result = sample.form ? functions.WebPost(sample.url, sample.form, answer.text)
                                    : functions.WebGet(sample.url, answer.text, 2);
    } catch (const CInternetException& failure) {  // in the middle of the body
        answer = {failure.m_dwError, failure.What()};
    }
    return answer;
}

// Line ends as they are, other controls as a dot.
CString Shown(const std::string& request) {
    std::string text;
    for (const char byte : request)
        if (byte != '\r') text += byte == '\n' || (byte >= ' ' && byte < 0x7F) ? std::string(1, byte) : "·";
    return FromUtf8(text);
}

class RequestsPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void Ticked(UINT_PTR timer) override;
    void Pose() override;

  private:
    void Start(const Sample& sample);
    bool Waits() const { return coming_.valid(); }

    Shell* shell_ = nullptr;
    std::unique_ptr<PageServer> server_;
    std::unique_ptr<ProxyOfThisProgram> proxy_;
    std::future<Answer> coming_;
    Answer answer_;
    int asked_ = 0;
    std::array<TextButton*, kSamples.size()> buttons_{};
    QKProgress* bar_ = nullptr;
    LiveValues live_;
};

void RequestsPage::Enter(Shell& shell) {
    shell_ = &shell;
    server_ = std::make_unique<PageServer>();
    proxy_ = std::make_unique<ProxyOfThisProgram>(server_->Port());
    for (std::size_t i = 0; i < kSamples.size(); ++i) {
        TextButton& button = Add<TextButton>(shell);
        Dress(button, CPoint(grid::kLeft - 4 + static_cast<int>(i) * kButtonPitch, grid::kTop),
              kSamples[i].caption);
        button.OnClick([this, i] { Start(kSamples[i]); });
        buttons_[i] = &button;
    }
    bar_ = &Add<QKProgress>(shell);
    const CRect place(grid::kLeft, kBarTop, grid::kContentRight, kBarTop + skin::kProgressCool.height);
    bar_->SetRect(&place);
    bar_->SetBarImage(SkinFile("progress_cool_back.png"), SkinFile("progress_cool_bar.png"));
    live_.Open(shell, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Result", [this] {
        CString text;
        text.Format(u"%u", answer_.result);
        return text;
    });
    live_.Row(u"Characters", [this] { return Number(answer_.text.GetLength()); });
    live_.Row(u"Under way", [this] { return YesNo(Waits()); });
    live_.Row(u"Requests", [this] { return Number(asked_); });
}

void RequestsPage::Start(const Sample& sample) {
    if (Waits()) return;
    ++asked_;
    server_->Forget();  // not every request comes as far as there
    coming_ = std::async(std::launch::async, &Ask, sample);
    shell_->SetTimer(kTimer, kTick);
    shell_->UpdateView();
}

void RequestsPage::Ticked(UINT_PTR timer) {
    if (timer != kTimer || !Waits()) return;
    bar_->SetPos((bar_->GetPos() + 4) % (bar_->GetMax() + 1));
    if (coming_.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
        answer_ = coming_.get();
        shell_->KillTimer(kTimer);
        bar_->SetPos(0);
    }
    shell_->UpdateView();
}

void RequestsPage::Draw(Ink& ink) {
    const auto field = [&ink](LPCWSTR title, int top, int bottom, const CString& text) {
        ink.Label(TextStyle::Title, CRect(grid::kLeft, top, grid::kContentRight, top + kTitle), title,
                  Align::Left);
        CRect place(grid::kLeft, top + kTitle + 4, grid::kContentRight, bottom);
        ink.Well(place);
        place.DeflateRect(kMargin, kMargin);
        ink.Text(TextStyle::Body, place, text);
    };
    field(u"What came", kCameTop, kCameTop + kTitle + 4 + kCameHeight - kTitle, answer_.text);
    field(u"What was sent", kSentTop, grid::kBottom, Shown(server_->LastRequest()));
}

void RequestsPage::Leave() {
    shell_->KillTimer(kTimer);
    server_.reset();  // which ends a request that is under way
    if (Waits()) coming_.wait();
    proxy_.reset();
    live_.Close();
    Page::Leave();
}

void RequestsPage::Pose() {
    ClickOn(*shell_, *buttons_[1]);
    if (Waits()) coming_.wait();
    Headless::Advance(2 * kTick);
}

const PageEntry entry({16, "requests", u"HTTP", IDP_TAB_REQUESTS, u"Requests",
                       u"WebGet and WebPost block; a thread of their own keeps the dialog alive."},
                      [] { return std::unique_ptr<Page>(new RequestsPage); });

}  // namespace
}  // namespace gallery
