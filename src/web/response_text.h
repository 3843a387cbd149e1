// How the bytes of an answer become text.
#pragma once

#include <cstddef>
#include <memory>

#include <platform/text.h>

// The bytes of a body, front to back. They grow in place where the system can do so, so that a long body is
// held once.
class QKResponseBytes {
  public:
    void Append(const char* bytes, std::size_t count);
    std::size_t Size() const { return size_; }
    // Two zero bytes follow the last one: they end a text of either width.
    const char* Data() const { return bytes_.get(); }

  private:
    struct Free {
        void operator()(char* bytes) const;
    };
    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
};

// All end at the first zero character of the source.

// The system's own character set, UTF-8. The text is its own printf format: %% is one percent sign, and what
// would be any other directive stands as it is. At most `count` characters.
CString AnsiToWide(const char* source, std::size_t count);
// Empty when there is no memory for it.
CString Utf8ToWide(const char* source);
// UTF-16LE, `size` bytes and the two behind them.
CString Utf16ToWide(const char* source, std::size_t size);
