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

  private:
    QKButton button_;
};

struct Visit {
    HostDialog dialog;
    const char* picture = nullptr;
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
        GetWindowRect(dialog.m_hWnd, window);
        const auto button = [&] {
            return Headless::Capture(dialog.m_hWnd).At(kButtonLeft + 5, kButtonTop + 5);
        };
        Expect("background", Headless::Capture(dialog.m_hWnd).At(3, 3), 0xFF0A141E);
        Expect("button at rest", button(), 0xFFC80000);
        Headless::MovePointer(window.left + kButtonLeft + 5, window.top + kButtonTop + 5);
        Headless::RunPending();
        Expect("button under the pointer", button(), 0xFF00A000);
        Headless::ButtonDown();
        Headless::RunPending();
        Expect("button pressed", button(), 0xFF0000DC);
        if (!Headless::Capture(dialog.m_hWnd).SavePng(picture)) ++faults;
        Headless::ButtonUp();
    }
};

}  // namespace

int main(int argc, char** argv) {
    Headless::Use(640, 480);
    Visit visit;
    visit.picture = argc > 1 ? argv[1] : "host.png";
    Headless::WhenIdle([](void* it) { static_cast<Visit*>(it)->Act(); }, &visit);
    const INT_PTR result = visit.dialog.DoModal();
    if (result == -1) std::fprintf(stderr, "no dialog: %s\n", ErrorText(GetLastError()));
    visit.Expect("strip loaded from the resources", static_cast<std::uint32_t>(visit.dialog.loaded), 1);
    visit.Expect("result of the dialog", static_cast<std::uint32_t>(result), IDOK);
    return visit.faults == 0 ? 0 : 1;
}
