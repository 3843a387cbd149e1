// An X server of the test's own, with a window manager and a compositor where asked for, and the means to
// act as a user on it and to look at its screen. Everything started here ends with the session, also when
// the test dies.
#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace xtest {

// What the screen shows: 0x00RRGGBB, top-down.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t At(int x, int y) const;  // 0xFFFFFFFF outside
};

// A program that runs beside the test.
class Process {
  public:
    Process() = default;
    // `keep` is a descriptor that the program inherits; -1: none. Its output is thrown away.
    static Process Start(const std::vector<std::string>& command, int keep = -1);
    ~Process() { Stop(); }
    Process(Process&& other) noexcept : id_(other.id_) { other.id_ = 0; }
    Process& operator=(Process&& other) noexcept;
    bool IsRunning() const { return id_ > 0; }
    pid_t Id() const { return id_; }
    // Asks it to end, then makes it; returns when it has.
    void Stop();
    void Kill();
    // Waits for its end. False when it failed or takes longer than ten seconds.
    bool Finish();

  private:
    bool Collect(int milliseconds, int* status);
    pid_t id_ = 0;
};

struct SessionOptions {
    bool windowManager = false;
    bool compositor = false;
    bool sharedMemory = true;
    bool alphaVisual = true;  // without it the server has the Composite extension switched off
    int width = 1280;
    int height = 800;
};

class XSession {
  public:
    // Null when the server does not come up; that is a failure of the test. DISPLAY names the session from
    // here on, for this process and those it starts.
    static std::unique_ptr<XSession> Start(const SessionOptions& options = {});
    ~XSession();
    XSession(const XSession&) = delete;
    XSession& operator=(const XSession&) = delete;

    const std::string& Display() const { return display_; }
    // Each returns once it is there, or is gone; false after ten seconds of waiting.
    bool StartWindowManager();
    bool StopWindowManager();
    bool StartCompositor();
    bool StopCompositor();
    void KillServer();

    // Runs xdotool and waits for it: real input, through the server.
    bool Xdotool(const std::vector<std::string>& arguments);
    bool MovePointer(int x, int y);
    bool Click(int x, int y, int button = 1);

    Picture Screenshot();
    std::uint32_t PixelAt(int x, int y);  // of the screen
    // As the window was drawn, all 32 bits. Only what is seen of it, unless a compositor keeps its pixels.
    Picture PixelsOf(xcb_window_t window);

    // The observer's own connection: another client's eyes.
    xcb_connection_t* Connection() const { return connection_; }
    xcb_window_t Root() const { return root_; }
    xcb_atom_t Atom(const std::string& name);
    // The 32-bit words of a property; empty without it.
    std::vector<std::uint32_t> Property(xcb_window_t window, const std::string& name);
    void Write(xcb_window_t window, const std::string& property, const std::vector<std::uint32_t>& words,
               const std::string& type = "CARDINAL");
    // A window of the observer's, not mapped, that receives presses; `managed` when window managers may.
    xcb_window_t NewWindow(int x, int y, int width, int height, std::uint32_t colour, bool managed = false);
    // A message in 32-bit words. What is sent to the root goes to the window manager.
    void Send(xcb_window_t to, xcb_window_t about, const std::string& type,
              const std::array<std::uint32_t, 5>& words = {});
    void Listen(xcb_window_t window, std::uint32_t events);
    // The server has done what was asked of it, on this connection.
    void Sync();
    // Hands over each event that has arrived for the observer.
    void TakeEvents(const std::function<void(const xcb_generic_event_t&)>& take);
    bool GrabPointer();
    void ReleasePointer();
    // The window that a press at this point would go to, and the windows around it, innermost first.
    std::vector<xcb_window_t> WindowsAt(int x, int y);
    // Finds a window by its _NET_WM_NAME anywhere below the root; 0 without one.
    xcb_window_t FindByTitle(const std::string& title);

  private:
    XSession() = default;
    Picture Read(xcb_drawable_t drawable, int x, int y, int width, int height);
    bool StartServer(const SessionOptions& options);
    bool WaitForOwner(bool wanted);
    bool KeepsPixels();
    bool WaitForManager(bool wanted);
    xcb_window_t ManagerWindow();
    bool ManagesWindows();

    std::string display_;
    Process server_, manager_, compositor_;
    xcb_connection_t* connection_ = nullptr;
    xcb_window_t root_ = 0;
    int width_ = 0, height_ = 0;
};

// A plain window of another client, unmanaged, that counts presses on it.
class ForeignWindow {
  public:
    ForeignWindow(XSession& session, int x, int y, int width, int height, std::uint32_t colour);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;
    xcb_window_t Id() const { return id_; }
    int Presses();  // so far

  private:
    XSession& session_;
    xcb_window_t id_;
    int presses_ = 0;
};

// Looks again until the condition holds; false when ten seconds were not enough.
bool Eventually(const std::function<bool()>& condition, int milliseconds = 10000);

}  // namespace xtest
