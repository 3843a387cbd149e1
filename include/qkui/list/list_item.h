/// @file
/// The record of one entry of an icon list.
#pragma once

#include <platform/gdiplus.h>
#include <platform/geometry.h>
#include <platform/text.h>
#include <platform/types.h>

/// A plain record: the host fills one in and hands it to a list, which keeps a copy of its own. Rectangles
/// are in client pixels of the dialog. What it owns, it owns from the moment that a list adopted it.
struct QKListItem {
    static constexpr int kTextUnits = 260;  ///< of each text, with its terminator

    CRect rcText;         ///< of the caption
    CRect rcMState;       ///< takes the pointer; hover, pressed and selected frames are drawn on it
    CRect rcFState;       ///< icon and whole caption, while the entry has the focus
    int nClickSel = 1;    ///< 0: a release over the entry does not select it
    int nFocusState = 1;  ///< 0 focused, 1 not
    int nMouseState = 0;  ///< a QKItemBase::QK_STATUS
    int nSelState = 1;    ///< 0 selected, 1 not
    Gdiplus::Image* pImage = nullptr;       ///< owned: the icon
    Gdiplus::Image* pImage2 = nullptr;      ///< owned, never drawn
    Gdiplus::Image* pAlphaImage = nullptr;  ///< owned, never drawn, not adopted from the host
    HICON hIcon;                            ///< owned, never drawn
    int nID = -1;                           ///< unique in its list, given when the entry is added
    CRect rcItem;                           ///< the cell; all four -1 while the entry has no place
    WCHAR szText[kTextUnits] = {};          ///< the caption
    WCHAR szPath[kTextUnits] = {};          ///< of the file that the entry stands for
    int nUser1 = 0;                         ///< the host's own, to nUser5
    int nUser2 = 0;
    int nUser3 = 0;
    int nUser4 = 0;
    int nUser5 = 0;
    int bShowText = 1;                     ///< 0: neither caption nor focus frame is drawn
    int nAlpha = 255;                      ///< for the host
    Gdiplus::Image* pTextImage = nullptr;  ///< owned: the caption as last rendered
    WCHAR szTextCath[kTextUnits] = {};     ///< the text that it shows; emptied, it is rendered again

    /// Sets szText, cut to what it holds, and not within a character. FALSE when something was cut.
    PLATFORM_API BOOL SetText(const CString& text);
    /// Sets szPath. FALSE for a path that it has no room for: it is left empty then, since a part of a path
    /// names another file.
    PLATFORM_API BOOL SetPath(const CString& path);
};
