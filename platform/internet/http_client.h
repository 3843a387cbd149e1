// What the requests of one session share: settings, open connections, and the loop that moves them on.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <platform/internet.h>

#include "platform/internet/curl_library.h"

namespace platform {

struct HttpSettings {
    DWORD access = INTERNET_OPEN_TYPE_PRECONFIG;
    std::string agent, proxy, proxyBypass;
    std::chrono::milliseconds connectTime{60'000};
    std::chrono::milliseconds sendTime{30'000};
    std::chrono::milliseconds receiveTime{30'000};
    bool decodes = false;
};

class HttpClient {
  public:
    using StatusSink = std::function<void(DWORD_PTR context, DWORD status, const std::string* information)>;

    explicit HttpClient(HttpSettings settings) : settings_(std::move(settings)) {}
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    HttpSettings& Settings() { return settings_; }
    // Empty while nobody wants to know. `information` may be null.
    void SetStatusSink(StatusSink sink) { sink_ = std::move(sink); }
    bool HasStatusSink() const { return static_cast<bool>(sink_); }
    // May close this client, and what goes through it.
    void Notify(DWORD_PTR context, DWORD status, const std::string* information) const;

    // Breaks off every transfer; no new one starts.
    void Close();
    bool IsClosed() const { return closed_; }

    // A transfer's handle; its private pointer is the transfer. Loads libcurl; raises where there is none.
    void Start(CURL* easy, HttpTransfer& transfer);
    void Stop(CURL* easy, HttpTransfer& transfer);
    // Moves all transfers on as far as they go without waiting, and finishes those at their end.
    void Perform();
    void Wait(std::chrono::milliseconds atMost);

  private:
    HttpSettings settings_;
    StatusSink sink_;
    bool closed_ = false;
    CURLM* multi_ = nullptr;
    std::vector<HttpTransfer*> running_;
};

}  // namespace platform
