#include "platform/html/scripted_page.h"

#include <deque>
#include <map>
#include <unordered_map>
#include <utility>

#include <platform/headless.h>
#include <platform/headless_pages.h>

#include "platform/html/resource_page.h"

namespace platform::html {

namespace {

class ScriptedPage;

// What tests described, and the pages that live, by their windows.
struct Stage {
    std::map<CString, Headless::PageAnswer> answers;
    std::unordered_map<std::uint64_t, ScriptedPage*> pages;
};
Stage& TheStage() {
    static auto* const stage = new Stage;  // outlives objects with static storage
    return *stage;
}

Headless::PageAnswer AnswerOf(const std::string& url) {
    const auto& answers = TheStage().answers;
    const auto found = answers.find(FromUtf8(url));
    if (found != answers.end()) return found->second;
    Headless::PageAnswer answer;
    if (url.starts_with("res:"))
        answer.error = FindResourcePage(url) ? 0 : DWORD{INET_E_OBJECT_NOT_FOUND};
    else if (!url.starts_with("about:blank"))
        answer.error = INET_E_CANNOT_CONNECT;
    return answer;
}

constexpr DWORD kFirstNonStatus = 600;

class ScriptedPage final : public PageHost {
  public:
    ScriptedPage(HWND window, PageEvents& events) : window_(window), events_(events) {
        TheStage().pages[window_.ToParam()] = this;
    }
    ~ScriptedPage() override { TheStage().pages.erase(window_.ToParam()); }

    // ---- PageHost
    void Navigate(const PageRequest& request) override {
        waiting_.push_back({request, Kind::New});
        PostMessageW(window_, kContinuePage, 0, 0);
    }
    bool GoBack() override { return Travel(-1); }
    bool GoForward() override { return Travel(1); }
    void Reload() override { Travel(0); }
    void Stop() override { waiting_.clear(); }
    void SetFocus(bool focused) override { focused_ = focused; }
    void HideScrollBars(bool hidden) override { hidesScrollBars_ = hidden; }
    std::string Title() const override { return title_; }
    std::string Url() const override { return url_; }
    std::string DocumentType() const override { return url_.empty() ? "" : "text/html"; }
    std::string Note() const override {
        return "No browser here: a script stands for it.\n" + title_ + "\n" + url_;
    }

    // ---- the script
    void Continue() {
        if (waiting_.empty()) return;
        const Step step = std::move(waiting_.front());
        waiting_.pop_front();
        const std::weak_ptr<int> life = life_;
        if (!events_.BeforeNavigate("", step.request) || life.expired()) return;
        Load(step.request, step.kind);
    }
    bool FollowLink(const FramePath& frame, const std::string& url) {
        const std::weak_ptr<int> life = life_;
        const PageRequest request{url, {}, {}, {}};
        if (!events_.BeforeNavigate(frame, request) || life.expired()) return false;
        if (frame.empty())
            Load(request, Kind::New);
        else
            LoadFrame(frame, url);
        return true;
    }
    void Commit(const FramePath& frame, const std::string& url) {
        const std::weak_ptr<int> life = life_;
        if (frame.empty()) {
            url_ = url;
            title_.clear();
            InvalidateRect(window_, nullptr, FALSE);
        }
        events_.Committed(frame, url);
    }
    bool Fail(const FramePath& frame, const std::string& url, DWORD error) {
        const std::weak_ptr<int> life = life_;
        const bool shows = events_.Failed(frame, url, error);
        if (!shows || life.expired()) return shows;
        if (frame.empty()) {
            Commit(frame, url);
            if (!life.expired()) events_.Completed(frame, url);
        }
        return true;
    }
    void SetTitle(const std::string& title) {
        title_ = title;
        InvalidateRect(window_, nullptr, FALSE);
        events_.TitleChanged(title);
    }
    PageEvents& Events() { return events_; }
    const std::vector<PageRequest>& Requests() const { return requests_; }
    bool HasFocus() const { return focused_; }
    bool HidesScrollBars() const { return hidesScrollBars_; }

  private:
    enum class Kind { New, Again };
    struct Step {
        PageRequest request;
        Kind kind;
    };

