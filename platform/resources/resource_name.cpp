#include "platform/resources/resource_name.h"

#include <platform/text.h>

#include "platform/base/byte_reader.h"

namespace platform {

std::string ShownName(const ResourceName& name) {
    return name.IsNumber() ? std::to_string(name.Number()) : '"' + ToUtf8(name.Text()) + '"';
}

ResourceName ReadName(ByteReader& reader) {
    ByteReader ahead = reader;
    if (ahead.Word() != 0xFFFF) return ResourceName(reader.Text());
    reader = ahead;
    return ResourceName(reader.Word());
}

}  // namespace platform
