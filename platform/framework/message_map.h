// Looking a message up in a chain of message maps.
#pragma once

#include <platform/framework.h>

namespace platform {

// The first line for a message, the map itself first and then its bases; null when none has one.
const AFX_MSGMAP_ENTRY* FindLine(const AFX_MSGMAP* map, UINT message, WPARAM wParam);

}  // namespace platform
