// Sizes that hosts go by.
#include "platform/window/core/clicks.h"
#include "platform/window/core/display.h"
#include "platform/window/core/sizing.h"

using namespace platform;

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSIZEFRAME:
        case SM_CYSIZEFRAME:
            return kSizingBorder;
        case SM_CXDOUBLECLK:
        case SM_CYDOUBLECLK:
            return kDoubleClickBox;
        case SM_CXSCREEN:
        case SM_CYSCREEN: {
            WindowSystem* system = EnsureSystem();
            if (!system) return 0;
            const CSize size = system->ScreenSize();
            return index == SM_CXSCREEN ? size.cx : size.cy;
        }
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
    }
}
