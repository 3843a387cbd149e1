/// @file
/// The forms in which handlers of one message may be declared: each is called with what it takes. For the
/// lines of message maps.
#pragma once

#include <platform/device_objects.h>
#include <platform/window.h>

class CWnd;

namespace platform {

/// The object of a window, or null: what handlers are told of other windows.
PLATFORM_API CWnd* ObjectOfParam(std::uint64_t window);

constexpr UINT UpperWord(LPARAM value) {
    return HIWORD(static_cast<std::uint64_t>(value));
}

template <class Target, class Class>
LRESULT HandleOnCreate(Target& self, int (Class::*handler)(CREATESTRUCTW*), WPARAM, LPARAM l) {
    CREATESTRUCTW record = DescribeCreation(self.m_hWnd, reinterpret_cast<LPVOID>(l));
    return (self.*handler)(&record);
}

/// Identifiers are as wide as an address, or as older programs have them.
template <class Target, class Class, class Identifier>
LRESULT HandleOnTimer(Target& self, void (Class::*handler)(Identifier), WPARAM w, LPARAM) {
    (self.*handler)(static_cast<Identifier>(w));
    return 0;
}

template <class Target, class Class>
LRESULT HandleOnEraseBkgnd(Target& self, BOOL (Class::*handler)(HDC), WPARAM w, LPARAM) {
    return (self.*handler)(HDC::FromParam(w));
}
template <class Target, class Class>
LRESULT HandleOnEraseBkgnd(Target& self, BOOL (Class::*handler)(CDC*), WPARAM w, LPARAM) {
    CDC context(HDC::FromParam(w));
    return (self.*handler)(&context);
}

template <class Target, class Class>
LRESULT HandleOnActivate(Target& self, void (Class::*handler)(UINT, HWND, BOOL), WPARAM w, LPARAM l) {
    (self.*handler)(LOWORD(w), HWND::FromParam(static_cast<std::uint64_t>(l)), HIWORD(w));
    return 0;
}
template <class Target, class Class>
LRESULT HandleOnActivate(Target& self, void (Class::*handler)(UINT, CWnd*, BOOL), WPARAM w, LPARAM l) {
    (self.*handler)(LOWORD(w), ObjectOfParam(static_cast<std::uint64_t>(l)), HIWORD(w));
    return 0;
}

template <class Target, class Class>
LRESULT HandleOnSetFocus(Target& self, void (Class::*handler)(CWnd*), WPARAM w, LPARAM) {
    (self.*handler)(ObjectOfParam(w));
    return 0;
}
template <class Target, class Class>
LRESULT HandleOnKillFocus(Target& self, void (Class::*handler)(CWnd*), WPARAM w, LPARAM) {
    (self.*handler)(ObjectOfParam(w));
    return 0;
}

template <class Target, class Class>
LRESULT HandleOnSetCursor(Target& self, BOOL (Class::*handler)(CWnd*, UINT, UINT), WPARAM w, LPARAM l) {
    return (self.*handler)(ObjectOfParam(w), LOWORD(static_cast<std::uint64_t>(l)), UpperWord(l));
}

template <class Target, class Class>
LRESULT CallKeyHandler(Target& self, void (Class::*handler)(UINT), WPARAM key, LPARAM) {
    (self.*handler)(static_cast<UINT>(key));
    return 0;
}
template <class Target, class Class>
LRESULT CallKeyHandler(Target& self, void (Class::*handler)(UINT, UINT, UINT), WPARAM key, LPARAM l) {
    (self.*handler)(static_cast<UINT>(key), LOWORD(static_cast<std::uint64_t>(l)), UpperWord(l));
    return 0;
}

}  // namespace platform
