// One request and its answer, pulled through libcurl as fast as it is read.
#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/internet/http_client.h"

namespace platform {

struct HttpRequest {
    std::string verb;
    std::string host;  // empty where the server's text can be no host's name
    std::string url;
    std::vector<std::string> headers;
    std::string user, password;
    DWORD_PTR context = 0;
    std::string body;
};

class HttpTransfer {
  public:
    HttpTransfer(std::shared_ptr<HttpClient> client, HttpRequest request);
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer&) = delete;
    HttpTransfer& operator=(const HttpTransfer&) = delete;

    // Raise a CInternetException, as Read does; see <platform/internet.h>.
    void Send(std::vector<std::string> headers, std::string_view body);
    // Something is there to be read at once.
    bool HasReceived() const { return taken_ < received_.size(); }
    std::size_t Read(char* to, std::size_t count) {
        if (!HasReceived() && !Refill()) return 0;
        const std::size_t given = received_.copy(to, count, taken_);
        taken_ += given;
        return given;
    }
    // Nothing before the head of the answer is there, and after Close.
    std::optional<DWORD> Status() const;
    std::optional<std::string> Header(std::string_view name) const;
    void Close();

    // For the client: the transfer is at its end.
    void Finish(CURLcode result);

  private:
    using Clock = std::chrono::steady_clock;
    enum class State { New, Running, Done, Failed, Closed };

    void SetUp(const CurlLibrary& curl);
    void SetUpRequest();
    void SetUpProxy();
    void SetUpCallbacks();
    template <class Value>
    void Set(CURLoption option, Value value);

    bool Refill();
    template <class Predicate>
    void WaitFor(Predicate arrived);
    void NoteProgress();
    void TellStatus();
    void Note(DWORD status);
    template <class Step>
    bool Guarded(Step step);
    [[noreturn]] void Fail(DWORD error);
    void Release();

    std::size_t OnHeader(std::string_view line);
    std::size_t OnBody(const char* bytes, std::size_t count);

    std::shared_ptr<HttpClient> client_;
    HttpRequest request_;
    State state_ = State::New;
    DWORD error_ = 0;  // of State::Failed
    bool outOfMemory_ = false;

    CURL* easy_ = nullptr;
    curl_slist* headerList_ = nullptr;

    std::string head_;  // of the last answer so far, lines with their ends
    std::size_t headBytes_ = 0;
    bool headComplete_ = false;
    DWORD status_ = 0;

    std::string received_;  // of the body, read up to taken_
    std::size_t taken_ = 0;
    bool paused_ = false;

    bool connected_ = false;
    curl_off_t sent_ = 0;
    Clock::time_point lastMove_;
    std::deque<DWORD> untold_;  // statuses: libcurl must not be re-entered
};

}  // namespace platform
