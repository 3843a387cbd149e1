#include "tests/web/test_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace kit {
namespace {

constexpr int kBlink = 20;  // milliseconds between two looks at whether to stop

// A listening socket at a free port.
std::pair<int, unsigned short> Listen() {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    bind(listener, reinterpret_cast<sockaddr*>(&place), size);
    listen(listener, 8);
    getsockname(listener, reinterpret_cast<sockaddr*>(&place), &size);
    return {listener, ntohs(place.sin_port)};
}

bool IsReadable(int socket) {
    pollfd waiting{socket, POLLIN, 0};
    return poll(&waiting, 1, kBlink) == 1;
}

// Content-Length as a client writes it.
std::size_t BodySize(std::string_view head) {
    constexpr std::string_view kName = "Content-Length: ";
    const std::size_t found = head.find(kName);
    std::size_t size = 0;
    if (found != std::string_view::npos)
        std::from_chars(head.data() + found + kName.size(), head.data() + head.size(), size);
    return size;
}

}  // namespace

bool Wire::Send(std::string_view bytes) const {
    while (!bytes.empty() && !stopping_) {
        const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return bytes.empty();
}

bool Wire::SendBody(std::size_t size) const {
    static const std::string block(256 * 1024, 'x');
    for (std::size_t left = size; left > 0;) {
        const std::size_t now = std::min(left, block.size());
        if (!Send(std::string_view(block).substr(0, now))) return false;
        left -= now;
    }
    return true;
}

void Wire::Reset() const {
    const linger drop{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &drop, sizeof drop);
}

void Wire::Hold() const {
    while (!stopping_ && !IsReadable(socket_)) {
    }
}

TestServer::TestServer() {
    std::tie(listener_, port_) = Listen();
    thread_ = std::thread([this] { Serve(); });
}

TestServer::~TestServer() {
    stopping_ = true;
    thread_.join();
    close(listener_);
}

void TestServer::Play(Answer answer) {
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
}

void TestServer::Play(std::string answer) {
    Play([bytes = std::move(answer)](const Wire& wire) { wire.Send(bytes); });
}

std::string TestServer::Request() {
    const std::lock_guard lock(mutex_);
    return request_;
}

void TestServer::Serve() {
    while (!stopping_) {
        if (!IsReadable(listener_)) continue;
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0) continue;
        const timeval patience{2, 0};
        setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        std::string request = ReadRequest(client);
        Answer answer;
        {
            const std::lock_guard lock(mutex_);
            request_ = std::move(request);
            answer = answer_;
        }
        if (answer) answer(Wire(client, stopping_));
        close(client);
    }
}

std::string TestServer::ReadRequest(int socket) const {
    std::string request;
    std::size_t whole = std::string::npos;
    while (!stopping_ && request.size() < whole) {
        if (!IsReadable(socket)) continue;
        char bytes[4096];
        const ssize_t count = recv(socket, bytes, sizeof bytes, 0);
        if (count <= 0) break;
        request.append(bytes, static_cast<std::size_t>(count));
        const std::size_t head = request.find("\r\n\r\n");
        if (head != std::string::npos) whole = head + 4 + BodySize(std::string_view(request).substr(0, head));
    }
    return request;
}

unsigned short DeadPort() {
    const auto [listener, port] = Listen();
    close(listener);
    return port;
}

}  // namespace kit
