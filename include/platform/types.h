/// @file
/// Integers, handles and plain records that every other header of the platform speaks in.
#pragma once

/// What hosts get wrong without seeing why.
#if defined(_GLIBCXX_DEBUG) != defined(PLATFORM_DEBUG_CONTAINERS)
#error \
    "_GLIBCXX_DEBUG changes the containers that a host and libQKUILib.so share: build both with it, or use -D_GLIBCXX_ASSERTIONS"
#endif
#ifdef XMD_H
#error \
    "<X11/Xmd.h>, which headers of X protocols include, has another BOOL: use those in a source of their own"
#endif

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Marks what the shared library lets out; everything else stays hidden.
#define PLATFORM_API __attribute__((visibility("default")))

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using BOOL = std::int32_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using CHAR = char;
using UCHAR = std::uint8_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using INT64 = std::int64_t;
using UINT64 = std::uint64_t;
using DWORD64 = std::uint64_t;
using SIZE_T = std::size_t;
using FLOAT = float;
using ATOM = std::uint16_t;
using LPVOID = void*;
using PVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using LPLONG = LONG*;
using LPINT = INT*;
using HRESULT = std::int32_t;

/// One UTF-16 code unit, and terminated strings of them.
using WCHAR = char16_t;
using LPWSTR = char16_t*;
using LPCWSTR = const char16_t*;
using PCWSTR = LPCWSTR;
using TCHAR = WCHAR;
using LPTSTR = LPWSTR;
using LPCTSTR = LPCWSTR;
/// Bytes: UTF-8.
using LPSTR = char*;
using LPCSTR = const char*;

/// A colour as 0x00BBGGRR.
using COLORREF = std::uint32_t;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

/// Words of declarations that say nothing here.
#define WINAPI
#define APIENTRY
#define CALLBACK
#define AFXAPI
#define afx_msg
#ifndef VOID
#define VOID void
#endif
#ifndef CONST
#define CONST const
#endif

/// A handle is a value: an index into a table and the generation of its slot. A handle whose object is gone
/// is recognised as stale by every call that takes it; it never aliases a newer object. The empty handle
/// compares equal to nullptr and is false.
template <class Tag>
class Handle {
  public:
    constexpr Handle() = default;
    constexpr Handle(std::nullptr_t) {}  ///< NOLINT: hosts write `HWND window = nullptr`
    constexpr Handle(std::uint32_t index, std::uint32_t generation)
        : index_(index), generation_(generation) {}

    constexpr std::uint32_t Index() const { return index_; }
    constexpr std::uint32_t Generation() const { return generation_; }
    constexpr explicit operator bool() const { return generation_ != 0; }
    friend constexpr bool operator==(const Handle& a, const Handle& b) {
        return a.index_ == b.index_ && a.generation_ == b.generation_;
    }

    /// A handle as a message parameter, and back; the casts `(LPARAM)icon` and `(HWND)wParam` do the same.
    constexpr std::uint64_t ToParam() const { return (std::uint64_t{generation_} << 32) | index_; }
    static constexpr Handle FromParam(std::uint64_t value) {
        return Handle(static_cast<std::uint32_t>(value), static_cast<std::uint32_t>(value >> 32));
    }
    template <class Integer>
    requires(std::is_integral_v<Integer> &&
             !std::is_same_v<Integer, bool>) constexpr explicit Handle(Integer param)
        : Handle(FromParam(static_cast<std::uint64_t>(param))) {}
    template <class Integer>
    requires(std::is_integral_v<Integer> && sizeof(Integer) == sizeof(std::uint64_t)) constexpr explicit
    operator Integer() const {
        return static_cast<Integer>(ToParam());
    }

  private:
    std::uint32_t index_ = 0;
    std::uint32_t generation_ = 0;  ///< 0 only in the empty handle
};

using HWND = Handle<struct WindowTag>;
using HDC = Handle<struct DeviceContextTag>;
using HBITMAP = Handle<struct BitmapTag>;
using HBRUSH = Handle<struct BrushTag>;
using HFONT = Handle<struct FontTag>;
using HRGN = Handle<struct RegionTag>;
using HCURSOR = Handle<struct CursorTag>;
using HICON = Handle<struct IconTag>;
using HMONITOR = Handle<struct MonitorTag>;
using HGLOBAL = Handle<struct GlobalTag>;
using HDROP = HGLOBAL;  ///< a block of files, see ole.h
using HRSRC = Handle<struct ResourceTag>;
using HMODULE = Handle<struct ModuleTag>;
using HINSTANCE = HMODULE;

