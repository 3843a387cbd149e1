#include <platform/framework.h>

#include "platform/window/core/control.h"

int AfxRunMessageLoop() {
    MSG message{};
    for (;;) {
        const int got = GetMessageW(&message, {}, 0, 0);
        if (got < 0) return -1;
        if (got == 0) return static_cast<int>(message.wParam);
        platform::DeliverMessage(message);
    }
}

BOOL AfxPumpMessage() {
    MSG message{};
    if (GetMessageW(&message, {}, 0, 0) <= 0) return FALSE;
    platform::DeliverMessage(message);
    return TRUE;
}
