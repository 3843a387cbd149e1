// An HTTP server on 127.0.0.1 that keeps what it was sent, byte by byte, and answers as a test plays it.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace kit {

// The server's end of one connection, after the request has come.
class Wire {
  public:
    Wire(int socket, const std::atomic<bool>& stopping) : socket_(socket), stopping_(stopping) {}
    // False when the client is gone.
    bool Send(std::string_view bytes) const;
    // A body of so many bytes, all 'x', of which the server holds no more than a block.
    bool SendBody(std::size_t size) const;
    // Ends the connection in a way that the client sees as an error.
    void Reset() const;
    // Says nothing more until the client goes.
    void Hold() const;

  private:
    int socket_;
    const std::atomic<bool>& stopping_;
};

class TestServer {
  public:
    using Answer = std::function<void(const Wire& wire)>;

    TestServer();
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    unsigned short Port() const { return port_; }
    // How each request from now on is answered; the connection ends with the answer.
    void Play(Answer answer);
    void Play(std::string answer);
    // The last request, with its body.
    std::string Request();

  private:
    void Serve();
    std::string ReadRequest(int socket) const;

    int listener_;
    unsigned short port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::mutex mutex_;  // of the two below
    Answer answer_;
    std::string request_;
    std::thread thread_;
};

// A port of 127.0.0.1 that nobody listens at.
unsigned short DeadPort();

}  // namespace kit
