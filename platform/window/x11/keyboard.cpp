#include "platform/window/x11/keyboard.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <string_view>

#include <platform/text.h>
#include <platform/window.h>
#include <xkbcommon/xkbcommon-x11.h>

// The header of the extension names a field `explicit`.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include "platform/window/x11/reply.h"
#include "platform/window/x11/virtual_keys.h"

namespace platform::x11 {

namespace {

// What all events of the extension begin with.
struct KeyboardEvent {
    std::uint8_t responseType;
    std::uint8_t kind;
};

const char* ComposeLocale() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0') return value;
    return "C";
}

// The letter that a key has on a keyboard of the United States; 0 for other keys. Where a layout knows no
// Latin letters, hosts still expect their codes.
UINT LetterAtPlaceOf(xcb_keycode_t key) {
    struct Row {
        xcb_keycode_t first;
        std::string_view letters;
    };
    constexpr Row kRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const Row& row : kRows)
        if (key >= row.first && key < row.first + row.letters.size())
            return static_cast<UINT>(row.letters[static_cast<std::size_t>(key - row.first)]);
    return 0;
}

}  // namespace

Keyboard::Keyboard(std::shared_ptr<Connection> connection)
    : connection_(std::move(connection)), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    StartExtension();
    StartCompose();
}

void Keyboard::StartExtension() {
    xcb_connection_t* c = connection_->Get();
    if (xkb_x11_setup_xkb_extension(c, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
                                    &extensionFirstEvent_, nullptr) == 0)
        return;
    device_ = xkb_x11_get_core_keyboard_device_id(c);
    if (device_ < 0) return;
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                    XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS |
                                    XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    const auto device = static_cast<xcb_xkb_device_spec_t>(device_);
    xcb_xkb_select_events(c, device, events, 0, events, parts, parts, nullptr);
    // Without this a repeated key would look like released and pressed again.
    const xcb_xkb_per_client_flag_t repeats = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(c, xcb_xkb_per_client_flags(c, device, repeats, repeats, 0, 0, 0).sequence);
}

void Keyboard::StartCompose() {
    if (!context_) return;
    const Table table(
        xkb_compose_table_new_from_locale(context_.get(), ComposeLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS));
    if (table) compose_.reset(xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS));
}

