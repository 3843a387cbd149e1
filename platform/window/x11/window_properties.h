// The properties by which a top-level tells window managers what it is.
#pragma once

#include <optional>

#include "platform/window/x11/native_window.h"
#include "platform/window/x11/window_manager.h"

namespace platform::x11 {

// How a window comes up when it is mapped next.
struct MapHints {
    bool minimised = false;
    std::optional<xcb_timestamp_t> userTime;  // of what made it show; 0: it must not take the focus
};

class WindowProperties {
  public:
    // `leader` stands for the program.
    WindowProperties(std::shared_ptr<Connection> connection, WindowManager& manager, xcb_window_t leader)
        : connection_(std::move(connection)), manager_(manager), leader_(leader) {}

    // All that stays the same between two mappings. `owner` is 0 without one.
    void WriteAll(const NativeWindow& window, xcb_window_t owner);
    // What differs from `before`.
    void WriteChanges(const NativeWindow& window, const WindowTraits& before, xcb_window_t owner);
    // What a window manager reads when it takes the window. It drops the states when it lets go of a window,
    // so this belongs before each map.
    void WriteBeforeMap(const NativeWindow& window, const MapHints& hints);
    // Size and position count as the user's own, so that the window manager takes them as they are.
    void WriteSizeHints(const NativeWindow& window);
    void WriteOwner(const NativeWindow& window, xcb_window_t owner);
    void WriteUserTime(xcb_window_t window, xcb_timestamp_t time);

  private:
    void Replace(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 std::initializer_list<std::uint32_t> values);
    void ReplaceText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view text);
    void WriteIcons(const NativeWindow& window);
    void WriteTitle(const NativeWindow& window);
    void WriteDecorations(const NativeWindow& window);
    void WriteType(const NativeWindow& window);
    void WriteTakesFiles(const NativeWindow& window);
    void WriteInputHint(const NativeWindow& window, bool minimised);
    void WriteStates(const NativeWindow& window);
    void ChangeStates(const NativeWindow& window, const WindowTraits& before);

    std::shared_ptr<Connection> connection_;
    WindowManager& manager_;
    xcb_window_t leader_;
};

}  // namespace platform::x11
