// A page without a browser, for windows that live in memory: see <platform/headless_pages.h>.
#pragma once

#include <memory>

#include <platform/window.h>

#include "platform/html/page_host.h"

namespace platform::html {

// A page posts this to its window, and goes on when ContinueScriptedPage is called for it.
enum : UINT { kContinuePage = WM_USER + 3 };

[[nodiscard]] std::unique_ptr<PageHost> MakeScriptedPage(HWND window, PageEvents& events);
void ContinueScriptedPage(HWND window);

}  // namespace platform::html