void Keyboard::LoadKeymap() {
    stale_ = false;
    if (!context_ || !connection_->IsAlive()) return;
    xcb_connection_t* c = connection_->Get();
    Keymap keymap;
    State state;
    if (device_ >= 0) {
        keymap.reset(xkb_x11_keymap_new_from_device(context_.get(), c, device_, XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (keymap) state.reset(xkb_x11_state_new_from_device(keymap.get(), c, device_));
    } else {
        keymap.reset(xkb_keymap_new_from_names(context_.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (keymap) state.reset(xkb_state_new(keymap.get()));
    }
    if (!state) return;  // the one before serves on
    keymap_ = std::move(keymap);
    state_ = std::move(state);
}

bool Keyboard::Handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = event.response_type & 0x7F;
    if (type == XCB_MAPPING_NOTIFY) {
        // The extension tells of the same change in events of its own.
        if (device_ < 0) stale_ = true;
        return true;
    }
    if (device_ < 0 || type != extensionFirstEvent_) return false;
    switch (reinterpret_cast<const KeyboardEvent&>(event).kind) {
        case XCB_XKB_NEW_KEYBOARD_NOTIFY:
        case XCB_XKB_MAP_NOTIFY:
            stale_ = true;
            break;
        case XCB_XKB_STATE_NOTIFY: {
            const auto& now = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
            if (state_ && !stale_)
                xkb_state_update_mask(state_.get(), now.baseMods, now.latchedMods, now.lockedMods,
                                      static_cast<xkb_layout_index_t>(now.baseGroup),
                                      static_cast<xkb_layout_index_t>(now.latchedGroup), now.lockedGroup);
            break;
        }
        default:
            break;
    }
    return true;
}

KeyStroke Keyboard::Translate(xcb_keycode_t key, std::uint16_t modifiers, bool down) {
    if (stale_) LoadKeymap();
    KeyStroke stroke;
    if (!state_) return stroke;
    if (device_ < 0) {
        const xkb_layout_index_t group = (modifiers >> 13) & 3;
        xkb_state_update_mask(state_.get(), modifiers & 0xFF, 0, 0, 0, 0, group);
    }
    stroke.virtualKey = VirtualKeyOfKey(key);
    if (down) stroke.text = TextOf(key);
    if (stroke.virtualKey == VK_DELETE) stroke.text.clear();  // an action, although ASCII has a code for it
    const bool hasText = down ? !stroke.text.empty() : xkb_state_key_get_utf32(state_.get(), key) != 0;
    if (stroke.virtualKey == 0 && hasText) stroke.virtualKey = kTextOnlyKey;
    return stroke;
}

KeySet Keyboard::KeysDown() {
    KeySet keys;
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_query_keymap_reply_t> down(xcb_query_keymap_reply(c, xcb_query_keymap(c), nullptr));
    for (unsigned key = 8; down && key < 256; ++key)
        if (down->keys[key / 8] >> key % 8 & 1) {
            const UINT code = CodeOf(static_cast<xcb_keycode_t>(key));
            if (code < keys.size()) keys.set(code);
        }
    return keys;
}

KeySet Keyboard::VirtualKeysOf(const xcb_keymap_notify_event_t& event) {
    constexpr unsigned kFirstKey = 8;
    if (stale_) LoadKeymap();
    KeySet held;
    if (!state_) return held;
    for (unsigned key = kFirstKey; key < kFirstKey + 8 * sizeof event.keys; ++key)
        if (event.keys[(key - kFirstKey) / 8] >> key % 8 & 1) {
            const UINT code = VirtualKeyOfKey(static_cast<xcb_keycode_t>(key));
            if (code < held.size()) held.set(code);
        }
    return held;
}

UINT Keyboard::CodeOf(xcb_keycode_t key) {
    if (stale_) LoadKeymap();
    return state_ ? VirtualKeyOfKey(key) : 0;
}

void Keyboard::ForgetPendingText() {
    if (compose_) xkb_compose_state_reset(compose_.get());
}

UINT Keyboard::VirtualKeyOfKey(xcb_keycode_t key) const {
    const auto codeIn = [&](xkb_layout_index_t layout, xkb_level_index_t level) -> UINT {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, level, &symbols);
        return count > 0 ? VirtualKeyOf(symbols[0]) : 0;
    };
    // The number pad means digits or movements by its lock.
    const xkb_keysym_t current = xkb_state_key_get_one_sym(state_.get(), key);
    if (current >= XKB_KEY_KP_Space && current <= XKB_KEY_KP_9) return VirtualKeyOf(current);
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
    const xkb_layout_index_t active = xkb_state_key_get_layout(state_.get(), key);
    if (active == XKB_LAYOUT_INVALID) return 0;
    // A row of digits that needs Shift for them is still a row of digits.
    const UINT shifted = codeIn(active, 1);
    if (const UINT plain = codeIn(active, 0); plain != 0 && !(shifted >= '0' && shifted <= '9')) return plain;
    if (shifted >= '0' && shifted <= '9') return shifted;
    // A layout of another script: the key's letter in a Latin one beside it.
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout)
        if (const UINT code = codeIn(layout, 0); code != 0) return code;
    return LetterAtPlaceOf(key);
}

std::u16string Keyboard::TextOf(xcb_keycode_t key) {
    std::array<char, 64> bytes{};
    const auto text = [&](int length) {
        const auto count = static_cast<std::size_t>(std::clamp<int>(length, 0, int{bytes.size()} - 1));
        return std::u16string(FromUtf8(std::string_view(bytes.data(), count)).View());
    };
    if (compose_) {
        const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_.get(), key);
        if (xkb_compose_state_feed(compose_.get(), symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
            switch (xkb_compose_state_get_status(compose_.get())) {
                case XKB_COMPOSE_COMPOSING:
                    return {};
                case XKB_COMPOSE_COMPOSED:
                    return text(xkb_compose_state_get_utf8(compose_.get(), bytes.data(), bytes.size()));
                case XKB_COMPOSE_CANCELLED:
                    return {};
                case XKB_COMPOSE_NOTHING:
                    break;
            }
        }
    }
    return text(xkb_state_key_get_utf8(state_.get(), key, bytes.data(), bytes.size()));
}

}  // namespace platform::x11
