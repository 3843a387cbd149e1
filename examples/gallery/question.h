// A modal question on glass. Its template says where everything lies.
#pragma once

#include <QKUILib.h>

#include "examples/gallery/push_button.h"

namespace gallery {

class Question : public CQKDialogBase {
  public:
    // DoModal answers IDOK for yes; IDCANCEL for no and for a window that was closed.
    Question(CWnd* owner, const CString& title, const CString& text);
    ~Question() override;

    BOOL OnInitDialog() override;
    void DrawSurface(HDC dc, int width, int height, int buffer) override;

  private:
    CRect PlaceOf(int control) const;

    CString title_;
    CString text_;
    PushButton yes_;
    PushButton no_;
};

}  // namespace gallery
