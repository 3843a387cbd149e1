#include "platform/internet/http_transfer.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "platform/internet/internet_errors.h"
#include "platform/internet/request_text.h"
#include "platform/internet/system_proxy.h"

namespace platform {
namespace {

constexpr std::size_t kMostHeadBytes = std::size_t{256} << 10;
constexpr std::size_t kPauseAt = std::size_t{64} << 10;  // bytes of a body that wait to be read
constexpr std::chrono::milliseconds kLongestWait{1000};

}  // namespace

HttpTransfer::HttpTransfer(std::shared_ptr<HttpClient> client, HttpRequest request)
    : client_(std::move(client)), request_(std::move(request)) {
    Note(INTERNET_STATUS_HANDLE_CREATED);
}

HttpTransfer::~HttpTransfer() {
    Close();
}

void HttpTransfer::Send(std::vector<std::string> headers, std::string_view body) {
    if (state_ != State::New || client_->IsClosed())
        throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE, request_.context);
    if (request_.host.empty()) Fail(ERROR_INTERNET_NAME_NOT_RESOLVED);
    const CurlLibrary* curl = CurlLibrary::Get();
    if (!curl) Fail(ERROR_MOD_NOT_FOUND);
    std::move(headers.begin(), headers.end(), std::back_inserter(request_.headers));
    request_.body = body;
    state_ = State::Failed;  // unless all that follows succeeds
    error_ = ERROR_INTERNET_INTERNAL_ERROR;
    SetUp(*curl);
    client_->Start(easy_, *this);
    state_ = State::Running;
    WaitFor([this] { return headComplete_; });
}

std::optional<DWORD> HttpTransfer::Status() const {
    const bool open = state_ != State::Closed && !client_->IsClosed();
    return open && headComplete_ ? std::optional(status_) : std::nullopt;
}

std::optional<std::string> HttpTransfer::Header(std::string_view name) const {
    if (!Status()) return std::nullopt;
    for (std::size_t from = 0; from < head_.size();) {
        const std::size_t end = std::min(head_.find('\n', from), head_.size() - 1) + 1;
        const std::string_view line(head_.data() + from, end - from);
        if (HasName(line, name)) return std::string(ValueOf(line));
        from = end;
    }
    return std::nullopt;
}

void HttpTransfer::Close() {
    Release();
    state_ = State::Closed;
}

void HttpTransfer::Release() {
    if (!easy_) return;
    const CurlLibrary& curl = *CurlLibrary::Get();
    client_->Stop(easy_, *this);
    curl.easyCleanup(easy_);
    curl.slistFreeAll(headerList_);
    easy_ = nullptr;
    headerList_ = nullptr;
}

void HttpTransfer::Fail(DWORD error) {
    Release();
    state_ = State::Failed;
    error_ = error;
    throw CInternetException(error, request_.context);
}

void HttpTransfer::Finish(CURLcode result) {
    long verification = 0;
    CurlLibrary::Get()->easyGetinfo(easy_, CURLINFO_SSL_VERIFYRESULT, &verification);
    Release();
    Note(INTERNET_STATUS_REQUEST_COMPLETE);
    state_ = result == CURLE_OK ? State::Done : State::Failed;
    if (result == CURLE_OK) {
        headComplete_ = true;
        return;
    }
    // What libcurl takes for a lack of memory is a line of the head without end.
    const bool inHead = connected_ && !headComplete_;
    if (outOfMemory_)
        error_ = ERROR_NOT_ENOUGH_MEMORY;
    else if (result == CURLE_OUT_OF_MEMORY && inHead)
        error_ = ERROR_HTTP_INVALID_SERVER_RESPONSE;
    else
        error_ = InternetErrorOf(result, verification);
}

// True when there is something to read.
bool HttpTransfer::Refill() {
    if (state_ == State::New || state_ == State::Closed || client_->IsClosed())
        throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE, request_.context);
    received_.clear();
    taken_ = 0;
    if (paused_ && easy_) {
        paused_ = false;
        CurlLibrary::Get()->easyPause(easy_, CURLPAUSE_CONT);
    }
    WaitFor([this] { return !received_.empty(); });
    return !received_.empty();
}

