// Callbacks that pull the ground away, pictures that lie, handles that are stale, resources that are missing.
#include "kit/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

class DialogFault : public kit::HeadlessTest {};

class SelfDeleting : public TestDialog {
  protected:
    void PostNcDestroy() override { delete this; }
};

TEST_F(DialogFault, CallbacksMayDoAnythingToTheirDialog) {
    struct Scene {
        TestDialog* dialog;
        std::vector<std::unique_ptr<TestButton>> buttons;
    };
    struct Case {
        const char* name;
        void (*act)(Scene& scene);
        bool windowLives;
        int buttonsLeft;
    };
    const Case cases[] = {
        {"posts the close request", [](Scene& s) { s.dialog->CloseQKDlg(); }, false, 3},
        {"destroys the window", [](Scene& s) { s.dialog->DestroyWindow(); }, false, 3},
        {"closes at once", [](Scene& s) { s.dialog->SendMessage(WM_CLOSE); }, false, 3},
        {"minimises, twice",
         [](Scene& s) {
             s.dialog->MinQKDlg();
             s.dialog->MinQKDlg();
         },
         true, 3},
        {"minimises, pumps, minimises again",
         [](Scene& s) {
             s.dialog->MinQKDlg();
             for (int i = 0; i < 5; ++i)
                 s.dialog->messagePump();
             s.dialog->MinQKDlg();
         },
         true, 3},
        {"removes and frees the clicked item",
         [](Scene& s) {
             s.dialog->RemoveQKItem(s.buttons[2].get());
             s.buttons.pop_back();
         },
         true, 2},
        {"frees the item below",
         [](Scene& s) {
             s.dialog->RemoveQKItem(s.buttons[0].get());
             s.buttons.erase(s.buttons.begin());
         },
         true, 2},
        {"removes all items",
         [](Scene& s) {
             s.dialog->RemoveAllQKItem();
             s.buttons.clear();
         },
         true, 0},
        {"adds an item",
         [](Scene& s) {
             s.buttons.push_back(std::make_unique<TestButton>(0, 0));
             s.dialog->AddQKItem(s.buttons.back().get());
         },
         true, 4},
        {"hides and disables itself",
         [](Scene& s) {
             s.buttons[2]->SetShow(0);
             s.buttons[2]->SetEnable(0);
         },
         true, 3},
        {"takes its own callback away", [](Scene& s) { s.buttons[2]->SetCallBack(nullptr); }, true, 3},
        {"releases the button again",
         [](Scene& s) {
             if (s.buttons[2]->clicks == 1) s.dialog->OnLButtonUp(0, CPoint(25, 20));
         },
         true, 3},
        {"opens a modal dialog",
         [](Scene& s) {
             TestDialog modal(s.dialog);
             Headless::WhenIdle([](void* m) { static_cast<TestDialog*>(m)->SetDoModalOK(1); }, &modal);
             EXPECT_EQ(modal.DoModal(), IDOK);
             EXPECT_EQ(GetCapture(), HWND());
         },
         true, 3},
        {"opens a modal dialog and destroys the window from inside",
         [](Scene& s) {
             TestDialog modal(s.dialog);
             Headless::WhenIdle([](void* d) { static_cast<TestDialog*>(d)->DestroyWindow(); }, s.dialog);
             EXPECT_EQ(modal.DoModal(), IDCANCEL);
         },
         false, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Scene scene;
        TestDialog dialog;
        scene.dialog = &dialog;
        for (int i = 0; i < 3; ++i) {
            scene.buttons.push_back(std::make_unique<TestButton>(10 + i, 10));
            dialog.AddQKItem(scene.buttons.back().get());
        }
        dialog.Open();
        scene.buttons[2]->onClick = [&] { c.act(scene); };
        dialog.Click(25, 20);
        Headless::RunPending();
        EXPECT_EQ(IsWindow(dialog.m_hWnd) != 0, c.windowLives);
        EXPECT_EQ(scene.buttons.size(), static_cast<std::size_t>(c.buttonsLeft));
        EXPECT_EQ(GetCapture(), HWND());
        EXPECT_EQ(dialog.m_pDownItem, nullptr);
        if (c.windowLives) {
            ShowWindow(dialog.m_hWnd, SW_RESTORE);
            dialog.Refresh();
            dialog.Move(150, 100);
            dialog.Move(25, 20);
        }
    }
}

TEST_F(DialogFault, ACallbackMayDeleteTheDialogObject) {
    for (const bool layered : {false, true}) {
        auto* dialog = new SelfDeleting;
        TestButton below(10, 10), button(10, 10);
        dialog->AddQKItem(&below);
        dialog->AddQKItem(&button);
        dialog->Open();
        if (layered) dialog->Set_OPAQUEDlg(255);
        dialog->Refresh();
        const HWND window = dialog->m_hWnd;
        button.onClick = [&] { ::DestroyWindow(window); };
        dialog->Click(20, 20);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(button.clicks, 1);
    }
}

TEST_F(DialogFault, BrokenPicturesDrawNothing) {
    std::string png;
    {
        const CString path = kit::Solid("whole", 0xFFFF0000, 40, 30);
        FILE* file = std::fopen(ToUtf8(path).c_str(), "rb");
        ASSERT_NE(file, nullptr);
        char bytes[4096];
        png.assign(bytes, std::fread(bytes, 1, sizeof bytes, file));
        std::fclose(file);
    }
    std::string lying = png;
    for (const std::size_t at : {18U, 22U}) {  // width and height of the header: 60000
        lying[at] = static_cast<char>(0xEA);
        lying[at + 1] = static_cast<char>(0x60);
    }
    const CString pictures[] = {CString(u"/no/such/file.png"), kit::SaveBytes("empty.png", ""),
                                kit::SaveBytes("truncated.png", png.substr(0, 30)),
                                kit::SaveBytes("lying.png", lying),
                                kit::SaveBytes("text.png", "not a picture")};
    for (const CString& picture : pictures) {
        SCOPED_TRACE(ToUtf8(picture));
        TestDialog dialog;
        QKButton button;
        EXPECT_EQ(button.SetImage(picture, QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 1);
        button.SetRect(10, 10, 40, 30);
        dialog.AddQKItem(&button);
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

TEST_F(DialogFault, ItemsRegisteredEarlyHaveNoParentYetAndStillWork) {
    TestDialog dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    dialog.Click(20, 20);
    EXPECT_EQ(button.clicks, 1);
}

TEST_F(DialogFault, OddGeometryIsDrawnWithoutHarm) {
    TestDialog dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
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
