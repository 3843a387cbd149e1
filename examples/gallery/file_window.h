// A window with the files of one folder. They are dragged out of it, those that are selected by any of them
// and one alone by a double click that is held, and files are dropped on it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "examples/gallery/demo_window.h"

namespace gallery {

class FileWindow : public DemoWindow {
  public:
    // Files that lie somewhere in `home` are moved when they are dropped here, unless a key asks for a copy.
    // All others are copied: home goes one day, with all in it.
    FileWindow(std::filesystem::path folder, std::filesystem::path home, CSize size);
    ~FileWindow() override { End(); }

    bool OpenAt(CWnd* owner, CPoint place);
    // Shows the files that there are by now, but for those whose names are no text.
    void Follow();
    int Files() const { return static_cast<int>(names_.size()); }
    QKListCtrl& List() { return list_; }

    // `effect` is what the receiver reported; null while the drag goes on.
    std::function<void(int files, const DROPEFFECT* effect)> dragged;
    // What became of files that were dropped here.
    struct Taken {
        int moved = 0, copied = 0, failed = 0;
    };
    std::function<void(const Taken&)> dropped;

  protected:
    void OnLButtonDown(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnDropFiles(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

  private:
    void DragSelected();
    void Take(const std::filesystem::path& file, bool move, Taken& taken);
    void Fill(const std::vector<std::string>& names);

    std::filesystem::path folder_, home_;
    QKListCtrl list_;
    std::vector<std::string> names_;  // of the files, in order; more than entries, where there are many
    std::optional<CPoint> pressed_;   // on a selected entry
    bool dragging_ = false;
    std::shared_ptr<int> life_ = std::make_shared<int>();  // the window may go while it drags
};

}  // namespace gallery