    void Load(const PageRequest& request, Kind kind) {
        requests_.push_back(request);
        const Headless::PageAnswer answer = AnswerOf(request.url);
        if (answer.waits) return;
        const std::weak_ptr<int> life = life_;
        if (answer.error != 0) {
            const bool comesWithPage = answer.error < kFirstNonStatus;
            if (!comesWithPage) {
                Fail("", request.url, answer.error);
                return;
            }
            if (!events_.Failed("", request.url, answer.error) || life.expired()) return;
        }
        if (kind == Kind::New) Remember(request.url);
        Commit("", request.url);
        if (!life.expired() && !answer.title.IsEmpty()) SetTitle(ToUtf8(answer.title));
        for (std::size_t i = 0; i < answer.frames.size() && !life.expired(); ++i) {
            const FramePath frame = std::to_string(i);
            const std::string url = ToUtf8(answer.frames[i]);
            if (events_.BeforeNavigate(frame, {url, {}, {}, {}}) && !life.expired()) LoadFrame(frame, url);
        }
        if (!life.expired()) events_.Completed("", request.url);
    }
    void LoadFrame(const FramePath& frame, const std::string& url) {
        const Headless::PageAnswer answer = AnswerOf(url);
        if (answer.waits) return;
        const std::weak_ptr<int> life = life_;
        if (answer.error != 0) {
            Fail(frame, url, answer.error);
            return;
        }
        events_.Committed(frame, url);
        if (!life.expired()) events_.Completed(frame, url);
    }
    void Remember(const std::string& url) {
        history_.resize(history_.empty() ? 0 : at_ + 1);
        history_.push_back(url);
        at_ = history_.size() - 1;
    }
    bool Travel(int by) {
        if (history_.empty() || (by < 0 && at_ == 0) || (by > 0 && at_ + 1 >= history_.size())) return false;
        at_ = by < 0 ? at_ - 1 : by > 0 ? at_ + 1 : at_;
        waiting_.push_back({{history_[at_], {}, {}, {}}, Kind::Again});
        PostMessageW(window_, kContinuePage, 0, 0);
        return true;
    }

    HWND window_;
    PageEvents& events_;
    std::shared_ptr<int> life_ = std::make_shared<int>(0);
    std::deque<Step> waiting_;
    std::vector<PageRequest> requests_;
    std::vector<std::string> history_;
    std::size_t at_ = 0;
    std::string url_, title_;
    bool focused_ = false;
    bool hidesScrollBars_ = false;
};

// The page of a view or of the browser's window in it; null when there is none.
ScriptedPage* PageOf(HWND view) {
    const auto& pages = TheStage().pages;
    for (const HWND window : {view, GetDlgItem(view, AFX_IDW_PANE_FIRST)}) {
        const auto found = pages.find(window.ToParam());
        if (found != pages.end()) return found->second;
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<PageHost> MakeScriptedPage(HWND window, PageEvents& events) {
    return std::make_unique<ScriptedPage>(window, events);
}

void ContinueScriptedPage(HWND window) {
    if (ScriptedPage* const page = PageOf(window)) page->Continue();
}

}  // namespace platform::html

namespace Headless {

using platform::html::PageOf;
using platform::html::TheStage;

void AnswerPage(const CString& url, const PageAnswer& answer) {
    TheStage().answers[url] = answer;
}

void ForgetPages() {
    TheStage().answers.clear();
}

std::vector<PageRequest> PageRequests(HWND view) {
    std::vector<PageRequest> requests;
    const auto* const page = PageOf(view);
    if (!page) return requests;
    for (const platform::html::PageRequest& request : page->Requests()) {
        PageRequest copy{FromUtf8(request.url),
                         FromUtf8(request.target),
                         FromUtf8(request.headers),
                         {},
                         request.postedData.has_value()};
        if (request.postedData)
            for (const std::byte byte : *request.postedData)
                copy.postedData.push_back(std::to_integer<BYTE>(byte));
        requests.push_back(std::move(copy));
    }
    return requests;
}

bool FollowLink(HWND view, const CString& url, const CString& frame) {
    auto* const page = PageOf(view);
    const bool went = page && page->FollowLink(ToUtf8(frame), ToUtf8(url));
    RunPending();
    return went;
}

bool AskForWindow(HWND view, const CString& url) {
    auto* const page = PageOf(view);
    const bool seenTo = page && page->Events().NewWindow(ToUtf8(url));
    RunPending();
    return seenTo;
}

void CommitPage(HWND view, const CString& url, const CString& frame) {
    if (auto* const page = PageOf(view)) page->Commit(ToUtf8(frame), ToUtf8(url));
    RunPending();
}

void CompletePage(HWND view, const CString& url, const CString& frame) {
    if (auto* const page = PageOf(view)) page->Events().Completed(ToUtf8(frame), ToUtf8(url));
    RunPending();
}

bool FailPage(HWND view, const CString& url, DWORD error, const CString& frame) {
    auto* const page = PageOf(view);
    const bool shows = page && page->Fail(ToUtf8(frame), ToUtf8(url), error);
    RunPending();
    return shows;
}

void SetPageTitle(HWND view, const CString& title) {
    if (auto* const page = PageOf(view)) page->SetTitle(ToUtf8(title));
    RunPending();
}

bool PageHasFocus(HWND view) {
    const auto* const page = PageOf(view);
    return page && page->HasFocus();
}

bool PageHidesScrollBars(HWND view) {
    const auto* const page = PageOf(view);
    return page && page->HidesScrollBars();
}

}  // namespace Headless
