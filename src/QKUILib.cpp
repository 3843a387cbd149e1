// What happens when the library enters and leaves a process.
#include "QKUILib.h"

namespace {

// Hosts on the loading thread may use streams and, later, drag and drop without starting them themselves.
// The result does not matter: a thread that was started before is fine.
[[gnu::constructor]] void Load() {
    CoInitialize(nullptr);
}

}  // namespace
