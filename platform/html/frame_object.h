// A frame of a page, as events name it: an object that is equal to itself and to nothing else.
#pragma once

#include <atomic>

#include <platform/automation.h>

namespace platform::html {

class FrameObject final : public IDispatch {
  public:
    ULONG AddRef() override { return ++holders_; }
    ULONG Release() override {
        const ULONG left = --holders_;
        if (left == 0) delete this;
        return left;
    }

  private:
    ~FrameObject() override = default;
    std::atomic<ULONG> holders_ = 0;
};

}  // namespace platform::html
