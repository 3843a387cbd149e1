// Opens files with the programs that their user prefers.
#pragma once

#include <functional>
#include <string>

#include <QKUILib.h>

#include "examples/desktop/background.h"

namespace desktop {

// Returns at once. `failed` is called from the main context with a sentence to be read, unless `owner` is
// gone by then.
void OpenFile(const std::string& path, const Lifetime& owner, std::function<void(const CString&)> failed);

}  // namespace desktop
