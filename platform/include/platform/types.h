// Integers, handles and plain records that every other header of the platform speaks in.
#pragma once

#include <cstddef>
#include <cstdint>

// Marks what the shared library lets out; everything else stays hidden.
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
using LPVOID = void*;
using HRESULT = std::int32_t;

// One UTF-16 code unit, and terminated strings of them.
using WCHAR = char16_t;
using LPWSTR = char16_t*;
using LPCWSTR = const char16_t*;

// A colour as 0x00BBGGRR.
using COLORREF = std::uint32_t;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

// A handle is a value: an index into a table and the generation of its slot. A handle whose object is gone
// is recognised as stale by every call that takes it; it never aliases a newer object. The empty handle
// compares equal to nullptr and is false.
template <class Tag>
class Handle {
  public:
    constexpr Handle() = default;
    constexpr Handle(std::nullptr_t) {}  // NOLINT: hosts write `HWND window = nullptr`
    constexpr Handle(std::uint32_t index, std::uint32_t generation)
        : index_(index), generation_(generation) {}

    constexpr std::uint32_t Index() const { return index_; }
    constexpr std::uint32_t Generation() const { return generation_; }
    constexpr explicit operator bool() const { return generation_ != 0; }
    friend constexpr bool operator==(const Handle& a, const Handle& b) {
        return a.index_ == b.index_ && a.generation_ == b.generation_;
    }

    // A handle as a message parameter, and back.
    constexpr std::uint64_t ToParam() const { return (std::uint64_t{generation_} << 32) | index_; }
    static constexpr Handle FromParam(std::uint64_t value) {
        return Handle(static_cast<std::uint32_t>(value), static_cast<std::uint32_t>(value >> 32));
    }

  private:
    std::uint32_t index_ = 0;
    std::uint32_t generation_ = 0;  // 0 only in the empty handle
};

using HWND = Handle<struct WindowTag>;
using HDC = Handle<struct DeviceContextTag>;
using HBITMAP = Handle<struct BitmapTag>;
using HBRUSH = Handle<struct BrushTag>;
using HRGN = Handle<struct RegionTag>;
using HCURSOR = Handle<struct CursorTag>;
using HICON = Handle<struct IconTag>;
using HMONITOR = Handle<struct MonitorTag>;
using HGLOBAL = Handle<struct GlobalTag>;
using HDROP = HGLOBAL;  // a block of files, see <platform/ole.h>
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
// Left and top are inside, right and bottom are the first outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

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
// The signed coordinates packed into the lParam of a pointer message.
constexpr int GET_X_LPARAM(LPARAM value) {
    return static_cast<std::int16_t>(value & 0xFFFF);
}
constexpr int GET_Y_LPARAM(LPARAM value) {
    return static_cast<std::int16_t>((value >> 16) & 0xFFFF);
}
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}

// The calling thread's last error: set by a call that fails, left alone by one that succeeds.
PLATFORM_API DWORD GetLastError();
PLATFORM_API void SetLastError(DWORD error);
// A short English sentence for an error code, for logs and test output; never null.
PLATFORM_API const char* ErrorText(DWORD error);

enum : DWORD {
    ERROR_SUCCESS = 0,
    ERROR_FILE_NOT_FOUND = 2,
    ERROR_ACCESS_DENIED = 5,  // somebody else holds it
    ERROR_INVALID_HANDLE = 6,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_BAD_FORMAT = 11,
    ERROR_INVALID_DATA = 13,
    ERROR_NOT_SUPPORTED = 50,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_MOD_NOT_FOUND = 126,        // a library that is loaded when needed
    ERROR_CONNECTION_UNAVAIL = 1201,  // no display server can be reached, or it went away
    ERROR_INVALID_WINDOW_HANDLE = 1400,
    ERROR_CANNOT_FIND_WND_CLASS = 1407,
    ERROR_WINDOW_OF_OTHER_THREAD = 1408,
    ERROR_CLASS_ALREADY_EXISTS = 1410,
    ERROR_RESOURCE_DATA_NOT_FOUND = 1812,
    ERROR_RESOURCE_TYPE_NOT_FOUND = 1813,
    ERROR_RESOURCE_NAME_NOT_FOUND = 1814,
    ERROR_INVALID_PIXEL_FORMAT = 2000,  // the display server has no pixels of 32 bits
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
