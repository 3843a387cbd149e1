// What an operation of a list answers when memory runs out in the middle of it.
#pragma once

#include <new>

namespace qkui {

// The result of `act`, or `otherwise` when it ends for lack of memory.
template <class Result, class Act>
Result WithinMemory(Result otherwise, Act act) {
    try {
        return act();
    } catch (const std::bad_alloc&) {
        return otherwise;
    }
}

template <class Act>
void WithinMemory(Act act) {
    try {
        act();
    } catch (const std::bad_alloc&) {
    }
}

}  // namespace qkui
