// State of one part of the core.
#pragma once

#include <cstddef>
#include <new>

namespace platform {

// Made when first asked for and never destroyed: objects of the host that outlive the library's own may still
// ask. What it holds is given back by ResetLasting when the core ends.
template <class State>
State& Lasting() {
    alignas(State) static std::byte memory[sizeof(State)];
    static State* const state = new (memory) State;
    return *state;
}

template <class State>
void ResetLasting() {
    Lasting<State>() = State();
}

}  // namespace platform
