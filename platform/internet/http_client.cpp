#include "platform/internet/http_client.h"

#include <algorithm>

#include "platform/internet/http_transfer.h"

namespace platform {

HttpClient::~HttpClient() {
    Close();
}

void HttpClient::Notify(DWORD_PTR context, DWORD status, const std::string* information) const {
    const StatusSink sink = sink_;  // which the call may replace
    if (sink) sink(context, status, information);
}

void HttpClient::Close() {
    closed_ = true;
    sink_ = nullptr;
    while (!running_.empty())
        running_.back()->Close();
    if (multi_) CurlLibrary::Get()->multiCleanup(multi_);
    multi_ = nullptr;
}

void HttpClient::Start(CURL* easy, HttpTransfer& transfer) {
    const CurlLibrary& curl = *CurlLibrary::Get();  // `easy` came from there
    if (!multi_) multi_ = curl.multiInit();
    if (!multi_) throw CInternetException(ERROR_NOT_ENOUGH_MEMORY);
    running_.push_back(&transfer);
    if (curl.multiAddHandle(multi_, easy) == CURLM_OK) return;
    running_.pop_back();
    throw CInternetException(ERROR_INTERNET_INTERNAL_ERROR);
}

void HttpClient::Stop(CURL* easy, HttpTransfer& transfer) {
    const auto found = std::find(running_.begin(), running_.end(), &transfer);
    if (found == running_.end()) return;
    running_.erase(found);
    CurlLibrary::Get()->multiRemoveHandle(multi_, easy);
}

void HttpClient::Perform() {
    const CurlLibrary& curl = *CurlLibrary::Get();
    int left = 0;
    if (curl.multiPerform(multi_, &left) != CURLM_OK) throw CInternetException(ERROR_INTERNET_INTERNAL_ERROR);
    while (const CURLMsg* message = curl.multiInfoRead(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        HttpTransfer* transfer = nullptr;
        const CURLcode result = message->data.result;  // gone once the transfer is taken out
        curl.easyGetinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        transfer->Finish(result);
    }
}

void HttpClient::Wait(std::chrono::milliseconds atMost) {
    CurlLibrary::Get()->multiPoll(multi_, nullptr, 0, static_cast<int>(atMost.count()), nullptr);
}

}  // namespace platform
