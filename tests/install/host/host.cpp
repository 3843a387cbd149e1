// A host as its author would write it, outside the tree: a modal dialog from its own resources, driven and
// photographed without a display. Exits with 0 when it saw the pixels and the result that it should.
#include <QKUILib.h>

#include <cstdio>

namespace {

constexpr UINT kDialog = 101;
constexpr UINT kButtonStrip = 201;
constexpr int kButtonLeft = 30;
constexpr int kButtonTop = 20;

class HostDialog : public CQKDialogBase {
  public:
    HostDialog() : CQKDialogBase(kDialog) {}

    BOOL OnInitDialog() override {
        CQKDialogBase::OnInitDialog();
        SetBackColor(Gdiplus::Color(10, 20, 30), 1);
        loaded = button_.SetImage(kButtonStrip, u"PNG", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
        button_.SetRect(kButtonLeft, kButtonTop, 24, 16);
        QKCallbacks callbacks;
        callbacks.pfnClick = [](LPVOID dialog) { static_cast<HostDialog*>(dialog)->SetDoModalOK(1); };
        callbacks.pArgument = this;
        button_.SetCallBack(&callbacks);
        AddQKItem(&button_);
        return TRUE;
    }

    int loaded = 0;
    const char* picture = "host.png";
    int faults = 0;

    void Expect(const char* what, std::uint32_t seen, std::uint32_t expected) {
        if (seen == expected) return;
        std::fprintf(stderr, "%s: 0x%08X, not 0x%08X\n", what, static_cast<unsigned>(seen),
                     static_cast<unsigned>(expected));
        ++faults;
    }

    // Runs while DoModal waits for input.
    void Act() {
        CRect window;
        GetWindowRect(window);
        Expect("background", Headless::Capture(m_hWnd).At(3, 3), 0xFF0A141E);
        Expect("button at rest", Button(), 0xFFC80000);
        Headless::MovePointer(window.left + kButtonLeft + 5, window.top + kButtonTop + 5);
        Headless::RunPending();
        Expect("button under the pointer", Button(), 0xFF00A000);
        if (!Headless::Capture(m_hWnd).SavePng(picture)) ++faults;
        Headless::ButtonDown();
        Headless::ButtonUp();
    }

  private:
    std::uint32_t Button() const { return Headless::Capture(m_hWnd).At(kButtonLeft + 5, kButtonTop + 5); }
    QKButton button_;
};

}  // namespace

int main(int argc, char** argv) {
    Headless::Use(640, 480);
    HostDialog dialog;
    if (argc > 1) dialog.picture = argv[1];
    Headless::WhenIdle([](void* it) { static_cast<HostDialog*>(it)->Act(); }, &dialog);
    const INT_PTR result = dialog.DoModal();
    if (result == -1) std::fprintf(stderr, "no dialog: %s\n", ErrorText(GetLastError()));
    dialog.Expect("strip loaded from the resources", static_cast<std::uint32_t>(dialog.loaded), 1);
    dialog.Expect("result of the dialog", static_cast<std::uint32_t>(result), IDOK);
    return dialog.faults == 0 ? 0 : 1;
}
