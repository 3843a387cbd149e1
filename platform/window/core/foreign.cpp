// Finding windows, those of other programs among them, and putting ours into them.
#include "platform/window/core/foreign.h"

#include <algorithm>
#include <new>
#include <string_view>

#include <platform/foreign.h>

#include "platform/window/core/control.h"
#include "platform/window/core/display.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

constexpr std::uint32_t kForeignIndex = 0x80000000;
constexpr HWND kScreenHandle(0xFFFFFFE0, 0xFFFFFFFF);

HWND WithoutMark(HWND handle) {
    return HWND(handle.Index() & ~kForeignIndex, handle.Generation());
}

ForeignHandles& Handles() {
    return Lasting<ForeignHandles>();
}

ForeignWindows* Capability() {
    WindowSystem* system = System();
    return system ? system->Foreign() : nullptr;
}

// Null: any.
struct Pattern {
    const std::optional<CString> className;  // upper case
    const std::optional<CString> title;

    bool Fits(const CString& otherClass, const CString& otherTitle) const {
        return (!className || CString(otherClass).MakeUpper() == *className) &&
               (!title || otherTitle == *title);
    }
};

Pattern MakePattern(LPCWSTR className, LPCWSTR title) {
    Pattern pattern{className ? std::optional(CString(className).MakeUpper()) : std::nullopt,
                    title ? std::optional(CString(title)) : std::nullopt};
    return pattern;
}

bool IsOnScreen(HWND parent) {
    return !parent || parent == kScreenHandle;
}

// Our own, the topmost first.
std::vector<HWND> OwnIn(HWND parent) {
    std::vector<HWND> all;
    if (const Window* window = Peek(parent)) all = window->children;
    if (IsOnScreen(parent)) Stack().ForEach([&](HWND window) { all.push_back(window); });
    std::reverse(all.begin(), all.end());
    return all;
}

struct Candidate {
    HWND handle;
    bool fits = false;
};

// All that lies directly in a window. Empty with the last error for a parent that is gone.
std::optional<std::vector<Candidate>> CandidatesIn(HWND parent, const Pattern& pattern) {
    std::vector<Candidate> all;
    for (const HWND own : OwnIn(parent))
        if (const Window* window = Peek(own))
            all.push_back({own, pattern.Fits(window->type->name.c_str(), window->title)});
    std::optional<ForeignId> foreign = kScreen;
    if (!IsOnScreen(parent)) {
        if (Peek(parent)) return all;
        foreign = FindForeign(parent);
        if (!foreign) return std::nullopt;
    }
    if (ForeignWindows* capability = Capability())
        for (const ForeignWindow& other : capability->In(*foreign))
            all.push_back({Handles().Give(other.id), pattern.Fits(other.className, other.title)});
    return all;
}

// Checks who may go where; empty with the last error.
std::optional<ForeignId> CheckMove(const Window& window, HWND parent) {
    if (window.IsChild() || Peek(parent)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return std::nullopt;
    }
    return IsOnScreen(parent) ? std::optional(kScreen) : FindForeign(parent);
}

}  // namespace

bool ForeignHandles::IsForeign(HWND handle) {
    return (handle.Index() & kForeignIndex) != 0 && handle.Index() < kScreenHandle.Index();
}

HWND ForeignHandles::Give(ForeignId id) {
    HWND& known = handles_[id];
    if (!known) {
        const HWND inTable = table_.Insert(std::make_shared<const ForeignId>(id));
        known = HWND(inTable.Index() | kForeignIndex, inTable.Generation());
    }
    return known;
}

std::optional<ForeignId> ForeignHandles::Find(HWND handle) const {
    const ForeignId* id = IsForeign(handle) ? table_.Find(WithoutMark(handle)) : nullptr;
    return id ? std::optional(*id) : std::nullopt;
}

void ForeignHandles::Forget(HWND handle) {
    if (const std::shared_ptr<const ForeignId> id = table_.Remove(WithoutMark(handle))) handles_.erase(*id);
}

// Handles of before stay stale: generations go on.
void ForeignHandles::Clear() {
    for (const auto& [id, handle] : handles_)
        table_.Remove(WithoutMark(handle));
    handles_.clear();
}

std::optional<ForeignId> FindForeign(HWND handle) {
    if (!IsOwningThread()) {
        SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
        return std::nullopt;
    }
    const std::optional<ForeignId> id = Handles().Find(handle);
    ForeignWindows* capability = Capability();
    if (id && capability && capability->Exists(*id)) return id;
    if (id) Handles().Forget(handle);
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return std::nullopt;
}

bool IsForeignShown(HWND handle) {
    const std::optional<ForeignId> id = FindForeign(handle);
    return id && Capability()->IsShown(*id);
}

int ShowForeign(HWND handle, int command) {
    const std::optional<ForeignId> id = FindForeign(handle);
    if (!id) return FALSE;
    const bool before = Capability()->IsShown(*id);
    Capability()->SetShown(*id, command != SW_HIDE);
    return before ? TRUE : FALSE;
}

void AcceptPutOut(const std::shared_ptr<Window>& window) {
    if (!window->host) return;
    window->host = HWND();
    // It must not stand in the way of what the user works with now.
    Restack(*window, HWND_BOTTOM);
    CallProcedure(window, WM_WINDOWPOSCHANGED, 0, 0);
}

void ClearForeignHandles() {
    Handles().Clear();
}

HWND HandleOfForeign(ForeignId id) try { return Handles().Give(id); } catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return HWND();
}

std::optional<ForeignId> ForeignOfHandle(HWND handle) {
    return FindForeign(handle);
}

}  // namespace platform

using namespace platform;

HWND FindWindowW(LPCWSTR className, LPCWSTR title) {
    return FindWindowExW(HWND(), HWND(), className, title);
}

HWND FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR title) try {
    if (!EnsureSystem()) return HWND();
    const Pattern pattern = MakePattern(className, title);
    const auto candidates = CandidatesIn(parent, pattern);
    if (!candidates) return HWND();
    auto at = candidates->begin();
    if (after) {
        at = std::find_if(at, candidates->end(), [&](const Candidate& one) { return one.handle == after; });
        if (at == candidates->end()) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return HWND();
        }
        ++at;
    }
    at = std::find_if(at, candidates->end(), [](const Candidate& one) { return one.fits; });
    if (at != candidates->end()) return at->handle;
    SetLastError(ERROR_FILE_NOT_FOUND);
    return HWND();
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return HWND();
}

HWND SetParent(HWND handle, HWND parent) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window) return HWND();
    const std::optional<ForeignId> id = CheckMove(*window, parent);
    if (!id) return HWND();
    const HWND before = window->host ? window->host : kScreenHandle;
    const HWND now = *id == kScreen ? HWND() : parent;
    if (now == window->host) return before;
    ForeignWindows* capability = SystemOf(*window) ? Capability() : nullptr;
    if (!capability || !capability->PutInto(handle, *id)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return HWND();
    }
    window->host = now;
    RaiseInLayer(*window);
    return before;
}

HWND GetDesktopWindow() {
    return kScreenHandle;
}

HWND GetAncestor(HWND handle, UINT which) {
    const Window* window = Require(handle);
    if (!window) return HWND();
    if (which != GA_PARENT) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    if (window->IsChild()) return window->parent;
    return window->host ? window->host : kScreenHandle;
}
