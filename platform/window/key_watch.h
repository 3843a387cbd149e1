// Watching the keyboard whoever has it, where a window system can.
#pragma once

namespace platform {

class KeyWatch {
  public:
    virtual ~KeyWatch() = default;
    // From now on every key is reported by WindowEvents::KeySeen, or none is. False when it cannot be.
    virtual bool Watch(bool on) = 0;
};

}  // namespace platform
