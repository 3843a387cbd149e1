/// @file
/// Checks and messages of programs that are being written. Where NDEBUG is defined they cost nothing.
#pragma once

#include <platform/text.h>

/// To the standard error stream, nothing added.
PLATFORM_API void OutputDebugStringW(LPCWSTR text);

/// Writes what failed, and where, to the standard error stream and ends the program with SIGABRT.
[[noreturn]] PLATFORM_API void AfxAssertFailed(const char* expression, const char* file, int line);

/// Formats as CString::Format does; a format in bytes as printf.
template <class... Arguments>
void AfxTrace(LPCWSTR format, Arguments... arguments) {
    CString text;
    text.Format(format, arguments...);
    OutputDebugStringW(text);
}
template <class... Arguments>
void AfxTrace(const wchar_t* format, Arguments... arguments) {
    AfxTrace(CString(format).GetString(), arguments...);
}
PLATFORM_API void AfxTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

#ifndef NDEBUG
#define ASSERT(expression) \
    (static_cast<bool>(expression) ? void() : AfxAssertFailed(#expression, __FILE__, __LINE__))
#define VERIFY(expression) ASSERT(expression)
#define TRACE(...) AfxTrace(__VA_ARGS__)
#else
#define ASSERT(expression) static_cast<void>(0)
#define VERIFY(expression) static_cast<void>(expression)  // evaluated all the same
#define TRACE(...) static_cast<void>(0)
#endif
#define ASSERT_VALID(object) ASSERT((object) != nullptr)
#define _ASSERTE(expression) ASSERT(expression)
#define TRACE0(text) TRACE(text)
#define TRACE1(format, a) TRACE(format, a)
#define TRACE2(format, a, b) TRACE(format, a, b)
#define TRACE3(format, a, b, c) TRACE(format, a, b, c)
#define UNREFERENCED_PARAMETER(name) static_cast<void>(name)
#define DEBUG_NEW new
