// A host without CMake and without resources: its window comes from code, its picture from a file.
#include <QKUILib.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    Headless::Use(320, 240);
    CQKDialogBase dialog(0);
    const CRect place(20, 10, 220, 110);
    if (!dialog.CreateEx(0, u"Plain", WS_POPUP, place, nullptr, 0)) return 3;
    QKButton button;
    button.SetImage(CString(argv[1]), QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
    button.SetRect(8, 6, 24, 16);
    dialog.SetBackColor(Gdiplus::Color(40, 50, 60), 1);
    dialog.AddQKItem(&button);
    dialog.ShowWindow(SW_SHOW);
    Headless::RunPending();
    const Headless::Picture picture = Headless::Capture(dialog.m_hWnd);
    const bool right = picture.At(10, 10) == 0xFFC80000 && picture.At(100, 50) == 0xFF28323C;
    if (!right) std::fprintf(stderr, "0x%08X, 0x%08X\n", picture.At(10, 10), picture.At(100, 50));
    return right ? 0 : 1;
}
