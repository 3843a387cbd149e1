#include "platform/window/core/window_table.h"

#include <atomic>
#include <cstdint>
#include <mutex>

#include "platform/base/handle_table.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/notifications.h"

namespace platform {

namespace {

// Threads are told apart by numbers: the address of something of a thread's own comes again with the next.
constexpr std::uint64_t kNoThread = 0;
thread_local std::uint64_t threadNumber = kNoThread;  // given with the first claim
thread_local bool threadEnds = false;

struct OwningThread {
    std::atomic<std::uint64_t> owner = kNoThread;
    std::uint64_t last = kNoThread;
    bool ended = false;
    std::mutex guard;  // of changes of the handles, which the owner reads freely
};

OwningThread& Threads() {
    return Lasting<OwningThread>();
}

HandleTable<HWND, Window>& Handles() {
    return Lasting<HandleTable<HWND, Window>>();
}

struct LeaveAtEnd {
    ~LeaveAtEnd() {
        threadEnds = true;
        if (!HasEnded() && IsOwningThread()) OwnerEnds();
    }
};

}  // namespace

bool IsOwningThread() {
    return threadNumber != kNoThread && Threads().owner.load(std::memory_order_relaxed) == threadNumber;
}

bool HasOwner() {
    return Threads().owner.load() != kNoThread;
}

bool ClaimThread() {
    if (IsOwningThread()) return true;
    OwningThread& threads = Threads();
    if (threads.ended || threadEnds) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return false;
    }
    thread_local const LeaveAtEnd leaveAtEnd;
    static_cast<void>(&leaveAtEnd);
    std::lock_guard lock(threads.guard);
    if (Handles().Count() != 0) {
        SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
        return false;
    }
    OwnerChanges();
    if (threadNumber == kNoThread) threadNumber = ++threads.last;
    threads.owner = threadNumber;
    return true;
}

void DisownThread() {
    Threads().owner = kNoThread;
}

void EndThreads() {
    Threads().ended = true;
}

bool HasEnded() {
    return Threads().ended;
}

Window* Peek(HWND window) {
    return Handles().Find(window);
}

std::shared_ptr<Window> PeekShared(HWND window) {
    return Handles().Share(window);
}

Window* Require(HWND window) {
    if (!IsOwningThread()) {
        SetLastError(IsLive(window) ? ERROR_WINDOW_OF_OTHER_THREAD : ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    Window* found = Peek(window);
    if (!found) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return found;
}

std::shared_ptr<Window> RequireShared(HWND window) {
    return Require(window) ? PeekShared(window) : nullptr;
}

bool IsLive(HWND window) {
    std::lock_guard lock(Threads().guard);
    return Handles().Find(window) != nullptr;
}

void Insert(const std::shared_ptr<Window>& window) {
    std::lock_guard lock(Threads().guard);
    window->handle = Handles().Insert(window);
}

void Remove(HWND window) {
    std::shared_ptr<Window> removed;  // goes when the lock is open again
    std::lock_guard lock(Threads().guard);
    removed = Handles().Remove(window);
}

std::size_t WindowCount() {
    return Handles().Count();
}

void ForEachWindow(const std::function<void(HWND window, Window& record)>& visit) {
    Handles().ForEach(visit);
}

void ResetWindowTable() {
    std::lock_guard lock(Threads().guard);
    ResetLasting<HandleTable<HWND, Window>>();
}

LRESULT CallProcedure(const std::shared_ptr<Window>& window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window ? window->type->procedure(window->handle, message, wParam, lParam) : 0;
}

LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallProcedure(PeekShared(window), message, wParam, lParam);
}

}  // namespace platform
