// Texts that claim to be values of the store, and values, names and paths of any bytes: what has been read or
// written once is the same when it is read again, and no name can mean anything to the file.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/registry/value_text.h"

namespace {

using platform::RegistryValue;

void Expect(bool right) {
    if (!right) __builtin_trap();
}

void ExpectKept(const RegistryValue& value) {
    const auto again = platform::ValueOfText(platform::ValueText(value));
    Expect(again && again->type == value.type && again->bytes == value.bytes);
}

void ExpectPlain(const std::string& name) {
    Expect(!name.empty() && name.front() != ' ' && name.back() != ' ');
    Expect(std::none_of(name.begin(), name.end(), [](unsigned char byte) {
        return byte < ' ' || byte > '~' || (byte >= 'A' && byte <= 'Z') || std::strchr("[]=#;\"\\", byte);
    }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto read = platform::ValueOfText({reinterpret_cast<const char*>(data), size});
    if (read) ExpectKept(*read);
    if (size > 0) ExpectKept({data[0], {data + 1, data + size}});

    std::u16string units(size / 2, u'\0');
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * 2);
    ExpectPlain(platform::NameText(units));
    const std::string path = platform::PathText(units);
    for (std::size_t from = 0; from <= path.size();) {
        const std::size_t end = std::min(path.find('\\', from), path.size());
        ExpectPlain(path.substr(from, end - from));
        from = end + 1;
    }
    return 0;
}
