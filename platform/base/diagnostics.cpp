#include <platform/diagnostics.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

void OutputDebugStringW(LPCWSTR text) {
    const std::string bytes = ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

void AfxAssertFailed(const char* expression, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, expression);
    std::abort();
}

void AfxTrace(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}
