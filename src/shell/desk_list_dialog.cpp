#include <qkui/shell/desk_list_dialog.h>

IMPLEMENT_DYNAMIC(CQKDialogDeskList, CQKDialogBase)

BEGIN_MESSAGE_MAP(CQKDialogDeskList, CQKDialogBase)
END_MESSAGE_MAP()

CQKDialogDeskList::CQKDialogDeskList(UINT templateId, CWnd* parent) : CQKDialogBase(templateId, parent) {}

CQKDialogDeskList::~CQKDialogDeskList() = default;

BOOL CQKDialogDeskList::OnInitDialog() {
    return CQKDialogBase::OnInitDialog();
}

void CQKDialogDeskList::DoDataExchange(CDataExchange*) {}
