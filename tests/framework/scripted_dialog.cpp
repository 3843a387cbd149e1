#include "framework/dialog_fixture.h"

IMPLEMENT_DYNAMIC(ScriptedDialog, CDialog)
BEGIN_MESSAGE_MAP(ScriptedDialog, CDialog)
ON_WM_TIMER()
ON_MESSAGE(DestroyYourself, OnDestroyYourself)
ON_MESSAGE(DeleteYourself, OnDeleteYourself)
END_MESSAGE_MAP()
