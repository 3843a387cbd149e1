// A page of the gallery. A new page is a new file in pages/ that derives from Page and registers itself with
// a PageEntry, and its line in CMakeLists.txt.
#pragma once

#include <memory>
#include <vector>

#include "examples/gallery/dressing.h"
#include "examples/gallery/ink.h"
#include "examples/gallery/item_set.h"
#include "examples/gallery/push_button.h"

namespace gallery {

class Shell;

struct PageFacts {
    int order;         // pages stand from the lowest up
    const char* name;  // as --page takes it
    LPCWSTR tab;       // caption of its tab
    UINT tabPicture;   // resource of four frames
    LPCWSTR heading;
    LPCWSTR summary;
};

class Page {
  public:
    Page() = default;
    virtual ~Page();
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    // The page comes up: it makes its items and registers them with the shell.
    virtual void Enter(Shell& shell) = 0;
    // The page goes; its windows close, and the items of Add leave the shell.
    virtual void Leave();
    // Before each frame: the page brings its items up to date.
    virtual void Refresh();
    // Captions and samples, above the shell's frame.
    virtual void Draw(Ink& ink) = 0;
    // The pointer went down on the shell, on an item or not.
    virtual void Pressed(CPoint point);
    // The shell moved by so many pixels.
    virtual void ShellMoved(CSize by);
    // Some time after the last Shell::Remind.
    virtual void Reminded();
    // A timer of the shell's window, one that the page has set.
    virtual void Ticked(UINT_PTR timer);
    // For a picture: acts as a user would, by the headless window system's input.
    virtual void Pose();

  protected:
    // A new item, registered with the shell until Leave.
    template <class Item = PushButton>
    Item& Add(CQKDialogBase& shell) {
        return items_.Add<Item>(shell);
    }
    QKStaticText& AddLabel(CQKDialogBase& shell, TextStyle style, const CRect& place, const CString& text,
                           Align align = Align::Left);

  private:
    ItemSet items_;
};

// Put one at namespace level of a page's file:
//     const PageEntry entry(facts, [] { return std::unique_ptr<Page>(new MyPage); });
class PageEntry {
  public:
    using Maker = std::unique_ptr<Page> (*)();
    PageEntry(const PageFacts& facts, Maker make);

    const PageFacts& Facts() const { return facts_; }
    std::unique_ptr<Page> Make() const { return make_(); }

  private:
    PageFacts facts_;
    Maker make_;
};

// In their order.
std::vector<const PageEntry*> AllPages();

// The grid that pages are laid out on, in client pixels of the shell.
namespace grid {
inline constexpr int kLeft = 224;  // of what a page shows
inline constexpr int kRight = 1028;
inline constexpr int kWidth = kRight - kLeft;
inline constexpr int kTop = 188;  // below heading and summary
inline constexpr int kBottom = 672;
inline constexpr int kGap = 16;
// Where pages show live values beside their content.
inline constexpr int kPanelLeft = 812;
inline constexpr int kContentRight = 788;
inline constexpr int kContentWidth = kContentRight - kLeft;
}  // namespace grid

}  // namespace gallery
