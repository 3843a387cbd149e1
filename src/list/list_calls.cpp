// The functions of the host that a list calls.
#include <utility>

#include <qkui/list/list_ctrl.h>
#include "list/list_access.h"

using namespace qkui;

namespace {

template <class... Arguments>
ListCalls::Call<Arguments...> Kept(std::function<void(Arguments...)>&& call) {
    if (!call) return nullptr;
    return std::make_shared<const std::function<void(Arguments...)>>(std::move(call));
}

// The callable, or else the record's function; empty without both.
std::function<void(QKListItem*, POINT*)> AtPoint(const ListCalls::Call<QKListItem*, CPoint>& call,
                                                 void (*function)(QKListItem*, POINT*, LPVOID),
                                                 LPVOID param) {
    if (call) return [call](QKListItem* entry, POINT* point) { (*call)(entry, *point); };
    if (!function) return nullptr;
    return [function, param](QKListItem* entry, POINT* point) { function(entry, point, param); };
}

}  // namespace

void QKListCtrl::SetClickCallBack(std::function<void(QKListItem*, CPoint)> clicked) {
    m_state->calls.click = Kept(std::move(clicked));
}

void QKListCtrl::SetDblClickCallBack(std::function<void(QKListItem*)> clicked) {
    m_state->calls.doubleClick = Kept(std::move(clicked));
}

void QKListCtrl::SetRClickCallBack(std::function<void(QKListItem*, CPoint)> clicked) {
    m_state->calls.rightClick = Kept(std::move(clicked));
}

void QKListCtrl::SetSelectionCallBack(std::function<void()> changed) {
    m_state->calls.selection = Kept(std::move(changed));
}

std::function<void(QKListItem*, POINT*)> ListAccess::ClickCall(const QKListCtrl& list) {
    return AtPoint(list.m_state->calls.click, list.m_listCallbacks.pfnClick, list.m_listCallbacks.pParam);
}

std::function<void(QKListItem*, POINT*)> ListAccess::RightClickCall(const QKListCtrl& list) {
    return AtPoint(list.m_state->calls.rightClick, list.m_listCallbacks.pfnRClick,
                   list.m_listCallbacks.pParam);
}

std::function<void(QKListItem*)> ListAccess::DoubleClickCall(const QKListCtrl& list) {
    if (const auto call = list.m_state->calls.doubleClick)
        return [call](QKListItem* entry) { (*call)(entry); };
    const auto function = list.m_listCallbacks.pfnDblClick;
    if (!function) return nullptr;
    return [function, param = list.m_listCallbacks.pParam](QKListItem* entry) { function(entry, param); };
}
