// One run of a modal dialog: its owner disabled, messages delivered until the dialog ends.
#pragma once

#include <platform/framework.h>

namespace platform {

// Lives on the stack of DoModal, where it outlasts the window and, when a handler deletes it, the object.
// The loops of a thread nest; an outer one that ended is left when the inner ones are.
class ModalLoop {
  public:
    explicit ModalLoop(CDialog& dialog);
    ~ModalLoop();
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    // The window was created, hidden: disables the top-level it belongs over.
    void Begin(HWND window, HWND owner);
    // Shows the window and delivers messages until the dialog ends. Nothing to do when it ended already.
    void Run();
    // Destroys the window and brings the owner back. Returns what DoModal returns.
    INT_PTR Finish();

    // The dialog ends with a result: the owner is enabled and the window hidden at once.
    void End(int result);
    // The object is being destroyed.
    void Forget() { dialog_ = nullptr; }

    // A window's last message: the loop that runs for it, if any, ends.
    static void WindowLeaves(HWND window);

  private:
    bool Ended() const;
    void EnableOwner();
    void ActivateOwner() const;
    // Makes a loop that sleeps, waiting for a message, look again whether it has ended.
    void WakeIfWaiting() const;

    CDialog* dialog_;
    HWND window_;
    HWND owner_;
    bool ownerDisabled_ = false;  // by this loop
    bool wasActive_ = false;      // the dialog was the active window before the last message
    bool ended_ = false;
    bool waiting_ = false;
    INT_PTR result_ = IDCANCEL;
    DWORD error_ = ERROR_SUCCESS;
    ModalLoop* outer_;
};

}  // namespace platform
