#include "platform/window/core/core.h"

#include <algorithm>
#include <chrono>
#include <new>

#include "platform/graphics/device_context.h"
#include "platform/window/core/control.h"

namespace platform {

namespace {

thread_local std::uint64_t threadNumber = 0;  // given with the first claim
thread_local bool threadEnds = false;

struct LeaveAtEnd {
    ~LeaveAtEnd() { Core::Get().LeaveThread(); }
};

// Where messages to a destroyed owner's thread would be answered from: nobody is left, so 0.
constexpr LRESULT kNoAnswer = 0;

}  // namespace

Core& Core::Get() {
    struct Ending {
        Core* core;
        ~Ending() { core->End(); }
    };
    alignas(Core) static std::byte memory[sizeof(Core)];
    static Core* const core = new (memory) Core;
    static const Ending ending{core};
    return *core;
}

// Surfaces and device contexts keep tables of their own. Using both here makes those older than the core,
// so that they are still there when the core ends with the process.
Core::Core() : nowhere(Surface::Create(1, 1)), sink_(MakeEventSink(*this)) {
    DeleteDeviceContext(MakeDeviceContext(nowhere, POINT{0, 0}, Region()));
    AddStandardClasses();
}

void Core::AddStandardClasses() {
    auto placeholder = std::make_shared<WindowClass>();
    placeholder->name = u"STATIC";
    placeholder->procedure = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == WM_NCHITTEST) return HTTRANSPARENT;
        return DefWindowProcW(window, message, wParam, lParam);
    };
    placeholder->letsPointerThrough = true;
    classes[placeholder->name] = placeholder;
}

// ---- windows