// Returns when it has arrived, or the transfer is done; raises when the transfer has failed.
template <class Predicate>
void HttpTransfer::WaitFor(Predicate arrived) {
    lastMove_ = Clock::now();
    while (!arrived() && state_ == State::Running) {
        client_->Perform();
        NoteProgress();
        TellStatus();
        if (client_->IsClosed() || state_ == State::Closed)
            throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE, request_.context);
        if (arrived() || state_ != State::Running) break;
        const auto limit = sent_ < static_cast<curl_off_t>(request_.body.size())
                               ? client_->Settings().sendTime
                               : client_->Settings().receiveTime;
        // Until the connection stands, libcurl watches the clock.
        const auto left = connected_
                              ? std::chrono::ceil<std::chrono::milliseconds>(lastMove_ + limit - Clock::now())
                              : kLongestWait;
        if (left.count() <= 0) Fail(ERROR_INTERNET_TIMEOUT);
        client_->Wait(std::min(left, kLongestWait));
    }
    if (!arrived() && state_ == State::Failed) throw CInternetException(error_, request_.context);
}

void HttpTransfer::NoteProgress() {
    if (!easy_) return;
    curl_off_t sent = 0;
    CurlLibrary::Get()->easyGetinfo(easy_, CURLINFO_SIZE_UPLOAD_T, &sent);
    if (sent == sent_) return;
    sent_ = sent;
    lastMove_ = Clock::now();
}

void HttpTransfer::Note(DWORD status) {
    if (!client_->HasStatusSink()) return;
    Guarded([&] { untold_.push_back(status); });
}

// For what libcurl calls: nothing may be thrown through it.
template <class Step>
bool HttpTransfer::Guarded(Step step) {
    try {
        step();
    } catch (const std::bad_alloc&) {
        outOfMemory_ = true;
    }
    return !outOfMemory_;
}

void HttpTransfer::TellStatus() {
    while (!untold_.empty()) {
        const DWORD status = untold_.front();
        untold_.pop_front();
        client_->Notify(request_.context, status,
                        status == INTERNET_STATUS_RESOLVING_NAME ? &request_.host : nullptr);
    }
}

std::size_t HttpTransfer::OnHeader(std::string_view line) {
    headBytes_ += line.size();
    if (headBytes_ > kMostHeadBytes) return 0;  // breaks the transfer off
    if (headComplete_) return line.size();      // behind the body
    if (line.starts_with("HTTP/")) head_.clear();
    if (!Guarded([&] { head_ += line; })) return 0;
    if (line != "\r\n" && line != "\n") return line.size();
    long status = 0;
    CurlLibrary::Get()->easyGetinfo(easy_, CURLINFO_RESPONSE_CODE, &status);
    if (status < 200) return line.size();  // another head follows
    status_ = static_cast<DWORD>(status);
    headComplete_ = true;
    Note(INTERNET_STATUS_RESPONSE_RECEIVED);
    return line.size();
}

std::size_t HttpTransfer::OnBody(const char* bytes, std::size_t count) {
    if (received_.size() >= kPauseAt) {
        paused_ = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    lastMove_ = Clock::now();
    return Guarded([&] { received_.append(bytes, count); }) ? count : 0;
}

// ---- What libcurl is asked for
// -----------------------------------------------------------------------------

template <class Value>
void HttpTransfer::Set(CURLoption option, Value value) {
    if (CurlLibrary::Get()->easySetopt(easy_, option, value) != CURLE_OK) Fail(ERROR_INTERNET_INTERNAL_ERROR);
}

void HttpTransfer::SetUp(const CurlLibrary& curl) {
    easy_ = curl.easyInit();
    if (!easy_) Fail(ERROR_NOT_ENOUGH_MEMORY);
    const HttpSettings& settings = client_->Settings();
    Set(CURLOPT_PRIVATE, this);
    Set(CURLOPT_URL, request_.url.c_str());
    Set(CURLOPT_PATH_AS_IS, 1L);
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(CURLOPT_FOLLOWLOCATION, 0L);
    Set(CURLOPT_SSL_VERIFYPEER, 1L);
    Set(CURLOPT_SSL_VERIFYHOST, 2L);
    Set(CURLOPT_NOSIGNAL, 1L);    // hosts have threads
    Set(CURLOPT_QUICK_EXIT, 1L);  // a time-out does not wait for a name that still is being resolved
    Set(CURLOPT_BUFFERSIZE, 32L * 1024);
    Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(settings.connectTime.count()));
    if (!settings.agent.empty()) Set(CURLOPT_USERAGENT, settings.agent.c_str());
    if (settings.decodes) Set(CURLOPT_ACCEPT_ENCODING, "");  // all that libcurl knows
    if (!request_.user.empty()) {
        Set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
        Set(CURLOPT_USERNAME, request_.user.c_str());
        Set(CURLOPT_PASSWORD, request_.password.c_str());
    }
    SetUpProxy();
    SetUpRequest();
    SetUpCallbacks();
}

