// Window classes by their names.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// Null without one.
std::shared_ptr<const WindowClass> FindWindowClass(LPCWSTR name);
void ResetWindowClasses();

}  // namespace platform
