#include "x11/x_session.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace xtest {

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kPatience = 10000;  // milliseconds

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

// The number that the server writes once it takes connections; empty when it ends before.
std::string ReadLine(int descriptor) {
    std::string line;
    pollfd entry{descriptor, POLLIN, 0};
    char byte = 0;
    while (poll(&entry, 1, kPatience) > 0 && read(descriptor, &byte, 1) == 1) {
        if (byte == '\n') return line;
        line += byte;
    }
    return {};
}

}  // namespace

bool Eventually(const std::function<bool()>& condition, int milliseconds) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(4));
    }
    return true;
}

// ---- Picture

std::uint32_t Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return 0xFFFFFFFF;
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
}

// ---- Process

Process Process::Start(const std::vector<std::string>& command, int keep) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t parent = getpid();
    Process process;
    process.id_ = fork();
    if (process.id_ != 0) return process;
    // The child: only calls that are safe after a fork.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    const int nothing = open("/dev/null", O_RDWR);
    for (int standard = 0; standard < 3; ++standard)
        dup2(nothing, standard);
    if (keep >= 0) fcntl(keep, F_SETFD, 0);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

Process& Process::operator=(Process&& other) noexcept {
    if (this != &other) {
        Stop();
        id_ = other.id_;
        other.id_ = 0;
    }
    return *this;
}

bool Process::Collect(int milliseconds, int* status) {
    return Eventually([&] { return waitpid(id_, status, WNOHANG) == id_; }, milliseconds);
}

void Process::Stop() {
    if (id_ <= 0) return;
    kill(id_, SIGTERM);
    int status = 0;
    if (!Collect(3000, &status)) {
        Kill();
        return;
    }
    id_ = 0;
}

void Process::Kill() {
    if (id_ <= 0) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
    id_ = 0;
}

bool Process::Finish() {
    int status = 1;
    if (id_ <= 0) return false;
    if (!Collect(kPatience, &status)) {
        Kill();
        return false;
    }
    id_ = 0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// ---- XSession

std::unique_ptr<XSession> XSession::Start(const SessionOptions& options) {
    std::unique_ptr<XSession> session(new XSession);
    if (!session->StartServer(options)) {
        ADD_FAILURE() << "no X server came up";
        return nullptr;
    }
    if (options.windowManager && !session->StartWindowManager()) {
        ADD_FAILURE() << "no window manager came up";
        return nullptr;
    }
    if (options.compositor && !session->StartCompositor()) {
        ADD_FAILURE() << "no compositor came up";
        return nullptr;
    }
    return session;
}

XSession::~XSession() {
    compositor_.Stop();
    manager_.Stop();
    if (connection_ != nullptr) xcb_disconnect(connection_);
    server_.Stop();
}

bool XSession::StartServer(const SessionOptions& options) {
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) return false;
    std::vector<std::string> command{
        "Xvfb",
        "-displayfd",
        std::to_string(ready[1]),
        "-screen",
        "0",
        std::to_string(options.width) + "x" + std::to_string(options.height) + "x24",
        "-nolisten",
        "tcp",
        "-noreset",
        options.alphaVisual ? "+extension" : "-extension",
        "Composite"};
    if (!options.sharedMemory) command.insert(command.end(), {"-extension", "MIT-SHM"});
    server_ = Process::Start(command, ready[1]);
    close(ready[1]);
    const std::string line = ReadLine(ready[0]);
    close(ready[0]);
    if (line.empty()) return false;
    display_ = ":" + line;
    setenv("DISPLAY", display_.c_str(), 1);
    connection_ = xcb_connect(display_.c_str(), nullptr);
    if (xcb_connection_has_error(connection_) != 0) return false;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen->root;
    width_ = screen->width_in_pixels;
    height_ = screen->height_in_pixels;
    return true;
}

void XSession::KillServer() {
    server_.Kill();
    unlink(("/tmp/.X11-unix/X" + display_.substr(1)).c_str());
    unlink(("/tmp/.X" + display_.substr(1) + "-lock").c_str());
}

xcb_atom_t XSession::Atom(const std::string& name) {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : 0;
}

