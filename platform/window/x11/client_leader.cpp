#include "platform/window/x11/client_leader.h"

#include <errno.h>  // program_invocation_short_name
#include <unistd.h>

#include <array>
#include <string>

namespace platform::x11 {

void WriteProgram(const Connection& connection, xcb_window_t window, xcb_window_t leader) {
    xcb_connection_t* c = connection.Get();
    const Atoms& names = connection.Names();
    const auto text = [&](xcb_atom_t property, const std::string& value) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(value.size()), value.data());
    };
    const auto number = [&](xcb_atom_t property, xcb_atom_t type, std::uint32_t value) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, property, type, 32, 1, &value);
    };
    // Instance and class, each with its terminator.
    const std::string program = program_invocation_short_name;
    text(XCB_ATOM_WM_CLASS, program + std::string(1, '\0') + program + std::string(1, '\0'));
    number(names.netWmPid, XCB_ATOM_CARDINAL, static_cast<std::uint32_t>(getpid()));
    number(names.wmClientLeader, XCB_ATOM_WINDOW, leader);
    std::array<char, 256> host{};
    if (gethostname(host.data(), host.size() - 1) == 0) text(XCB_ATOM_WM_CLIENT_MACHINE, host.data());
}

ClientLeader::ClientLeader(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
    xcb_connection_t* c = connection_->Get();
    id_ = xcb_generate_id(c);
    xcb_create_window(c, 0, id_, connection_->Root(), -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    WriteProgram(*connection_, id_, id_);
}

ClientLeader::~ClientLeader() {
    if (connection_->IsAlive()) xcb_destroy_window(connection_->Get(), id_);
}

}  // namespace platform::x11
