// Modal loops of the core that take all input while they run.
#pragma once

#include "platform/window/window_events.h"

namespace platform {

class InputTaker {
  public:
    // True: the event was taken, and no window hears of it.
    virtual bool Take(const event::Pointer& event) = 0;
    virtual bool Take(const event::Key& event) = 0;

  protected:
    ~InputTaker() = default;

  private:
    friend void BeginTaking(InputTaker& taker);
    friend bool TakenByLoop(const event::Pointer& event);
    friend bool TakenByLoop(const event::Key& event);
    template <class Event>
    static bool AnyTakes(const Event& event);
    InputTaker* next_ = nullptr;
};

// From now on it is asked, before those that began earlier; it lets pass what comes when its loop has ended.
void BeginTaking(InputTaker& taker);
bool TakenByLoop(const event::Pointer& event);
bool TakenByLoop(const event::Key& event);

}  // namespace platform
