// Pictures that lie, handles that are stale, resources that are missing.
#include "support/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

class DialogFault : public kit::HeadlessTest {};

TEST_F(DialogFault, WhatLeavesDrawSurfaceLeavesNothingBehind) {
    struct Throwing : TestDialog {
        void DrawSurface(HDC dc, int width, int height, int buffer) override {
            if (throws == 1) throw 1;
            TestDialog::DrawSurface(dc, width, height, buffer);
            if (throws == 2) throw 2;
        }
        int throws = 0;
    } dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    const auto nextContext = [&] {
        const HDC context = GetDC(dialog.m_hWnd);
        ReleaseDC(dialog.m_hWnd, context);
        return context.Index();
    };
    for (const bool layered : {false, true}) {
        if (layered) dialog.Set_OPAQUEDlg(255);
        dialog.Refresh();
        const std::uint32_t free = nextContext();
        for (const int when : {1, 2, 1}) {
            dialog.throws = when;
            button.SetStatus(QKItemBase::QK_MOUSEON);
            EXPECT_THROW(dialog.Refresh(), int);
            EXPECT_EQ(nextContext(), free);
            dialog.throws = 0;
            button.SetStatus(QKItemBase::QK_NORMAL);
            dialog.Refresh();
            EXPECT_EQ(dialog.Pixel(20, 20), kit::kNormal);
        }
    }
}

TEST_F(DialogFault, BrokenPicturesDrawNothing) {
    const kit::Bytes bytes = kit::ReadBytes(ToUtf8(kit::Solid("whole", 0xFFFF0000, 40, 30)));
    const std::string png(bytes.begin(), bytes.end());
    ASSERT_GT(png.size(), 30U);
    std::string lying = png;
    lying.replace(18, 2, "\xEA\x60").replace(22, 2, "\xEA\x60");  // width and height: 60000
    const CString pictures[] = {CString(u"/no/such/file.png"), kit::SaveBytes("empty.png", ""),
                                kit::SaveBytes("truncated.png", png.substr(0, 30)),
                                kit::SaveBytes("lying.png", lying),
                                kit::SaveBytes("text.png", "not a picture")};
    for (const CString& picture : pictures) {
        SCOPED_TRACE(ToUtf8(picture));
        QKButton button;
        EXPECT_EQ(button.SetImage(picture, QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 1);
        button.SetRect(10, 10, 40, 30);
        TestDialog dialog({&button});
        dialog.SetBack(picture, 1, 0);
        CRect size;
        EXPECT_EQ(dialog.SetBack(picture, size), 1);
        EXPECT_EQ(size, CRect(0, 0, 0, 0));
        dialog.SetBackColor(Gdiplus::Color(0xFF00FF00), 1);
        dialog.Open();
        EXPECT_EQ(dialog.Pixel(20, 20), 0xFF00FF00U);
        dialog.Click(20, 20);
    }
}

TEST_F(DialogFault, AMissingTemplateIsReported) {
    TestDialog dialog;
    SetLastError(0);
    EXPECT_FALSE(dialog.Create(4711));
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
    CQKDialogBase modal(4711);
    EXPECT_EQ(modal.DoModal(), -1);
}

TEST_F(DialogFault, OddGeometryIsDrawnWithoutHarm) {
    TestButton button(10, 10);
    TestDialog dialog({&button});
    dialog.Open();
    const CRect rects[] = {
        {-2147483647, -2147483647, 2147483647, 2147483647}, {50, 50, 20, 20}, {0, 0, 0, 0}};
    for (const CRect& rect : rects) {
        button.SetRect(&rect);
        button.SetTranMouseOver(0);
        for (const int height : {-1, -5, 0, 1000000, 2147483647}) {
            button.SetButtonHeight(height);
            dialog.Refresh();
            dialog.UpdateViewRect(rect);
            Headless::RunPending();
        }
    }
    for (const CSize size : {CSize(0, 0), CSize(1, 1), CSize(3000, 2)}) {
        dialog.SetWindowPos(HWND(), 0, 0, size.cx, size.cy, SWP_NOZORDER);
        dialog.Refresh();
        dialog.Set_OPAQUEDlg(300);
        dialog.Refresh();
        dialog.SetNoLayDlg();
    }
}

}  // namespace
