// The dialog and the desktop: where its window can be put, and the desktop's icons.
#include <platform/foreign.h>

#include <qkui/dialog/dialog_base.h>

namespace {

constexpr LPCWSTR kDesktop = u"Progman";
constexpr LPCWSTR kDesktopTitle = u"Program Manager";
constexpr LPCWSTR kBehindIcons = u"WorkerW";
constexpr LPCWSTR kView = u"SHELLDLL_DefView";
constexpr LPCWSTR kIcons = u"SysListView32";
constexpr LPCWSTR kIconsTitle = u"FolderView";

HWND NextTopLevel(HWND after, LPCWSTR className, LPCWSTR title) {
    return FindWindowExW(HWND(), after, className, title);
}

// The first of its kind inside; an empty parent has none.
HWND Inside(HWND parent, LPCWSTR className, LPCWSTR title) {
    return parent ? FindWindowExW(parent, HWND(), className, title) : HWND();
}

}  // namespace

HWND CQKDialogBase::FindDeskParent() {
    const HWND desktop = FindWindowW(kDesktop, kDesktopTitle);
    if (!desktop) return HWND();
    if (const HWND view = Inside(desktop, kView, nullptr)) {
        const HWND icons = Inside(view, kIcons, kIconsTitle);
        return icons ? icons : desktop;
    }
    // Icons that moved out of the desktop's window may have any title, and without them nothing else will do.
    for (HWND worker = NextTopLevel(HWND(), kBehindIcons, nullptr); worker;
         worker = NextTopLevel(worker, kBehindIcons, nullptr)) {
        const HWND view = Inside(worker, kView, nullptr);
        if (const HWND icons = Inside(view, kIcons, nullptr)) return icons;
    }
    return HWND();
}

int CQKDialogBase::FindDeskListView(HWND& listView) {
    // Only those with an empty title; the first that holds a view decides.
    HWND view;
    for (HWND worker = NextTopLevel(HWND(), kBehindIcons, u""); !view;
         worker = NextTopLevel(worker, kBehindIcons, u"")) {
        if (!worker) return 0;
        view = Inside(worker, kView, nullptr);
    }
    listView = Inside(view, kIcons, kIconsTitle);
    return listView ? 1 : 0;
}

int CQKDialogBase::SetDesk() {
    const HWND target = FindDeskParent();
    if (!target) return 0;
    return SetParent(m_hWnd, target) ? 1 : 0;
}

void CQKDialogBase::ShowDeskList(int show) {
    HWND target = FindWindowW(kDesktop, nullptr);
    if (!target) FindDeskListView(target);
    if (target) ::ShowWindow(target, show ? SW_SHOW : SW_HIDE);
}
