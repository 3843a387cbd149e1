#include "web/response_text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t kTerminator = 2;

}  // namespace

void QKResponseBytes::Free::operator()(char* bytes) const {
    std::free(bytes);
}

void QKResponseBytes::Append(const char* bytes, std::size_t count) {
    if (size_ + count + kTerminator > room_) {
        const std::size_t room = std::max(2 * room_, size_ + count + kTerminator);
        void* const longer = std::realloc(bytes_.get(), room);
        if (!longer) throw std::bad_alloc();
        static_cast<void>(bytes_.release());
        bytes_.reset(static_cast<char*>(longer));
        room_ = room;
    }
    std::memcpy(bytes_.get() + size_, bytes, count);
    size_ += count;
    std::memset(bytes_.get() + size_, 0, kTerminator);
}

CString AnsiToWide(const char* source, std::size_t count) {
    CString text = FromUtf8(source);
    if (!std::strstr(source, "%%")) {
        if (text.View().size() > count) text = text.Left(static_cast<int>(count));
        return text;
    }
    const std::size_t length = text.View().size();
    WCHAR* const format = text.GetBuffer(0);
    std::size_t kept = 0;
    for (std::size_t at = 0; at < length && kept < count; ++at) {
        format[kept++] = format[at];
        if (format[at] == u'%' && at + 1 < length && format[at + 1] == u'%') ++at;
    }
    text.ReleaseBuffer(static_cast<int>(kept));
    return text;
}

CString Utf8ToWide(const char* source) {
    try {
        return FromUtf8(source);
    } catch (const std::bad_alloc&) {
        return CString();
    }
}

CString Utf16ToWide(const char* source, std::size_t size) {
    const std::size_t count = (size + 1) / 2;  // the last may be half a unit, and half the terminator
    CString text;
    std::memcpy(text.GetBuffer(static_cast<int>(count)), source, 2 * count);
    text.ReleaseBuffer();
    return text;
}
