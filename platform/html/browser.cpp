#include "platform/html/browser.h"

#include <array>
#include <span>
#include <utility>
#include <vector>

#include "platform/html/resource_page.h"

namespace platform::html {

namespace {

enum : DISPID {
    kStatusTextChange = 102,
    kTitleChange = 113,
    kBeforeNavigate = 250,
    kNewWindow = 251,
    kNavigateComplete = 252,
    kDocumentComplete = 259,
    kNavigateError = 271
};

// The browsers that live, for those that a host names by their object.
std::vector<Browser*>& LivingBrowsers() {
    static auto* const browsers = new std::vector<Browser*>;  // outlives objects with static storage
    return *browsers;
}

VARIANT TextValue(const std::string& utf8) {
    const CString text = FromUtf8(utf8);
    VARIANT value;
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text, static_cast<UINT>(text.GetLength()));
    return value;
}

VARIANT NumberValue(LONG number) {
    VARIANT value;
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT BytesValue(const std::optional<std::vector<std::byte>>& bytes) {
    VARIANT value;
    void* data = nullptr;
    SAFEARRAY* const array =
        bytes ? SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes->size())) : nullptr;
    if (!array || FAILED(SafeArrayAccessData(array, &data))) return value;
    std::copy(bytes->begin(), bytes->end(), static_cast<std::byte*>(data));
    SafeArrayUnaccessData(array);
    value.vt = VT_ARRAY | VT_UI1;
    value.parray = array;
    return value;
}

VARIANT ObjectValue(LPDISPATCH object) {
    VARIANT value;
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    if (object) object->AddRef();
    return value;
}

VARIANT BoolReference(VARIANT_BOOL* value) {
    VARIANT reference;
    reference.vt = VT_BYREF | VT_BOOL;
    reference.pboolVal = value;
    return reference;
}

