// A server on 127.0.0.1 for the page of requests: one thread, a few answers, and the last request as it came.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace gallery {

class PageServer {
  public:
    // Listens at a port that is free; Port() is 0 where there is none.
    PageServer();
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    unsigned short Port() const { return port_; }
    // Byte by byte; empty at first, and when forgotten.
    std::string LastRequest() const;
    void Forget();

  private:
    void Serve();
    void Answer(int client);

    int listener_ = -1;
    unsigned short port_ = 0;
    std::atomic<bool> stopping_ = false;
    mutable std::mutex mutex_;
    std::string request_;
    std::thread thread_;
};

}  // namespace gallery