struct POINT {
    LONG x;
    LONG y;
};
struct SIZE {
    LONG cx;
    LONG cy;
};
/// Left and top are inside, right and bottom are the first outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPPOINT = POINT*;
using LPSIZE = SIZE*;
using LPRECT = RECT*;
using LPCRECT = const RECT*;

constexpr WORD LOWORD(std::uint64_t value) {
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(std::uint64_t value) {
    return static_cast<WORD>((value >> 16) & 0xFFFF);
}
constexpr BYTE LOBYTE(std::uint64_t value) {
    return static_cast<BYTE>(value & 0xFF);
}
constexpr LPARAM MAKELPARAM(std::int64_t low, std::int64_t high) {
    return static_cast<LPARAM>((static_cast<std::uint32_t>(high & 0xFFFF) << 16) |
                               static_cast<std::uint32_t>(low & 0xFFFF));
}
constexpr BYTE HIBYTE(std::uint64_t value) {
    return static_cast<BYTE>((value >> 8) & 0xFF);
}
constexpr WORD MAKEWORD(std::uint64_t low, std::uint64_t high) {
    return static_cast<WORD>((low & 0xFF) | ((high & 0xFF) << 8));
}
constexpr LONG MAKELONG(std::int64_t low, std::int64_t high) {
    return static_cast<LONG>(MAKELPARAM(low, high));
}
constexpr WPARAM MAKEWPARAM(std::int64_t low, std::int64_t high) {
    return static_cast<WPARAM>(MAKELPARAM(low, high));
}
/// The signed coordinates packed into the lParam of a pointer message.
constexpr int GET_X_LPARAM(LPARAM value) {
    return static_cast<std::int16_t>(value & 0xFFFF);
}
constexpr int GET_Y_LPARAM(LPARAM value) {
    return static_cast<std::int16_t>((value >> 16) & 0xFFFF);
}
/// Of WM_MOUSEWHEEL.
constexpr std::int16_t GET_WHEEL_DELTA_WPARAM(WPARAM value) {
    return static_cast<std::int16_t>(HIWORD(value));
}
constexpr int WHEEL_DELTA = 120;  ///< one notch
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}
constexpr BYTE GetRValue(COLORREF colour) {
    return static_cast<BYTE>(colour);
}
constexpr BYTE GetGValue(COLORREF colour) {
    return static_cast<BYTE>(colour >> 8);
}
constexpr BYTE GetBValue(COLORREF colour) {
    return static_cast<BYTE>(colour >> 16);
}
constexpr int MAX_PATH = 260;  ///< of many a buffer; paths may be longer

///@{
/// The calling thread's last error: set by a call that fails, left alone by one that succeeds.
PLATFORM_API DWORD GetLastError();
PLATFORM_API void SetLastError(DWORD error);
///@}
/// A short English sentence for an error code, for logs and test output; never null.
PLATFORM_API const char* ErrorText(DWORD error);

enum : DWORD {
    ERROR_SUCCESS = 0,
    ERROR_FILE_NOT_FOUND = 2,
    ERROR_ACCESS_DENIED = 5,  ///< somebody else holds it
    ERROR_INVALID_HANDLE = 6,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_BAD_FORMAT = 11,
    ERROR_INVALID_DATA = 13,
    ERROR_NOT_SUPPORTED = 50,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_MOD_NOT_FOUND = 126,        ///< a library that is loaded when needed
    ERROR_CONNECTION_UNAVAIL = 1201,  ///< no display server can be reached, or it went away
    ERROR_INVALID_WINDOW_HANDLE = 1400,
    ERROR_CANNOT_FIND_WND_CLASS = 1407,
    ERROR_WINDOW_OF_OTHER_THREAD = 1408,
    ERROR_CLASS_ALREADY_EXISTS = 1410,
    ERROR_RESOURCE_DATA_NOT_FOUND = 1812,
    ERROR_RESOURCE_TYPE_NOT_FOUND = 1813,
    ERROR_RESOURCE_NAME_NOT_FOUND = 1814,
    ERROR_INVALID_PIXEL_FORMAT = 2000,  ///< the display server has no pixels of 32 bits
};

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr bool SUCCEEDED(HRESULT result) {
    return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
    return result < 0;
}
