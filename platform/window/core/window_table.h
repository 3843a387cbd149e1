// The windows behind their handles, and the one thread that owns them all: the one that made the first. What
// is said nowhere else to be for any thread is for that one.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

// ---- thread
bool IsOwningThread();
bool HasOwner();
// Makes the calling thread the owner when no window exists. False with the last error set when another thread
// owns windows.
bool ClaimThread();
void DisownThread();
// For good: no thread owns windows any more.
void EndThreads();
bool HasEnded();

// ---- windows
// Null with the last error set, for a stale handle or on another thread.
Window* Require(HWND window);
std::shared_ptr<Window> RequireShared(HWND window);
// Without touching the last error; on the owning thread only.
Window* Peek(HWND window);
std::shared_ptr<Window> PeekShared(HWND window);
bool IsLive(HWND window);  // any thread
void Insert(const std::shared_ptr<Window>& window);
void Remove(HWND window);
std::size_t WindowCount();
void ForEachWindow(const std::function<void(HWND window, Window& record)>& visit);
void ResetWindowTable();

// Runs a window's procedure. The record stays alive for the call; a stale handle gives 0.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallProcedure(const std::shared_ptr<Window>& window, UINT message, WPARAM wParam, LPARAM lParam);

inline WPARAM ToWParam(HWND window) {
    return static_cast<WPARAM>(window.ToParam());
}
inline LPARAM ToLParam(HWND window) {
    return static_cast<LPARAM>(window.ToParam());
}

}  // namespace platform
