#include "window/headless_driver.h"

namespace windowtest {

std::unique_ptr<Driver> MakeDriver() {
    if (!Headless::Use(800, 600)) return nullptr;
    return std::make_unique<HeadlessDriver>();
}

}  // namespace windowtest
