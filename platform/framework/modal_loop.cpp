#include "platform/framework/modal_loop.h"

#include "platform/window/core/control.h"

namespace platform {
namespace {

thread_local ModalLoop* innermostLoop = nullptr;

}  // namespace

ModalLoop::ModalLoop(CDialog& dialog) : dialog_(&dialog), outer_(innermostLoop) {
    dialog.m_modalLoop = this;
    innermostLoop = this;
}

ModalLoop::~ModalLoop() {
    // Left by an exception it ends as it always does; what handlers throw on the way is lost behind that.
    try {
        EnableOwner();
    } catch (...) {
    }
    try {
        if (IsWindow(window_)) ::DestroyWindow(window_);
    } catch (...) {
    }
    if (dialog_) dialog_->m_modalLoop = nullptr;
    innermostLoop = outer_;
    // The outer loop may have ended while it waited around this one.
    if (outer_ && outer_->Ended()) outer_->WakeIfWaiting();
}

void ModalLoop::Begin(HWND window, HWND owner) {
    window_ = window;
    owner_ = owner;
    // Another modal dialog over the same owner leaves it disabled when this one ends.
    ownerDisabled_ = IsWindow(owner) && !EnableWindow(owner, FALSE);
}

void ModalLoop::Run() {
    if (!Ended()) ShowWindow(window_, SW_SHOW);
    while (!Ended()) {
        MSG message{};
        wasActive_ = GetActiveWindow() == window_;
        waiting_ = true;
        const int got = GetMessageW(&message, {}, 0, 0);
        waiting_ = false;
        if (got > 0) {
            wasActive_ = GetActiveWindow() == window_;
            DeliverMessage(message);
            continue;
        }
        if (got == 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            if (!ended_) result_ = IDCANCEL;
        } else {
            error_ = GetLastError();
            result_ = -1;
        }
        ended_ = true;
    }
}

INT_PTR ModalLoop::Finish() {
    EnableOwner();
    if (IsWindow(window_) && dialog_) dialog_->DestroyWindow();
    if (IsWindow(window_)) ::DestroyWindow(window_);
    // A window that is destroyed is hidden before anybody hears of it; then nothing is active.
    if (wasActive_ && !GetActiveWindow()) ActivateOwner();
    if (result_ == -1 && error_ != ERROR_SUCCESS) SetLastError(error_);
    return result_;
}

void ModalLoop::End(int result) {
    result_ = result;
    ended_ = true;
    EnableOwner();
    if (GetActiveWindow() == window_) ActivateOwner();
    ShowWindow(window_, SW_HIDE);
    WakeIfWaiting();
}

void ModalLoop::WindowLeaves(HWND window) {
    for (ModalLoop* one = innermostLoop; one; one = one->outer_) {
        if (one->window_ != window) continue;
        one->EnableOwner();
        one->WakeIfWaiting();
    }
}

bool ModalLoop::Ended() const {
    return ended_ || !IsWindow(window_);
}

void ModalLoop::EnableOwner() {
    if (!ownerDisabled_) return;
    ownerDisabled_ = false;
    EnableWindow(owner_, TRUE);
}

void ModalLoop::ActivateOwner() const {
    if (IsWindowVisible(owner_) && IsWindowEnabled(owner_)) SetActiveWindow(owner_);
}

void ModalLoop::WakeIfWaiting() const {
    if (waiting_) PostMessageW({}, WM_NULL, 0, 0);
}

}  // namespace platform
