#include "examples/gallery/question.h"

#include "examples/gallery/ink.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/skin_files.h"

namespace gallery {

Question::Question(CWnd* owner, const CString& title, const CString& text)
    : CQKDialogBase(IDD_QUESTION, owner), title_(title), text_(text) {}

Question::~Question() = default;

// Where a placeholder of the template lies, in client pixels.
CRect Question::PlaceOf(int control) const {
    CRect place;
    ::GetWindowRect(GetDlgItem(control), place);
    ScreenToClient(place);
    return place;
}

BOOL Question::OnInitDialog() {
    CQKDialogBase::OnInitDialog();
    SetWindowText(title_);
    Set_OPAQUEDlg(255);
    SetBack(SkinFile("panel_alpha.png"), 0, 1);
    const auto place = [this](PushButton& button, int control, int answer) {
        button.Load(IDP_WIDE, 4);
        button.PlaceAt(PlaceOf(control).left, PlaceOf(control).top);
        button.SetMouseMoveHand(1);
        button.OnClick([this, answer] { SetDoModalOK(answer); });
        AddQKItem(&button);
    };
    place(yes_, IDC_QUESTION_YES, 1);
    place(no_, IDC_QUESTION_NO, 0);
    CenterWindow();
    UpdateView();
    return TRUE;
}

void Question::DrawSurface(HDC dc, int width, int height, int buffer) {
    CQKDialogBase::DrawSurface(dc, width, height, buffer);
    Ink ink(dc);
    ink.Label(TextStyle::Title, PlaceOf(IDC_QUESTION_TITLE), title_, Align::Left);
    ink.Text(TextStyle::Body, PlaceOf(IDC_QUESTION_TEXT), text_);
    const auto caption = [&ink](const PushButton& button, LPCWSTR text) {
        CRect place = button.Place();
        place.bottom -= 2;
        ink.Label(TextStyle::Button, place, text);
    };
    caption(yes_, u"Yes");
    caption(no_, u"No");
}

}  // namespace gallery
