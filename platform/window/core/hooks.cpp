#include "platform/window/core/hooks.h"

#include <algorithm>
#include <new>
#include <utility>

#include <platform/window.h>

#include "platform/window/core/display.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/window_table.h"
#include "platform/window/key_watch.h"

namespace platform {

namespace {

// Puts back what a call replaced, also when it throws.
template <class T>
class Restore {
  public:
    Restore(T& value, T now) : value_(value), before_(std::exchange(value, std::move(now))) {}
    ~Restore() { value_ = std::move(before_); }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

  private:
    T& value_;
    T before_;
};

UINT MessageOf(const event::KeySeen& event) {
    const bool system = event.held[VK_MENU] || event.virtualKey == VK_MENU;
    if (event.down) return system ? WM_SYSKEYDOWN : WM_KEYDOWN;
    return system ? WM_SYSKEYUP : WM_KEYUP;
}

}  // namespace

HHOOK KeyHooks::Add(HOOKPROC procedure) {
    hooks_.reserve(hooks_.size() + 1);
    const auto hook = std::make_shared<Hook>(Hook{HHOOK(), procedure, ++lastSerial_});
    hook->handle = table_.Insert(hook);
    hooks_.push_back(hook);
    return hook->handle;
}

bool KeyHooks::Remove(HHOOK hook) {
    const std::shared_ptr<const Hook> removed = table_.Remove(hook);
    std::erase(hooks_, removed);
    return removed != nullptr;
}

void KeyHooks::Clear() {
    for (const auto& hook : hooks_)
        table_.Remove(hook->handle);
    hooks_.clear();
}

void KeyHooks::Run(const event::KeySeen& event) {
    KBDLLHOOKSTRUCT record{event.virtualKey, event.scanCode, event.down ? DWORD{0} : DWORD{LLKHF_UP},
                           static_cast<DWORD>(event.time), 0};
    const WatchedKeys watched(event.held);
    const Restore asked(asked_, lastSerial_ + 1);
    Next(HC_ACTION, MessageOf(event), reinterpret_cast<LPARAM>(&record));
}

LRESULT KeyHooks::Next(int code, WPARAM wParam, LPARAM lParam) {
    const auto older = std::find_if(hooks_.rbegin(), hooks_.rend(),
                                    [this](const auto& hook) { return hook->serial < asked_; });
    if (older == hooks_.rend()) return 0;
    const std::shared_ptr<const Hook> hook = *older;
    const Restore asked(asked_, hook->serial);
    return hook->procedure(code, wParam, lParam);
}

KeyHooks& Hooks() {
    return Lasting<KeyHooks>();
}

bool UpdateKeyWatch() {
    WindowSystem* system = System();
    KeyWatch* watch = system ? system->KeyWatcher() : nullptr;
    return watch && watch->Watch(!Hooks().IsEmpty());
}

}  // namespace platform

using namespace platform;

HHOOK SetWindowsHookExW(int type, HOOKPROC procedure, HINSTANCE, DWORD thread) {
    if (type != WH_KEYBOARD_LL || !procedure || thread != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HHOOK();
    }
    if (!EnsureSystem()) return HHOOK();
    HHOOK hook;
    try {
        hook = Hooks().Add(procedure);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return HHOOK();
    }
    if (UpdateKeyWatch()) return hook;
    Hooks().Remove(hook);
    SetLastError(ERROR_NOT_SUPPORTED);
    return HHOOK();
}

BOOL UnhookWindowsHookEx(HHOOK hook) {
    if (!IsOwningThread() || !Hooks().Remove(hook)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (Hooks().IsEmpty()) UpdateKeyWatch();
    return TRUE;
}

LRESULT CallNextHookEx(HHOOK, int code, WPARAM wParam, LPARAM lParam) {
    return IsOwningThread() ? Hooks().Next(code, wParam, lParam) : 0;
}
