// What lies on the desktop: the entries of the list, in line with the files of the folder.
//
// A folder that fits on the screen shows its icons where the user put them. One that does not is shown in the
// order of its names and scrolls; the places wait until it fits again.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "examples/desktop/file.h"
#include "examples/desktop/icon_list.h"
#include "examples/desktop/icons.h"
#include "examples/desktop/places.h"
#include "examples/desktop/thumbnails.h"

namespace desktop {

class Shelf {
  public:
    Shelf(std::string folder, Places places);

    // Called after changes that come by themselves.
    std::function<void()> changed;

    IconList& List() { return list_; }
    // Register the list with its dialog before this.
    void PlaceIn(const CRect& area);
    // True when something looks different now.
    bool Show(std::vector<File> files);
    void Arrange();  // by name; forgets the places
    // The next Show lays everything out, whether files changed or not: entries are missing from the list.
    void Distrust();

    const std::vector<File>& Files() const { return files_; }
    // The file of an entry. Valid until files change.
    const File& FileOf(const QKListItem& entry) const;
    // Of those in sight.
    std::vector<QKListItem*> Selected();
    // Takes out of the selection what no path of an entry can name, so that a drag leaves it alone.
    void SelectDraggable();

    // Puts entries that were moved into the free cells nearest to where they are.
    void Settle(const std::vector<QKListItem*>& moved);
    void Rename(const std::string& from, const std::string& to) { places_.Rename(from, to); }
    bool SavePlaces() { return places_.Save(); }

    // Beyond the screen. `offset` counts from 0, in pixels.
    bool Scrolls() const { return scrolls_; }
    int ContentHeight() const;
    void ScrollTo(int offset);

    // Asks for the pictures of what can be seen, and lets go of those that cannot.
    void WantThumbnails();
    bool IsBusy() const { return thumbnails_.IsBusy(); }

  private:
    // What the user marked, by the names of the files.
    struct Marks {
        std::vector<std::string> selected;
        std::string focused;
    };
    Marks MarksInSight() const;
    void Rebuild(const Marks& marks);
    void Add(std::size_t file, const std::optional<Cell>& cell);
    void AddPlaced();
    void AddSorted();
    void SetPicture(int index, const Picture& picture);
    bool UpdatePictures(const std::vector<File>& before);
    std::pair<int, int> InSight() const;
    int IndexOf(const std::string& name) const;
    // For reading entries: those that a list hands out for writing are looked at again with every question.
    const IconList& Reader() const { return list_; }

    std::string folder_;
    Places places_;
    Icons icons_;
    Thumbnails thumbnails_;
    IconList list_;
    CRect area_;
    std::vector<File> files_;
    std::unordered_map<std::string, int> indexes_;  // of entries, by the names of their files
    std::vector<int> pathless_;                     // entries that no path leads to
    std::pair<int, int> pictured_;                  // entries whose own pictures may show
    bool scrolls_ = false;
    bool trusted_ = true;
};

}  // namespace desktop
