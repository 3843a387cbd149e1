// Lists and dialogs whose inner workings the tests may look at.
#pragma once

#include "list/list_access.h"
#include "support/test_dialog.h"

namespace kit {

inline void SetText(WCHAR (&to)[QKListItem::kTextUnits], const CString& text) {
    const int length = std::min(text.GetLength(), QKListItem::kTextUnits - 1);
    std::copy_n(text.GetString(), length, to);
    to[length] = 0;
}

class TestList : public QKListCtrl {
  public:
    TestList() = default;
    TestList(QKListType type, const CRect& rect) {
        SetListType(type);
        CRect place(rect);
        SetRect(&place);
    }
    // Adds an entry with a caption; -1, -1 for no place of its own.
    void Add(const CString& caption, int layout = 1) {
        QKListItem record;
        SetText(record.szText, caption);
        AddItem(&record, layout);
    }
    void AddAt(const CString& caption, int x, int y) {
        QKListItem record;
        SetText(record.szText, caption);
        AddItem(&record, x, y);
    }
    void AddIn(const CRect& cell) {
        QKListItem record;
        record.rcItem = cell;
        AddItem(&record, 0);
    }
    // To look at: the list does not count it as handed out.
    const QKListItem& Look(int index) const { return *std::as_const(*this).GetItem(index); }
    void SetPace(const qkui::HeldRecords::Pace& pace) {
        qkui::ListAccess::Entries(*this).Records().SetPace(pace);
    }
    CRect Cell(int index) const { return Look(index).rcItem; }
    CRect Place() const {
        CRect rect;
        GetRect(&rect);
        return rect;
    }

    using QKListCtrl::IsItemInPos;
    using QKListCtrl::m_format;
    using QKListCtrl::m_pFont;
    using QKListCtrl::m_pFouceImage;
    using QKListCtrl::m_pMoveImage;
    using QKListCtrl::ScaleItemXY;
};

class ListDialog : public TestDialog {
  public:
    using CQKDialogBase::CaleSelItem;
    using CQKDialogBase::GetNumsSel;
    using CQKDialogBase::m_bDragOut;
    using CQKDialogBase::m_bSelRect;
    using CQKDialogBase::MoveLDBClickList;
    using CQKDialogBase::MoveLDownList;
    using CQKDialogBase::MoveLeaveList;
    using CQKDialogBase::MoveOnList;
    using CQKDialogBase::MoveRDownList;
    using CQKDialogBase::MoveUpList;
    using CQKDialogBase::OnActivate;
    using CQKDialogBase::OnLButtonDblClk;
    using CQKDialogBase::OnLButtonDown;
    using CQKDialogBase::OnLButtonUp;
    using CQKDialogBase::OnMouseMove;
    using CQKDialogBase::OnRButtonDown;
    using CQKDialogBase::OnRButtonUp;
};

inline std::ostream& operator<<(std::ostream& out, const RECT& r) {
    return out << "(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ")";
}

}  // namespace kit

inline std::ostream& operator<<(std::ostream& out, const CRect& r) {
    return kit::operator<<(out, static_cast<const RECT&>(r));
}
