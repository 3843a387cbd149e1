// CoInitialize and CoUninitialize. Nothing has to be started here: a thread's count is all there is, so that
// nested starts answer as callers expect.
#include <platform/ole.h>

namespace {
thread_local ULONG starts = 0;
}  // namespace

HRESULT CoInitialize(void* reserved) {
    if (reserved) return E_INVALIDARG;
    return starts++ == 0 ? S_OK : S_FALSE;
}

void CoUninitialize() {
    if (starts > 0) --starts;
}