Window* Core::Find(HWND window) {
    if (!IsOwningThread()) {
        SetLastError(IsLive(window) ? ERROR_WINDOW_OF_OTHER_THREAD : ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    Window* found = windows_.Find(window);
    if (!found) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return found;
}

std::shared_ptr<Window> Core::Share(HWND window) {
    return Find(window) ? windows_.Share(window) : nullptr;
}

HWND Core::Insert(std::shared_ptr<Window> window) {
    std::lock_guard lock(shared_);
    Window& record = *window;
    record.handle = windows_.Insert(std::move(window));
    return record.handle;
}

void Core::Remove(HWND window) {
    std::shared_ptr<Window> removed;
    {
        std::lock_guard lock(shared_);
        removed = windows_.Remove(window);
    }
    FailSentTo(window);
}

bool Core::IsLive(HWND window) {
    std::lock_guard lock(shared_);
    return windows_.Find(window) != nullptr;
}

// ---- thread

bool Core::IsOwningThread() const {
    return threadNumber != kNoThread && owner_.load(std::memory_order_relaxed) == threadNumber;
}

bool Core::Claim() {
    if (IsOwningThread()) return true;
    if (ended_ || threadEnds) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return false;
    }
    thread_local const LeaveAtEnd leaveAtEnd;
    static_cast<void>(&leaveAtEnd);
    std::lock_guard lock(shared_);
    if (windows_.Count() != 0) {
        SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
        return false;
    }
    if (HasOwner()) {
        queue.DropThreadMessages();
        quit.reset();
    }
    if (threadNumber == kNoThread) threadNumber = ++lastThread_;
    owner_ = threadNumber;
    return true;
}

void Core::LeaveThread() {
    threadEnds = true;
    if (ended_ || !IsOwningThread()) return;
    DropWindows();
    owner_ = kNoThread;
}

// ---- window system

void Core::DropSystem() {
    std::unique_ptr<ScaledSystem> ending;
    {
        std::lock_guard lock(shared_);
        ending = std::move(system_);
        ++systemSerial_;
        lost_ = false;
    }
    pointer.capture = HWND();
    pointer.cursorWindow = HWND();
    foreign.Clear();
    activation.systemFocus = activation.asked = HWND();
}

WindowSystem* Core::EnsureSystem() {
    if (!Claim()) return nullptr;
    if (system_ && !system_->IsAlive()) MarkLost();
    if (system_ && !lost_) return system_.get();
    if (lost_ && WindowCount() != 0) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    DropSystem();
    SetLastError(ERROR_SUCCESS);
    std::unique_ptr<ScaledSystem> fresh = ScaledSystem::Over(*sink_, &MakeX11WindowSystem);
    if (!fresh) {
        if (GetLastError() == ERROR_SUCCESS) SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    std::lock_guard lock(shared_);
    system_ = std::move(fresh);
    headless_ = false;
    SettleScale();
    UpdateKeyWatch();
    return system_.get();
}

bool Core::UseHeadless(int screenWidth, int screenHeight) {
    if (!Claim()) return false;
    // Windows of a lost display stay as they are: records without a display.
    if (system_ && !lost_ && WindowCount() != 0) return headless_;
    if (system_ && !lost_ && headless_) return true;
    DropSystem();
    std::unique_ptr<ScaledSystem> fresh = ScaledSystem::Over(*sink_, [&](WindowEvents& events) {
        return MakeHeadlessWindowSystem(events, screenWidth, screenHeight);
    });
    std::lock_guard lock(shared_);
    system_ = std::move(fresh);
    headless_ = true;
    SettleScale();
    UpdateKeyWatch();
    return system_ != nullptr;
}

void Core::WantScale(int scale) {
    wantedScale_ = scale;
    if (scale == 0) EnsureSystem();  // to be asked
    SettleScale();
}

void Core::SettleScale() {
    constexpr int kUsualDpi = 96;
    if (WindowCount() != 0) return;
    // Halves go down: what is too small can still be read.
    const int dpi = system_ ? system_->Dpi() : kUsualDpi;
    const int asked = std::clamp((dpi + kUsualDpi / 2 - 1) / kUsualDpi, 1, kMostScale);
    SetScreenScaleTo(wantedScale_ != 0 ? wantedScale_ : asked);
    nowhere->SetScale(ScreenScale());
}

void Core::MarkLost() {
    lost_ = true;
    pointer.capture = HWND();
}

std::uint64_t Core::Now() {
    {
        std::unique_lock lock(shared_, std::defer_lock);
        if (!IsOwningThread()) lock.lock();
        if (system_) return system_->Now();
    }
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

// ---- what other threads hand over

bool Core::PostFromElsewhere(const MSG& message) {
    constexpr std::size_t kLongestInbox = 100000;
    std::lock_guard lock(shared_);
    if (!windows_.Find(message.hwnd)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    if (posted_.size() >= kLongestInbox) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    try {
        posted_.push_back(message);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    postedWaiting_ = true;
    if (system_) system_->Wake();
    return true;
}

LRESULT Core::SendFromElsewhere(const MSG& message) {
    std::future<LRESULT> answer;
    try {
        auto sent = std::make_shared<SentFromElsewhere>();
        sent->message = message;
        answer = sent->result.get_future();
        std::lock_guard lock(shared_);
        if (!windows_.Find(message.hwnd)) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return 0;
        }
        sent_.push_back(std::move(sent));
        sentWaiting_ = true;
        if (system_) system_->Wake();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return kNoAnswer;
    }
    return answer.get();
}

void Core::TakeInbox() {
    if (!postedWaiting_.load()) return;
    std::lock_guard lock(shared_);
    // What the queue has no place for now is taken later.
    while (!posted_.empty() && queue.Post(posted_.front()))
        posted_.pop_front();
    postedWaiting_ = !posted_.empty();
}

void Core::RunSentInbox() {
    while (sentWaiting_.load()) {
        std::shared_ptr<SentFromElsewhere> next;
        {
            std::lock_guard lock(shared_);
            if (sent_.empty()) {
                sentWaiting_ = false;
                return;
            }
            next = std::move(sent_.front());
            sent_.pop_front();
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

void Core::FailSentTo(HWND window) {
    if (!sentWaiting_.load()) return;
    std::lock_guard lock(shared_);
    std::erase_if(sent_, [&](const std::shared_ptr<SentFromElsewhere>& sent) {
        if (!(sent->message.hwnd == window)) return false;
        sent->result.set_value(kNoAnswer);
        return true;
    });
}

void Core::DropWindows() {
    std::vector<HWND> all;
    windows_.ForEach([&](HWND window, Window& record) {
        all.push_back(window);
        if (WindowSystem* system = record.IsChild() ? nullptr : SystemOf(record)) system->Destroy(window);
    });
    for (const auto& [param, owner] : contexts)
        DeleteDeviceContext(HDC::FromParam(param));
    contexts.clear();
    for (HWND window : all)
        Remove(window);
    stack.Clear();
    dirty.clear();
    queue.Clear();
    timers.Clear();
    {
        std::lock_guard lock(shared_);
        posted_.clear();
    }
    pointer = PointerTracking();
    keyboard = KeyboardTracking();
    activation = Activation();
    captionMove.window = HWND();
    fileDrag = FileDragging();
    quit.reset();
    hooks.Clear();
    UpdateKeyWatch();
}

void Core::ShutDown() {
    DropWindows();
    DropSystem();
    headless_ = false;
    owner_ = kNoThread;
}

void Core::End() {
    ShutDown();
    ended_ = true;
    std::lock_guard lock(shared_);
    windows_ = {};
    stack = {};
    classes = {};
    dirty = {};
    contexts = {};
    queue = {};
    timers = {};
    foreign = {};
    hooks = {};
    nowhere.reset();
    sink_.reset();
    messageFilter = nullptr;
}

// ---- procedures

LRESULT CallProcedure(const std::shared_ptr<Window>& window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window ? window->type->procedure(window->handle, message, wParam, lParam) : 0;
}

LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallProcedure(Core::Get().PeekShared(window), message, wParam, lParam);
}

// ---- control

void ShutDownWindows() {
    Core::Get().ShutDown();
}

void SetMessageFilter(bool (*filter)(MSG* message)) {
    Core::Get().messageFilter = filter;
}

bool UseHeadlessWindowSystem(int screenWidth, int screenHeight) {
    return Core::Get().UseHeadless(screenWidth, screenHeight);
}

void SettleScreenScale() {
    Core::Get().SettleScale();
}

std::optional<std::uint64_t> NextTimerDue() {
    return Core::Get().timers.NextDue();
}

}  // namespace platform

BOOL SetScreenScale(int scale) {
    platform::Core& core = platform::Core::Get();
    if (!core.Claim()) return FALSE;
    if (scale < 0 || scale > platform::kMostScale) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (core.WindowCount() != 0) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    core.WantScale(scale);
    return TRUE;
}

int GetScreenScale() {
    return platform::ScreenScale();
}
