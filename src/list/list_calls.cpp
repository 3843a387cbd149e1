// The functions of the host that a list calls.
#include <qkui/list/list_calls.h>

#include <utility>

#include <qkui/list/list_ctrl.h>

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
    m_calls.click = Kept(std::move(clicked));
}

void QKListCtrl::SetDblClickCallBack(std::function<void(QKListItem*)> clicked) {
    m_calls.doubleClick = Kept(std::move(clicked));
}

void QKListCtrl::SetRClickCallBack(std::function<void(QKListItem*, CPoint)> clicked) {
    m_calls.rightClick = Kept(std::move(clicked));
}

void QKListCtrl::SetSelectionCallBack(std::function<void()> changed) {
    m_calls.selection = Kept(std::move(changed));
}

std::function<void(QKListItem*, POINT*)> QKListCtrl::ClickCall() const {
    return AtPoint(m_calls.click, m_listCallbacks.pfnClick, m_listCallbacks.pParam);
}

std::function<void(QKListItem*, POINT*)> QKListCtrl::RightClickCall() const {
    return AtPoint(m_calls.rightClick, m_listCallbacks.pfnRClick, m_listCallbacks.pParam);
}

std::function<void(QKListItem*)> QKListCtrl::DoubleClickCall() const {
    if (const auto call = m_calls.doubleClick) return [call](QKListItem* entry) { (*call)(entry); };
    const auto function = m_listCallbacks.pfnDblClick;
    if (!function) return nullptr;
    return [function, param = m_listCallbacks.pParam](QKListItem* entry) { function(entry, param); };
}
