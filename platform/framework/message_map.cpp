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

const AFX_MSGMAP_ENTRY* FindLine(const AFX_MSGMAP* map, UINT message, WPARAM wParam) {
    const auto names = [&](const AFX_MSGMAP_ENTRY& line) {
        // A command without a notification is its number alone.
        return line.message == message && (line.command == 0 || line.command == (wParam & 0xFFFFFFFF));
    };
    for (; map; map = map->base ? map->base() : nullptr)
        for (const AFX_MSGMAP_ENTRY* line = map->entries; line->handle; ++line)
            if (names(*line)) return line;
    return nullptr;
}

CWnd* ObjectOfParam(std::uint64_t window) {
    return CWnd::FromHandlePermanent(HWND::FromParam(window));
}

}  // namespace platform
