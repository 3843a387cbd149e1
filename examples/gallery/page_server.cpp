#include "examples/gallery/page_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string_view>

namespace gallery {
namespace {

constexpr int kBlink = 50;  // milliseconds between two looks at whether to stop
constexpr std::size_t kMostBytes = 64 * 1024;
constexpr int kSlowBlinks = 50;

bool HasInput(int socket) {
    pollfd waiting{socket, POLLIN, 0};
    return poll(&waiting, 1, kBlink) == 1;
}

// "Content-Length: N" of a head.
std::size_t BodySize(const std::string& head) {
    const std::size_t found = head.find("Content-Length: ");
    return found == std::string::npos ? 0 : std::strtoul(head.c_str() + found + 16, nullptr, 10);
}

std::string Good(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

std::string AnswerTo(const std::string& request) {
    const std::string_view line = std::string_view(request).substr(0, request.find("\r\n"));
    if (line.find("/page") != std::string_view::npos)
        return Good("A page of the gallery's own server.\nIt is UTF-8: grün, 中文, ½.");
    if (line.find("/form") != std::string_view::npos) {
        const std::size_t body = request.find("\r\n\r\n") + 4;
        return Good("The form had " + std::to_string(request.size() - body) + " bytes.");
    }
    if (line.find("/slow") != std::string_view::npos) return Good("This took its time. The dialog did not.");
    return "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

}  // namespace

PageServer::PageServer() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    const auto address = reinterpret_cast<sockaddr*>(&place);
    if (listener_ < 0 || bind(listener_, address, size) != 0 || listen(listener_, 4) != 0 ||
        getsockname(listener_, address, &size) != 0)
        return;
    port_ = ntohs(place.sin_port);
    thread_ = std::thread([this] { Serve(); });
}

PageServer::~PageServer() {
    stopping_ = true;
    if (thread_.joinable()) thread_.join();
    if (listener_ >= 0) close(listener_);
}

std::string PageServer::LastRequest() const {
    const std::lock_guard lock(mutex_);
    return request_;
}

void PageServer::Forget() {
    const std::lock_guard lock(mutex_);
    request_.clear();
}

void PageServer::Serve() {
    while (!stopping_) {
        if (!HasInput(listener_)) continue;
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0) continue;
        Answer(client);
        close(client);
    }
}

void PageServer::Answer(int client) {
    std::string request;
    std::size_t whole = kMostBytes;
    while (!stopping_ && request.size() < whole) {
        if (!HasInput(client)) continue;
        char bytes[4096];
        const ssize_t count = recv(client, bytes, sizeof bytes, 0);
        if (count <= 0) return;
        request.append(bytes, static_cast<std::size_t>(count));
        const std::size_t head = request.find("\r\n\r\n");
        if (head != std::string::npos) whole = std::min(whole, head + 4 + BodySize(request));
    }
    {
        const std::lock_guard lock(mutex_);
        request_ = request;
    }
    const bool slow = request.substr(0, request.find("\r\n")).find("/slow") != std::string::npos;
    for (int i = 0; slow && i < kSlowBlinks && !stopping_; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(kBlink));
    const std::string answer = AnswerTo(request);
    send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
}

}  // namespace gallery