// The arguments of an event, which it owns.
template <std::size_t Count>
class Arguments {
  public:
    explicit Arguments(std::array<VARIANT, Count> values) : values_(values) {}
    ~Arguments() {
        for (VARIANT& value : values_)
            VariantClear(&value);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    VARIANT* Get() { return values_.data(); }

  private:
    std::array<VARIANT, Count> values_;
};

std::string TextOf(const VARIANT* value) {
    if (!value || value->vt != VT_BSTR) return {};
    return ToUtf8(std::u16string_view(value->bstrVal, SysStringLen(value->bstrVal)));
}

std::optional<std::vector<std::byte>> BytesOf(const VARIANT* value) {
    void* data = nullptr;
    if (!value || value->vt != (VT_ARRAY | VT_UI1) || FAILED(SafeArrayAccessData(value->parray, &data)))
        return std::nullopt;
    const auto* const first = static_cast<const std::byte*>(data);
    std::vector<std::byte> bytes(first, first + SafeArrayCount(value->parray));
    SafeArrayUnaccessData(value->parray);
    return bytes;
}

HRESULT HandOut(const std::string& utf8, BSTR* text) {
    if (!text) return E_POINTER;
    const CString units = FromUtf8(utf8);
    *text = SysAllocStringLen(units, static_cast<UINT>(units.GetLength()));
    return *text ? S_OK : E_OUTOFMEMORY;
}

HRESULT NothingToHandOut(BSTR* text) {
    if (text) *text = nullptr;
    return E_FAIL;
}

bool OpensOutside(const std::string& url) {
    for (const char* scheme : {"http:", "https:", "ftp:", "mailto:"})
        if (FromUtf8(url).Left(static_cast<int>(std::string_view(scheme).size())).CompareNoCase(scheme) == 0)
            return true;
    return false;
}

// What get_Document hands out.
class Document final : public IHTMLDocument2 {
  public:
    explicit Document(Browser& browser) : browser_(&browser) {}
    ULONG AddRef() override { return ++holders_; }
    ULONG Release() override {
        const ULONG left = --holders_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT get_title(BSTR* title) override {
        return browser_->Page() ? HandOut(browser_->Page()->Title(), title) : NothingToHandOut(title);
    }
    HRESULT get_URL(BSTR* url) override { return browser_->get_LocationURL(url); }

  private:
    ~Document() override = default;
    std::atomic<ULONG> holders_ = 1;
    CComPtr<Browser> browser_;
};

}  // namespace

Browser::Browser(CHtmlView& view, HWND window, CString file)
    : view_(&view), window_(window), file_(std::move(file)) {
    LivingBrowsers().push_back(this);
}

Browser::~Browser() {
    std::erase(LivingBrowsers(), this);
}

ULONG Browser::Release() {
    const ULONG left = --holders_;
    if (left == 0) delete this;
    return left;
}

void Browser::Close() {
    view_ = nullptr;
    page_.reset();
    frames_.clear();
}

// ---- what hosts ask

HRESULT Browser::Navigate(BSTR url, VARIANT*, VARIANT* targetFrame, VARIANT* postData, VARIANT* headers) {
    if (!page_) return E_FAIL;
    PageRequest request;
    request.url = AddressOfResource(ToUtf8(std::u16string_view(url ? url : u"", SysStringLen(url))));
    if (request.url.empty()) return E_INVALIDARG;
    request.target = TextOf(targetFrame);
    request.headers = TextOf(headers);
    request.postedData = BytesOf(postData);
    page_->Navigate(request);
    return S_OK;
}

HRESULT Browser::GoBack() {
    return page_ && page_->GoBack() ? S_OK : E_FAIL;
}

HRESULT Browser::GoForward() {
    return page_ && page_->GoForward() ? S_OK : E_FAIL;
}

HRESULT Browser::Refresh() {
    if (!page_) return E_FAIL;
    page_->Reload();
    return S_OK;
}

HRESULT Browser::Stop() {
    if (!page_) return E_FAIL;
    page_->Stop();
    return S_OK;
}

HRESULT Browser::get_FullName(BSTR* path) {
    return page_ ? HandOut(ToUtf8(file_), path) : NothingToHandOut(path);
}

HRESULT Browser::get_Type(BSTR* type) {
    if (!page_) return NothingToHandOut(type);
    const std::string kind = page_->DocumentType();
    const bool html = kind == "text/html" || kind == "application/xhtml+xml";
    return HandOut(html ? "HTML Document" : kind, type);
}

HRESULT Browser::get_LocationName(BSTR* title) {
    if (!page_) return NothingToHandOut(title);
    const std::string name = page_->Title();
    return HandOut(name.empty() ? page_->Url() : name, title);
}

HRESULT Browser::get_LocationURL(BSTR* url) {
    return page_ ? HandOut(page_->Url(), url) : NothingToHandOut(url);
}

HRESULT Browser::get_Document(IDispatch** document) {
    if (!document) return E_POINTER;
    *document = nullptr;
    if (!page_) return E_FAIL;
    if (!shows_) return S_FALSE;
    *document = new Document(*this);
    return S_OK;
}

// ---- what the page reports

LPDISPATCH Browser::DispatchOf(const FramePath& path) {
    if (path.empty()) return this;
    Frame& frame = frames_[path];
    if (!frame.object) frame.object = CComPtr<FrameObject>(new FrameObject);
    return frame.object;
}

void Browser::Fire(DISPID event, VARIANT* arguments) {
    if (!view_) return;
    for (const AFX_EVENTSINKMAP* map = view_->GetEventSinkMap(); map; map = map->base ? map->base() : nullptr)
        for (const AFX_EVENTSINKMAP_ENTRY* line = map->entries; line->handle; ++line) {
            if (line->id != AFX_IDW_PANE_FIRST || line->dispid != event) continue;
            try {
                line->handle(view_, arguments);
            } catch (const CException&) {
                // It ends the event that raised it, as it would a message.
            } catch (...) {
                thrown_ = std::current_exception();
                PostMessageW(window_, kRethrow, 0, 0);
            }
            return;
        }
}

void Browser::Rethrow() {
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void Browser::FireForFrame(DISPID event, const FramePath& frame, const std::string& url) {
    Arguments<2> arguments({ObjectValue(DispatchOf(frame)), TextValue(url)});
    Fire(event, arguments.Get());
}

void Browser::ApplyHostInfo() {
    DOCHOSTUIINFO info;
    const bool chosen = view_ && view_->OnGetHostInfo(&info) == S_OK;
    if (page_) page_->HideScrollBars(chosen && (info.dwFlags & DOCHOSTUIFLAG_SCROLL_NO) != 0);
}

bool Browser::BeforeNavigate(const FramePath& frame, const PageRequest& request) {
    const CComPtr<Browser> self(this);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    Arguments<7> arguments({ObjectValue(DispatchOf(frame)), TextValue(request.url), NumberValue(0),
                            TextValue(request.target), BytesValue(request.postedData),
                            TextValue(request.headers), BoolReference(&cancel)});
    Fire(kBeforeNavigate, arguments.Get());
    if (cancel == VARIANT_FALSE && frame.empty()) ApplyHostInfo();
    return page_ && cancel == VARIANT_FALSE;
}

bool Browser::NewWindow(const std::string& url) {
    const CComPtr<Browser> self(this);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    LPDISPATCH given = nullptr;
    VARIANT place;
    place.vt = VT_BYREF | VT_DISPATCH;
    place.ppdispVal = &given;
    Arguments<2> arguments({place, BoolReference(&cancel)});
    Fire(kNewWindow, arguments.Get());
    CComPtr<IDispatch> owned;  // the reference comes with it
    owned.Attach(given);
    if (cancel != VARIANT_FALSE || !page_) return true;
    PageRequest request;
    request.url = url;
    for (Browser* browser : LivingBrowsers())
        if (given && given == static_cast<IDispatch*>(browser)) {
            if (browser->page_) browser->page_->Navigate(request);
            return true;
        }
    if (OpensOutside(url)) return false;
    page_->Navigate(request);
    return true;
}

void Browser::CompleteFrames() {
    std::vector<std::pair<FramePath, std::string>> ending;
    for (const auto& [path, frame] : frames_)
        if (!path.empty() && frame.loading) ending.emplace_back(path, frame.url);
    for (const auto& [path, url] : ending)
        Completed(path, url);
}

void Browser::Committed(const FramePath& frame, const std::string& url) {
    const CComPtr<Browser> self(this);
    if (frame.empty()) {
        CompleteFrames();
        frames_.clear();
        shows_ = true;
    }
    if (!view_) return;
    Frame& record = frames_[frame];
    record.loading = true;
    record.url = url;
    FireForFrame(kNavigateComplete, frame, url);
}

void Browser::Completed(const FramePath& frame, const std::string& url) {
    const CComPtr<Browser> self(this);
    const auto found = frames_.find(frame);
    if (found == frames_.end() || !std::exchange(found->second.loading, false)) return;
    FireForFrame(kDocumentComplete, frame, url);
}

bool Browser::Failed(const FramePath& frame, const std::string& url, std::uint32_t code) {
    const CComPtr<Browser> self(this);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    Arguments<5> arguments({ObjectValue(DispatchOf(frame)), TextValue(url), TextValue(frame),
                            NumberValue(static_cast<LONG>(code)), BoolReference(&cancel)});
    Fire(kNavigateError, arguments.Get());
    return page_ && cancel == VARIANT_FALSE;
}

void Browser::TitleChanged(const std::string& title) {
    const CComPtr<Browser> self(this);
    Arguments<1> arguments({TextValue(title)});
    Fire(kTitleChange, arguments.Get());
}

void Browser::StatusChanged(const std::string& text) {
    const CComPtr<Browser> self(this);
    Arguments<1> arguments({TextValue(text)});
    Fire(kStatusTextChange, arguments.Get());
}

}  // namespace platform::html

IWebBrowser2::~IWebBrowser2() = default;
IHTMLDocument2::~IHTMLDocument2() = default;
