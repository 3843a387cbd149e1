// The browser plugin beside the library, loaded when the first page needs it.
#pragma once

#include <platform/text.h>

#include "platform/html/page_host.h"

namespace platform::html {

struct BrowserPlugin {
    PageMaker* maker = nullptr;
    CString file;
};

// Null with ERROR_MOD_NOT_FOUND when there is none or it cannot be loaded, and with ERROR_CONNECTION_UNAVAIL
// when its browser does not start. What failed once is tried again.
[[nodiscard]] const BrowserPlugin* LoadBrowserPlugin();

}  // namespace platform::html
