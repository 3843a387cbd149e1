// The gallery's window: a per-pixel dialog with tabs down its left side and the chosen page in its pane.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include <QKUILib.h>

#include "examples/gallery/page.h"

namespace gallery {

class Shell : public CQKDialogBase {
  public:
    Shell();
    ~Shell() override;

    // The window, hidden until Show. False with the last error.
    bool Open();
    void Show(CPoint place);

    std::size_t PageCount() const { return entries_.size(); }
    const PageFacts& Facts(std::size_t page) const { return entries_[page]->Facts(); }
    void Select(std::size_t page);
    Page* Current() const { return page_.get(); }

    // Runs a step when the message being handled is done: a click's callback may not change pages itself.
    void Later(std::function<void()> step);
    // Calls the page's Reminded once, a third of a second after the last of these calls.
    void Remind();
    CPoint ToScreen(CPoint client) const;

    BOOL OnInitDialog() override;
    void UpdateView() override;
    void DrawSurface(HDC dc, int width, int height, int buffer) override;

  protected:
    void OnDestroy();
    void OnMove(int x, int y);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnTimer(UINT_PTR id);
    LRESULT OnRunLater(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

  private:
    CRect PlaceOf(int control) const;
    void AddTabs();
    void LeavePage();

    std::vector<const PageEntry*> entries_;
    std::vector<std::unique_ptr<PushButton>> tabs_;
    PushButton close_;
    PushButton minimise_;
    CRect titlePlace_;
    std::unique_ptr<Page> page_;
    std::size_t current_ = 0;
    CPoint place_;
    std::deque<std::function<void()>> later_;
};

}  // namespace gallery
