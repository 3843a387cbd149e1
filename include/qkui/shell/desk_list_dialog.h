/// @file
/// The dialog that is meant to lie on the desktop.
#pragma once

#include <qkui/dialog/dialog_base.h>

/// Behaves as its base does; SetDesk puts it into the desktop.
class PLATFORM_API CQKDialogDeskList : public CQKDialogBase {
    DECLARE_DYNAMIC(CQKDialogDeskList)
  public:
    explicit CQKDialogDeskList(UINT templateId, CWnd* parent = nullptr);
    ~CQKDialogDeskList() override;

    BOOL OnInitDialog() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    DECLARE_MESSAGE_MAP()
};
