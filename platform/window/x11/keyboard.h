// The keyboard as the server describes it: keys to virtual-key codes and text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <platform/types.h>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/window/window_system.h"
#include "platform/window/x11/connection.h"

namespace platform::x11 {

struct KeyStroke {
    UINT virtualKey = 0;  // 0: nothing to report
    std::u16string text;  // of a press; dead keys give theirs together with the next key
};

class Keyboard {
  public:
    explicit Keyboard(std::shared_ptr<Connection> connection);

    // `modifiers` is the state of the core protocol that came with the event.
    KeyStroke Translate(xcb_keycode_t key, std::uint16_t modifiers, bool down);
    // The keys that are down, by the bitmap of a KeymapNotify.
    KeySet VirtualKeysOf(const xcb_keymap_notify_event_t& event);
    // Those that are down at this moment, whoever has the keyboard: asks the server.
    KeySet KeysDown();
    // The code of a key by itself; 0 for one without a code.
    UINT CodeOf(xcb_keycode_t key);
    // A dead key that waits for the next one waits no more.
    void ForgetPendingText();
    // True when the event was one about the keyboard itself.
    bool Handle(const xcb_generic_event_t& event);

  private:
    template <class T, void (*Free)(T*)>
    struct Release {
        void operator()(T* object) const { Free(object); }
    };
    using Context = std::unique_ptr<xkb_context, Release<xkb_context, xkb_context_unref>>;
    using Keymap = std::unique_ptr<xkb_keymap, Release<xkb_keymap, xkb_keymap_unref>>;
    using State = std::unique_ptr<xkb_state, Release<xkb_state, xkb_state_unref>>;
    using Table = std::unique_ptr<xkb_compose_table, Release<xkb_compose_table, xkb_compose_table_unref>>;
    using Compose = std::unique_ptr<xkb_compose_state, Release<xkb_compose_state, xkb_compose_state_unref>>;

    void StartExtension();
    void StartCompose();
    void LoadKeymap();
    UINT VirtualKeyOfKey(xcb_keycode_t key) const;
    std::u16string TextOf(xcb_keycode_t key);

    std::shared_ptr<Connection> connection_;
    Context context_;
    Keymap keymap_;
    State state_;
    Compose compose_;
    std::int32_t device_ = -1;  // of the XKB extension; -1 without it
    std::uint8_t extensionFirstEvent_ = 0;
    bool stale_ = true;  // the server's keymap has changed since it was loaded
};

}  // namespace platform::x11
