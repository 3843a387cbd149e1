#include "platform/framework/message_map.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

namespace platform {

const AFX_MSGMAP_ENTRY* FindLine(const AFX_MSGMAP* map, UINT message) {
    for (; map; map = map->base ? map->base() : nullptr)
        for (const AFX_MSGMAP_ENTRY* line = map->entries; line->handle; ++line)
            if (line->message == message) return line;
    return nullptr;
}

}  // namespace platform
