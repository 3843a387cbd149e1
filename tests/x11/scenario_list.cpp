
#include "support/skin.h"
#include "x11/scenario.h"

namespace scenario {

namespace {

// One translucent colour for all nine parts.
CStringArray FrameFiles(const std::string& name, std::uint32_t colour) {
    CStringArray files;
    for (int i = 0; i < 9; ++i)
        files.Add(kit::Solid("list_" + name, colour, 5, 5));
    return files;
}

class ListDialog : public CQKDialogBase {
  public:
    ListDialog() : CQKDialogBase(101) {}

    void Open(CWnd* owner) {
        Create(101, owner);
        SetWindowText(u"list");
        SetWindowPos(HWND(), 140, 110, 420, 300, SWP_NOZORDER);
        SetBackColor(Gdiplus::Color(0xFF203040), 1);
        SetNoMove(1);
        // The list that is met first takes every press, hit or not: that of the clicks lies on top.
        Dress(lower_, CRect(20, 170, 400, 290));
        Add(lower_, u"Below");
        Dress(upper_, CRect(20, 20, 400, 130));
        for (const LPCWSTR caption : {u"湖上的月亮", u"A caption of two lines", u"Letter", u"Луна"})
            Add(upper_, caption);
        ShowWindow(SW_SHOW);
        UpdateView();
    }

    // Of each entry its mouse state, f for focus, s for selection; then the functions called since the last.
    std::string States() {
        std::string states;
        for (const QKListCtrl* list : {&upper_, &lower_})
            for (int i = 0; i < list->GetCount(); ++i) {
                const QKListItem& entry = *list->GetItem(i);
                states += " " + std::to_string(entry.nMouseState) + (entry.nFocusState == 0 ? "f" : "") +
                          (entry.nSelState == 0 ? "s" : "");
            }
        return states + std::exchange(calls_, std::string()) + "\n";
    }

  private:
    void Dress(QKListCtrl& list, CRect place) {
        AddQKItem(&list);
        list.SetMouseMoveImage(FrameFiles("hover", 0x60606060));
        list.SetMouseDownImage(FrameFiles("down", 0x80804000));
        list.SetFouceImage(FrameFiles("focus", 0x70007020));
        list.SetListType(QKLT_BIGICON);
        list.SetArrange(0);
        list.SetListMode(QKLIST_DESKTOP);
        list.SetRect(&place);
        const QKListCallbacks callbacks = {
            nullptr,
            nullptr,
            nullptr,
            [](QKListItem*, POINT*, LPVOID calls) { *static_cast<std::string*>(calls) += " right"; },
            [](QKListItem*, POINT*, LPVOID calls) { *static_cast<std::string*>(calls) += " click"; },
            [](QKListItem*, LPVOID calls) { *static_cast<std::string*>(calls) += " double click"; },
            &calls_};
        list.SetListCallBack(&callbacks);
    }
    static void Add(QKListCtrl& list, LPCWSTR caption) {
        QKListItem record;
        record.pImage = new Gdiplus::Image(kit::Strip("list_icon", {0xFFE08020, 0xC00080A0}, 32, 64, false));
        record.SetText(caption);
        list.AddItem(&record, 1);
    }

    QKListCtrl upper_, lower_;
    std::string calls_;
};

}  // namespace

Told PlayList(Stage& stage) {
    CQKDialogBase backdrop(101);
    backdrop.Create(101);
    backdrop.SetWindowPos(HWND(), 0, 0, kScreenWidth, kScreenHeight, SWP_NOZORDER);
    backdrop.SetBackColor(Gdiplus::Color(0xFF305070), 1);
    backdrop.SetNoMove(1);
    backdrop.ShowWindow(SW_SHOW);
    backdrop.UpdateView();
    stage.Settle();

    Told told;
    ListDialog dialog;
    dialog.Open(&backdrop);
    const auto look = [&](const char* title) {
        stage.Settle();
        told.log += std::string(title) + ":" + dialog.States();
        told.titles.emplace_back(title);
        told.pictures.push_back(stage.Screen());
    };
    look("at rest");
    stage.MovePointer(200, 160);
    look("over the first");
    stage.MovePointer(280, 160);
    stage.Button(1, true);
    look("pressed");
    stage.Button(1, false);
    look("clicked");
    stage.DoubleClick();
    look("double-clicked");
    stage.MovePointer(355, 160);
    stage.Button(3, true);
    stage.Button(3, false);
    look("clicked by the right button");
    dialog.SetSelRect(1);
    stage.MovePointer(530, 270);
    stage.Button(1, true);
    stage.MovePointer(340, 180);
    look("a band over two");
    stage.MovePointer(170, 310);
    look("over the list below");
    stage.MovePointer(440, 180);
    look("and over one again");
    stage.Button(1, false);
    look("let go");
    stage.MovePointer(590, 390);
    look("left alone");
    return told;
}

}  // namespace scenario