std::vector<std::uint32_t> XSession::Property(xcb_window_t window, const std::string& name) {
    const auto cookie =
        xcb_get_property(connection_, 0, window, Atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 256);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* words = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {words, words + reply->value_len};
}

xcb_window_t XSession::ManagerWindow() {
    const auto named = Property(root_, "_NET_SUPPORTING_WM_CHECK");
    if (named.size() != 1) return 0;
    return Property(named[0], "_NET_SUPPORTING_WM_CHECK") == named ? named[0] : 0;
}

bool XSession::WaitForManager(bool wanted) {
    return Eventually([&] { return (ManagerWindow() != 0) == wanted; });
}

bool XSession::WaitForOwner(bool wanted) {
    const xcb_atom_t selection = Atom("_NET_WM_CM_S0");
    return Eventually([&] {
        const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            connection_, xcb_get_selection_owner(connection_, selection), nullptr));
        return reply && (reply->owner != 0) == wanted;
    });
}

bool XSession::StartWindowManager() {
    manager_ = Process::Start({"openbox", "--sm-disable"});
    return WaitForManager(true) && Eventually([&] { return ManagesWindows(); });
}

bool XSession::ManagesWindows() {
    // While it starts it loses requests to map a window: only one that was taken shows that it is ready.
    const xcb_window_t probe = NewWindow(0, 0, 1, 1, 0, true);
    xcb_map_window(connection_, probe);
    const bool taken = Eventually([&] { return !Property(probe, "WM_STATE").empty(); }, 300);
    xcb_destroy_window(connection_, probe);
    return taken && Eventually([&] {
               const auto list = Property(root_, "_NET_CLIENT_LIST");
               return std::count(list.begin(), list.end(), probe) == 0;
           });
}

bool XSession::StopWindowManager() {
    manager_.Stop();
    return WaitForManager(false);
}

bool XSession::StartCompositor() {
    compositor_ = Process::Start({"picom", "--backend", "xrender", "--config", "/dev/null"});
    return WaitForOwner(true) && Eventually([&] { return KeepsPixels(); });
}

// A compositor takes windows over some time after it took its selection, and what they show is lost then.
bool XSession::KeepsPixels() {
    const xcb_window_t below = NewWindow(0, 0, 4, 4, 0x123456), above = NewWindow(0, 0, 4, 4, 0x654321);
    for (const xcb_window_t window : {below, above})
        xcb_map_window(connection_, window);
    const Picture seen = PixelsOf(below);
    for (const xcb_window_t window : {below, above})
        xcb_destroy_window(connection_, window);
    return !seen.pixels.empty() && (seen.pixels[0] & 0xFFFFFF) == 0x123456;
}

bool XSession::StopCompositor() {
    compositor_.Stop();
    return WaitForOwner(false);
}

bool XSession::Xdotool(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"xdotool"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Process::Start(command).Finish();
}

bool XSession::MovePointer(int x, int y) {
    return Xdotool({"mousemove", std::to_string(x), std::to_string(y)});
}

bool XSession::Click(int x, int y, int button) {
    return Xdotool({"mousemove", std::to_string(x), std::to_string(y), "click", std::to_string(button)});
}

Picture XSession::Read(xcb_drawable_t drawable, int x, int y, int width, int height) {
    Picture picture;
    const auto cookie =
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0xFFFFFFFF);
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection_, cookie, nullptr));
    if (!reply) return picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()), picture.pixels.size() * 4);
    if (reply->depth < 32)
        for (std::uint32_t& pixel : picture.pixels)
            pixel |= 0xFF000000;  // the server leaves it as it is
    return picture;
}

Picture XSession::Screenshot() {
    Picture picture = Read(root_, 0, 0, width_, height_);
    for (std::uint32_t& pixel : picture.pixels)
        pixel &= 0xFFFFFF;
    return picture;
}

Picture XSession::PixelsOf(xcb_window_t window) {
    const auto cookie = xcb_get_geometry(connection_, window);
    const Reply<xcb_get_geometry_reply_t> place(xcb_get_geometry_reply(connection_, cookie, nullptr));
    return place ? Read(window, 0, 0, place->width, place->height) : Picture();
}

