// A small menu that pops up, made of the library's items on a pane of glass.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QKUILib.h>

namespace desktop {

struct MenuLine {
    CString caption;  // empty: a line that parts what is above from what is below
    std::function<void()> action;
    bool enabled = true;
};

// Takes the pointer while it is open: a press outside closes it. So do Escape, a choice, and the loss of
// pointer or activation.
class Menu : public CQKDialogBase {
  public:
    Menu();
    ~Menu() override;

    // Near a point of the screen, within its work area. What was open before is closed.
    void Open(std::vector<MenuLine> lines, CPoint at);
    void Close();
    bool IsOpen() const { return static_cast<bool>(m_hWnd); }
    // In client pixels, for who wants to press it.
    CRect PlaceOf(std::size_t line) const;

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;
    void DrawSurface(HDC dc, int width, int height, int buffer) override;

  protected:
    void OnActivate(UINT state, HWND other, BOOL minimised);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point) { OnLButtonDown(flags, point); }
    void OnRButtonDown(UINT flags, CPoint point);
    LRESULT OnChosen(WPARAM line, LPARAM);
    DECLARE_MESSAGE_MAP()

  private:
    struct Row {
        Menu* menu = nullptr;
        std::size_t line = 0;
        QKButton button;
        QKStaticText caption;
        QKImage divider;
    };
    void Lay();
    CSize Size() const;
    bool Takes(CPoint point) const;

    std::vector<MenuLine> lines_;
    std::vector<std::unique_ptr<Row>> rows_;
    std::vector<std::shared_ptr<Gdiplus::Image>> pane_;
};

}  // namespace desktop
