// A dialog with items of every kind, each of whose calls into the host is noted and may do something.
#pragma once

#include <QKUILib.h>

#include <memory>
#include <string>
#include <vector>

#include "support/test_dialog.h"

namespace host {

class HostDialog;
struct Thrown {};

// One playing of a scene: who lives, and at which of the calls the deed is done.
struct Play {
    HostDialog* dialog = nullptr;  // null once it is deleted
    std::unique_ptr<kit::TestDialog> owner;
    bool listening = false;  // calls count
    std::vector<std::string> calls;
    int deedAt = -1;
    void (*deed)(HostDialog& dialog) = nullptr;
    bool deedDone = false;
    bool throwsAlways = false;        // from the deed on, in every call
    CQKDialogBase* nested = nullptr;  // a modal dialog that the deed opened
};
inline Play* play;

// The host is called. False when the dialog does not outlive that.
inline bool Called(const std::string& name) {
    if (play->listening) {
        play->calls.push_back(name);
        if (static_cast<int>(play->calls.size()) == play->deedAt + 1 && play->dialog && play->deed) {
            play->deedDone = true;
            play->deed(*play->dialog);
        }
        if (play->throwsAlways) throw Thrown();
    }
    return play->dialog != nullptr;
}

// A virtual of the host's that calls its base: the host may act before and after that.
template <class Base>
void Around(const std::string& name, Base base) {
    if (!Called(name)) return;
    base();
    if (play->dialog) Called("after " + name);
}

class HostDialog : public CQKDialogBase {
  public:
    explicit HostDialog(CWnd* owner) : CQKDialogBase(kit::kDialogTemplate, owner) {
        play->dialog = this;
        static const CString strip =
            kit::Strip("host", {kit::kNormal, kit::kOver, kit::kPressed}, 40, 30, true);
        static const CString frames = kit::SaveGif("host", {{0xFF0000, 2}, {0x00FF00, 2}});
        for (QKButton* one : {below.get(), button.get()}) {
            one->SetImage(strip, QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
            one->SetRect(10, 10, 40, 30);
        }
        check->SetRect(60, 10, 30, 20);
        radio->SetRect(100, 10, 20, 20);
        otherRadio->SetRect(130, 10, 20, 20);
        otherRadio->SetCheck(1);
        bar->SetRect(170, 5, 20, 100);
        bar->SetBarLength(50, 200);
        gif->SetImage(frames);
        otherGif->SetImage(frames);
        gif->SetRect(60, 40, 10, 10);
        const QKCallbacks click = {[](LPVOID) { Called("click"); }, nullptr};
        for (QKButton* item : {below.get(), button.get(), static_cast<QKButton*>(otherRadio.get())})
            item->SetCallBack(&click);
        // Captured by value, on the heap: freed with the item, unless its call goes on.
        const auto called = std::make_shared<std::string>("click");
        for (QKCheckBox* item : {check.get(), static_cast<QKCheckBox*>(radio.get())})
            item->SetCallBack([name = std::vector<std::shared_ptr<std::string>>{called}] {
                if (Called(*name.front())) name.front()->size();
            });
        bar->SetScrollCallBack([called](int) { Called("scroll"); });
        check->SetTooltip("tip");
        const QKVScrollCallbacks moved = {nullptr, nullptr, nullptr, [](int, LPVOID) { Called("thumb"); }};
        bar->SetVBarCallBack(&moved);
        FillList();
        for (QKItemBase* item : std::initializer_list<QKItemBase*>{below.get(), button.get(), check.get(),
                                                                   radio.get(), otherRadio.get(), bar.get(),
                                                                   gif.get(), otherGif.get(), list.get()})
            AddQKItem(item);
    }
    ~HostDialog() override { play->dialog = nullptr; }

    // Entries that overlap, so that a scan of them wants to go on after a call.
    void FillList() {
        list->SetListType(QKLT_ICON);
        list->SetListMode(QKLIST_DESKTOP);
        CRect place(0, 70, 165, 150);
        list->SetRect(&place);
        for (int i = 0; i < 3; ++i) {
            QKListItem entry;
            list->AddItem(&entry, 1);
            list->GetItem(i)->rcMState = CRect(0, 70, 100, 150);
        }
        list->GetItem(1)->nClickSel = 0;
        const QKListCallbacks calls = {nullptr,
                                       nullptr,
                                       nullptr,
                                       [](QKListItem*, POINT*, LPVOID) { Called("right click on a list"); },
                                       [](QKListItem*, POINT*, LPVOID) { Called("click on a list"); },
                                       [](QKListItem*, LPVOID) { Called("double click on a list"); },
                                       nullptr};
        list->SetListCallBack(&calls);
    }

    template <class Item>
    void Free(std::unique_ptr<Item>& item) {
        RemoveQKItem(item.get());
        item.reset();
    }
    void FreeAll() {
        RemoveAllQKItem();
        below.reset(), button.reset(), check.reset(), radio.reset(), otherRadio.reset();
        bar.reset(), gif.reset(), otherGif.reset(), list.reset();
    }
    bool HoldsPress() {
        for (INT_PTR i = 0; i < m_arItems.GetSize(); ++i)
            if (m_arItems[i]->GetCaptrue()) return true;
        return m_pDownItem != nullptr;
    }

    void UpdateView() override {
        Around("UpdateView", [this] { CQKDialogBase::UpdateView(); });
    }
    void UpdateViewRect(const RECT* rect) override {
        Around("UpdateViewRect", [=, this] { CQKDialogBase::UpdateViewRect(rect); });
    }
    void UpdateViewPt(const POINT& source) override {
        Around("UpdateViewPt", [&] { CQKDialogBase::UpdateViewPt(source); });
    }
    void CallBackInvalidate() override { Called("CallBackInvalidate"); }
    void DrawSurface(HDC dc, int width, int height, int buffer) override {
        Around("DrawSurface", [=, this] { CQKDialogBase::DrawSurface(dc, width, height, buffer); });
    }
    BOOL PreTranslateMessage(MSG* message) override {
        BOOL taken = FALSE;
        Around("PreTranslateMessage", [&] { taken = CQKDialogBase::PreTranslateMessage(message); });
        return taken;
    }
    BOOL OnInitDialog() override {
        Around("OnInitDialog", [this] { CQKDialogBase::OnInitDialog(); });
        return TRUE;
    }
    BOOL DestroyWindow() override {
        BOOL destroyed = FALSE;
        Around("DestroyWindow", [&] { destroyed = CQKDialogBase::DestroyWindow(); });
        return destroyed;
    }
    using CQKDialogBase::m_bSysInvalidate;
    using CQKDialogBase::MoveLeaveList;

    std::unique_ptr<QKButton> below = std::make_unique<QKButton>();
    std::unique_ptr<QKButton> button = std::make_unique<QKButton>();
    std::unique_ptr<QKCheckBox> check = std::make_unique<QKCheckBox>();
    std::unique_ptr<QKRadio> radio = std::make_unique<QKRadio>();
    std::unique_ptr<QKRadio> otherRadio = std::make_unique<QKRadio>();
    std::unique_ptr<QKVScrollBar> bar = std::make_unique<QKVScrollBar>();
    std::unique_ptr<QKGifImage> gif = std::make_unique<QKGifImage>();
    std::unique_ptr<QKGifImage> otherGif = std::make_unique<QKGifImage>();
    std::unique_ptr<QKListCtrl> list = std::make_unique<QKListCtrl>();

  protected:
    void OnOK() override {
        Around("OnOK", [this] { CQKDialogBase::OnOK(); });
    }
    void OnCancel() override {
        Around("OnCancel", [this] { CQKDialogBase::OnCancel(); });
    }
    void PostNcDestroy() override { Called("PostNcDestroy"); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        LRESULT result = 0;
        Around("message " + std::to_string(message), [&] {
            // The two that only a host routes.
            if (message == WM_RBUTTONDOWN)
                return OnRButtonDown(0, CPoint(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)));
            if (message == WM_DESTROY) return OnDestroy();
            result = CQKDialogBase::WindowProc(message, wParam, lParam);
        });
        return result;
    }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        return Called("default of " + std::to_string(message))
                   ? CQKDialogBase::DefWindowProc(message, wParam, lParam)
                   : 0;
    }
};

}  // namespace host
