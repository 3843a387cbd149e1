/// @file
/// Device contexts as objects. Each is usable wherever an HDC is.
#pragma once

#include <platform/gdi.h>
#include <platform/geometry.h>
#include <platform/text.h>
#include <platform/window.h>

class CWnd;

/// A context that somebody else made: the object frees nothing but what CreateCompatibleDC gave it.
class PLATFORM_API CDC {
  public:
    CDC() = default;
    explicit CDC(HDC context) : m_hDC(context) {}
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    HDC m_hDC;

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }  ///< NOLINT

    BOOL CreateCompatibleDC(CDC* like);
    BOOL DeleteDC();
    HBITMAP SelectObject(HBITMAP bitmap) { return ::SelectObject(m_hDC, bitmap); }
    HFONT SelectObject(HFONT font) { return ::SelectObject(m_hDC, font); }

    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD operation) {
        return ::BitBlt(m_hDC, x, y, width, height, source ? source->m_hDC : HDC(), sourceX, sourceY,
                        operation);
    }
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                    int sourceWidth, int sourceHeight, DWORD operation) {
        return ::StretchBlt(m_hDC, x, y, width, height, source ? source->m_hDC : HDC(), sourceX, sourceY,
                            sourceWidth, sourceHeight, operation);
    }
    void FillRect(const RECT* rect, HBRUSH brush) { ::FillRect(m_hDC, rect, brush); }
    void FillSolidRect(const RECT* rect, COLORREF colour);
    void FillSolidRect(int x, int y, int width, int height, COLORREF colour) {
        FillSolidRect(CRect(CPoint(x, y), CSize(width, height)), colour);
    }
    int GetClipBox(RECT* box) const { return ::GetClipBox(m_hDC, box); }
    int IntersectClipRect(const RECT* rect) {
        return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }

    COLORREF SetTextColor(COLORREF colour) { return ::SetTextColor(m_hDC, colour); }
    COLORREF SetBkColor(COLORREF colour) { return ::SetBkColor(m_hDC, colour); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    int DrawText(const CString& text, RECT* rect, UINT format) {
        return ::DrawTextW(m_hDC, text, text.GetLength(), rect, format);
    }
    int DrawText(LPCWSTR text, int length, RECT* rect, UINT format) {
        return ::DrawTextW(m_hDC, text, length, rect, format);
    }
    BOOL TextOut(int x, int y, const CString& text) {
        return ::TextOutW(m_hDC, x, y, text, text.GetLength());
    }
    CSize GetTextExtent(const CString& text) const;

  private:
    bool made_ = false;
};

/// BeginPaint and EndPaint around the life of the object: for OnPaint.
class PLATFORM_API CPaintDC : public CDC {
  public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;

  private:
    HWND window_;
};

/// A context on the whole window, for the life of the object; null: on the screen, where nothing can be
/// drawn.
class PLATFORM_API CClientDC : public CDC {
  public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

  private:
    HWND window_;
};
using CWindowDC = CClientDC;  ///< a window has no frame of its own
