#include "platform/resources/resource_name.h"

#include "platform/base/byte_reader.h"

namespace platform {

ResourceName ReadName(ByteReader& reader) {
    ByteReader ahead = reader;
    if (ahead.Word() != 0xFFFF) return ResourceName(reader.Text());
    reader = ahead;
    return ResourceName(reader.Word());
}

}  // namespace platform