std::uint32_t XSession::PixelAt(int x, int y) {
    const Picture one = Read(root_, x, y, 1, 1);
    return one.pixels.empty() ? 0xFFFFFFFF : one.pixels[0] & 0xFFFFFF;
}

xcb_window_t XSession::NewWindow(int x, int y, int width, int height, std::uint32_t colour, bool managed) {
    const xcb_window_t id = xcb_generate_id(connection_);
    const std::uint32_t values[] = {colour, managed ? 0U : 1U, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, id, root_, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    return id;
}

void XSession::Write(xcb_window_t window, const std::string& property,
                     const std::vector<std::uint32_t>& words, const std::string& type) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, Atom(property), Atom(type), 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
    xcb_flush(connection_);
}

void XSession::Send(xcb_window_t to, xcb_window_t about, const std::string& type,
                    const std::array<std::uint32_t, 5>& words) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = Atom(type);
    std::copy(words.begin(), words.end(), message.data.data32);
    constexpr std::uint32_t kManager =
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(connection_, 0, to, to == root_ ? kManager : 0, reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
}

void XSession::Listen(xcb_window_t window, std::uint32_t events) {
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    Sync();
}

void XSession::Sync() {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void XSession::TakeEvents(const std::function<void(const xcb_generic_event_t&)>& take) {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)})
        take(*event);
}

bool XSession::GrabPointer() {
    const auto cookie = xcb_grab_pointer(connection_, 0, root_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                         0, 0, XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(connection_, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XSession::ReleasePointer() {
    xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    Sync();
}

std::vector<xcb_window_t> XSession::WindowsAt(int x, int y) {
    std::vector<xcb_window_t> windows;
    xcb_window_t current = root_;
    for (;;) {
        const auto cookie = xcb_translate_coordinates(
            connection_, root_, current, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
        const Reply<xcb_translate_coordinates_reply_t> reply(
            xcb_translate_coordinates_reply(connection_, cookie, nullptr));
        if (!reply || reply->child == 0) return windows;
        current = reply->child;
        windows.insert(windows.begin(), current);
    }
}

xcb_window_t XSession::FindByTitle(const std::string& title) {
    const xcb_atom_t name = Atom("_NET_WM_NAME");
    std::vector<xcb_window_t> open{root_};
    while (!open.empty()) {
        const xcb_window_t window = open.back();
        open.pop_back();
        const auto property =
            xcb_get_property(connection_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
        const auto tree = xcb_query_tree(connection_, window);
        const Reply<xcb_get_property_reply_t> text(xcb_get_property_reply(connection_, property, nullptr));
        if (text && text->format == 8 &&
            title ==
                std::string(static_cast<const char*>(xcb_get_property_value(text.get())), text->value_len) &&
            !Property(window, "_NET_WM_PID").empty())
            return window;
        const Reply<xcb_query_tree_reply_t> children(xcb_query_tree_reply(connection_, tree, nullptr));
        if (!children) continue;
        const xcb_window_t* first = xcb_query_tree_children(children.get());
        open.insert(open.end(), first, first + xcb_query_tree_children_length(children.get()));
    }
    return 0;
}

// ---- ForeignWindow

ForeignWindow::ForeignWindow(XSession& session, int x, int y, int width, int height, std::uint32_t colour)
    : session_(session), id_(session.NewWindow(x, y, width, height, colour)) {
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_map_window(session.Connection(), id_);
    xcb_configure_window(session.Connection(), id_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    session.Sync();
}

ForeignWindow::~ForeignWindow() {
    xcb_destroy_window(session_.Connection(), id_);
    xcb_flush(session_.Connection());
}

int ForeignWindow::Presses() {
    session_.Sync();  // what the server has sent so far is behind the answer to a question
    session_.TakeEvents([this](const xcb_generic_event_t& event) {
        const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
        if ((event.response_type & 0x7F) == XCB_BUTTON_PRESS && press.event == id_) ++presses_;
    });
    return presses_;
}

}  // namespace xtest
