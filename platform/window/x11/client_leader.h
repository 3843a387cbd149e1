// The window that stands for the whole program: window managers group the others by it.
#pragma once

#include <memory>

#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

// Says of a window which program it belongs to: name, process, machine, leader.
void WriteProgram(const Connection& connection, xcb_window_t window, xcb_window_t leader);

class ClientLeader {
  public:
    explicit ClientLeader(std::shared_ptr<Connection> connection);
    ~ClientLeader();
    ClientLeader(const ClientLeader&) = delete;
    ClientLeader& operator=(const ClientLeader&) = delete;

    xcb_window_t Id() const { return id_; }  // never mapped

  private:
    std::shared_ptr<Connection> connection_;
    xcb_window_t id_ = 0;
};

}  // namespace platform::x11
