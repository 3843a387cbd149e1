// Bytes that claim to be UTF-8, and units that claim to be UTF-16: nothing is lost behind a fault, and what
// has been through once does not change any more.
#include <QKUILib.h>

#include <cstring>

namespace {

void Expect(bool right) {
    if (!right) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const CString text = FromUtf8(bytes);
    Expect(bytes.empty() == text.IsEmpty());
    Expect(FromUtf8(ToUtf8(text)) == text);

    std::u16string units(size / 2, u'\0');
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * 2);
    const std::string once = ToUtf8(units);
    Expect(ToUtf8(FromUtf8(once)) == once);
    return 0;
}
