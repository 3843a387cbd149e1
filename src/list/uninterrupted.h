// Stretches of the library's own work in which no code of the host runs.
#pragma once

#include <cstdint>

namespace qkui {

// While one lives, records that the host holds cannot change but through the library: a list looks at them
// once, not before each of its answers.
class Uninterrupted {
  public:
    Uninterrupted() {
        if (depth_++ == 0) ++last_;
    }
    ~Uninterrupted() { --depth_; }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;

    // The number of the stretch that this thread is in; 0 for none.
    static std::uint64_t Current() { return depth_ > 0 ? last_ : 0; }

  private:
    // Asked before each answer: at a fixed distance, which costs no call.
    [[gnu::tls_model("initial-exec")]] inline static constinit thread_local int depth_ = 0;
    [[gnu::tls_model("initial-exec")]] inline static constinit thread_local std::uint64_t last_ = 0;
};

}  // namespace qkui
