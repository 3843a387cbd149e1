// What an input event comes to.
#pragma once

#include <platform/window.h>

namespace platform {

struct Routed {
    enum class Outcome {
        Nothing,  // taken in; no window hears of it
        Message,
        Later  // something else was put ahead of it: ask again
    };
    Outcome outcome = Outcome::Nothing;
    MSG message{};
    int hit = HTCLIENT;
};

}  // namespace platform
