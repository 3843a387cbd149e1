#include "platform/window/core/inbox.h"

#include <atomic>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <new>

#include "platform/window/core/display.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// A message that another thread waits for.
struct SentMessage {
    MSG message;
    std::promise<LRESULT> result;
};

struct Inbox {
    std::mutex guard;  // of both
    std::deque<MSG> posted;
    std::deque<std::shared_ptr<SentMessage>> sent;
    std::atomic<bool> postedWaiting = false;
    std::atomic<bool> sentWaiting = false;
};

Inbox& Box() {
    return Lasting<Inbox>();
}

// Where messages to a destroyed owner's thread would be answered from: nobody is left, so 0.
constexpr LRESULT kNoAnswer = 0;

}  // namespace

bool PostFromElsewhere(const MSG& message) {
    constexpr std::size_t kLongestInbox = 100000;
    Inbox& inbox = Box();
    std::lock_guard lock(inbox.guard);
    if (!IsLive(message.hwnd)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    if (inbox.posted.size() >= kLongestInbox) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    try {
        inbox.posted.push_back(message);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    inbox.postedWaiting = true;
    WakeSystem();
    return true;
}

LRESULT SendFromElsewhere(const MSG& message) {
    std::future<LRESULT> answer;
    try {
        auto sent = std::make_shared<SentMessage>();
        sent->message = message;
        answer = sent->result.get_future();
        Inbox& inbox = Box();
        std::lock_guard lock(inbox.guard);
        if (!IsLive(message.hwnd)) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return 0;
        }
        inbox.sent.push_back(std::move(sent));
        inbox.sentWaiting = true;
        WakeSystem();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return kNoAnswer;
    }
    return answer.get();
}

void TakeInbox() {
    Inbox& inbox = Box();
    if (!inbox.postedWaiting.load()) return;
    std::lock_guard lock(inbox.guard);
    // What the queue has no place for now is taken later.
    while (!inbox.posted.empty() && Queue().Post(inbox.posted.front()))
        inbox.posted.pop_front();
    inbox.postedWaiting = !inbox.posted.empty();
}

void RunSentInbox() {
    Inbox& inbox = Box();
    while (inbox.sentWaiting.load()) {
        std::shared_ptr<SentMessage> next;
        {
            std::lock_guard lock(inbox.guard);
            if (inbox.sent.empty()) {
                inbox.sentWaiting = false;
                return;
            }
            next = std::move(inbox.sent.front());
            inbox.sent.pop_front();
        }
        // The waiting thread must get its answer even when the procedure throws.
        try {
            const MSG& message = next->message;
            next->result.set_value(
                CallProcedure(message.hwnd, message.message, message.wParam, message.lParam));
        } catch (...) {
            next->result.set_value(kNoAnswer);
            throw;
        }
    }
}

// Locks although nothing may wait: who sends looks for the window under the same lock.
void FailSentTo(HWND window) {
    Inbox& inbox = Box();
    std::lock_guard lock(inbox.guard);
    std::erase_if(inbox.sent, [&](const std::shared_ptr<SentMessage>& sent) {
        if (!(sent->message.hwnd == window)) return false;
        sent->result.set_value(kNoAnswer);
        return true;
    });
}

void ClearInbox() {
    Inbox& inbox = Box();
    std::lock_guard lock(inbox.guard);
    inbox.posted.clear();
}

}  // namespace platform
