// What happens when the library enters and leaves a process.
#include <QKUILib.h>

#include "shell/key_mask_state.h"

using namespace qkui;

namespace {

// Hosts on the loading thread may use what needs component services without starting them themselves.
// The result does not matter: a thread that was started before is fine.
[[gnu::constructor]] void Load() {
    CoInitialize(nullptr);
    g_hInstance = ModuleFromAddress(&g_hInstance);
}

// The procedure of a hook that is left goes with the library.
[[gnu::destructor]] void Unload() {
    if (g_hKeyHook && UnhookWindowsHookEx(g_hKeyHook)) g_hKeyHook = HHOOK();
}

}  // namespace
