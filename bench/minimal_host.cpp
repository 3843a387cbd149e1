// The least that a host does: one dialog, one frame, out. Started over and over by start_bench.
#include <QKUILib.h>

int main() {
    if (!Headless::Use(640, 480)) return 1;
    CQKDialogBase dialog(101);
    dialog.SetBackColor(Gdiplus::Color(0xFF204060), 1);
    if (!dialog.Create(101)) return 1;
    dialog.ShowWindow(SW_SHOW);
    UpdateWindow(dialog.m_hWnd);
    return 0;
}
