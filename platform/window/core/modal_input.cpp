#include "platform/window/core/modal_input.h"

#include <utility>

namespace platform {

namespace {

InputTaker* first = nullptr;

}  // namespace

void BeginTaking(InputTaker& taker) {
    for (InputTaker** at = &first; *at; at = &(*at)->next_)
        if (*at == &taker) {
            *at = taker.next_;
            break;
        }
    taker.next_ = std::exchange(first, &taker);
}

template <class Event>
bool InputTaker::AnyTakes(const Event& event) {
    for (InputTaker* taker = first; taker; taker = taker->next_)
        if (taker->Take(event)) return true;
    return false;
}

bool TakenByLoop(const event::Pointer& event) {
    return InputTaker::AnyTakes(event);
}

bool TakenByLoop(const event::Key& event) {
    return InputTaker::AnyTakes(event);
}

}  // namespace platform