void HttpTransfer::SetUpProxy() {
    const HttpSettings& settings = client_->Settings();
    Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (settings.access == INTERNET_OPEN_TYPE_DIRECT) {
        Set(CURLOPT_PROXY, "");  // the environment's neither
    } else if (settings.access == INTERNET_OPEN_TYPE_PROXY) {
        Set(CURLOPT_PROXY, settings.proxy.c_str());
        Set(CURLOPT_NOPROXY, settings.proxyBypass.c_str());
    } else if (const std::string proxy = SystemProxyFor(request_.url); !proxy.empty()) {
        Set(CURLOPT_PROXY, proxy.c_str());
    }
}

void HttpTransfer::SetUpRequest() {
    const bool posts = request_.verb == "POST" || request_.verb == "PUT" || !request_.body.empty();
    if (request_.verb == "HEAD") {
        Set(CURLOPT_NOBODY, 1L);
    } else if (posts) {
        Set(CURLOPT_POST, 1L);
        Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
        Set(CURLOPT_POSTFIELDS, request_.body.data());
    }
    if (request_.verb != "HEAD" && request_.verb != (posts ? "POST" : "GET"))
        Set(CURLOPT_CUSTOMREQUEST, request_.verb.c_str());

    std::vector<std::string> lines = request_.headers;
    // libcurl adds these of its own accord; a name without a value keeps it from that.
    for (const char* name : {"Accept", "Content-Type", "Expect"}) {
        const auto named = [name](const std::string& line) { return HasName(line, name); };
        if (std::none_of(lines.begin(), lines.end(), named)) lines.push_back(std::string(name) + ":");
    }
    for (const std::string& line : lines) {
        curl_slist* longer = CurlLibrary::Get()->slistAppend(headerList_, line.c_str());
        if (!longer) Fail(ERROR_NOT_ENOUGH_MEMORY);
        headerList_ = longer;
    }
    Set(CURLOPT_HTTPHEADER, headerList_);
}

void HttpTransfer::SetUpCallbacks() {
    using Self = HttpTransfer*;
    using Sink = std::size_t (*)(char*, std::size_t, std::size_t, void*);
    const Sink header = [](char* bytes, std::size_t, std::size_t count, void* self) {
        return static_cast<Self>(self)->OnHeader({bytes, count});
    };
    const Sink body = [](char* bytes, std::size_t, std::size_t count, void* self) {
        return static_cast<Self>(self)->OnBody(bytes, count);
    };
    const curl_prereq_callback connected = [](void* self, char*, char*, int, int) {
        auto& transfer = *static_cast<Self>(self);
        transfer.connected_ = true;
        transfer.lastMove_ = Clock::now();
        transfer.Note(INTERNET_STATUS_CONNECTED_TO_SERVER);
        transfer.Note(INTERNET_STATUS_SENDING_REQUEST);
        return int{CURL_PREREQFUNC_OK};
    };
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_HEADERFUNCTION, header);
    Set(CURLOPT_WRITEDATA, this);
    Set(CURLOPT_WRITEFUNCTION, body);
    Set(CURLOPT_PREREQDATA, this);
    Set(CURLOPT_PREREQFUNCTION, connected);
    if (!client_->HasStatusSink()) return;
    using Resolving = int (*)(void*, void*, void*);
    const Resolving resolving = [](void*, void*, void* self) {
        static_cast<Self>(self)->Note(INTERNET_STATUS_RESOLVING_NAME);
        return 0;
    };
    Set(CURLOPT_RESOLVER_START_DATA, this);
    Set(CURLOPT_RESOLVER_START_FUNCTION, resolving);
}

}  // namespace platform
