#include "examples/desktop/shelf.h"

#include <algorithm>
#include <set>
#include <utility>

namespace desktop {
namespace {

// A record names its file in UTF-16, in bounded length: not every path can be said so. Others stay empty.
bool SetPath(QKListItem& record, const std::string& path) {
    const CString text = FromUtf8(path);
    return ToUtf8(text) == path && record.SetPath(text);
}

bool SameFiles(const std::vector<File>& a, const std::vector<File>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const File& one, const File& other) {
        return one.name == other.name && one.folder == other.folder;
    });
}

}  // namespace

Shelf::Shelf(std::string folder, Places places) : folder_(std::move(folder)), places_(std::move(places)) {
    thumbnails_.made = [this](const std::string& name) {
        const int index = IndexOf(name);
        if (index < 0) return;
        if (const Picture picture = thumbnails_.Find(FileOf(*Reader().GetItem(index))))
            SetPicture(index, picture);
        if (changed) changed();
    };
}

const File& Shelf::FileOf(const QKListItem& entry) const {
    return files_.at(static_cast<std::size_t>(entry.nUser1));
}

int Shelf::IndexOf(const std::string& name) const {
    const auto found = indexes_.find(name);
    if (found == indexes_.end()) return -1;
    // Entries that a drag took away leave the others at other indexes, until all is laid out anew.
    const QKListItem* entry = Reader().GetItem(found->second);
    return entry && FileOf(*entry).name == name ? found->second : -1;
}

void Shelf::PlaceIn(const CRect& area) {
    area_ = area;
    Rebuild(MarksInSight());
}

bool Shelf::Show(std::vector<File> files) {
    const bool same = trusted_ && SameFiles(files, files_);
    const Marks marks = same ? Marks() : MarksInSight();
    std::swap(files, files_);
    if (same) return UpdatePictures(files);
    Rebuild(marks);
    return true;
}

void Shelf::Distrust() {
    trusted_ = false;
    pictured_ = {0, 0};  // others have their indexes now
}

// The same files in the same order as before, some of them written anew.
bool Shelf::UpdatePictures(const std::vector<File>& before) {
    bool written = false;
    bool visible = false;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        const File& file = files_[i];
        if (before[i].modified == file.modified && before[i].type == file.type) continue;
        written = true;
        if (before[i].type == file.type) continue;
        SetPicture(IndexOf(file.name), icons_.Of(file));
        visible = true;
    }
    if (written) WantThumbnails();
    return visible;
}

void Shelf::Arrange() {
    places_.Clear();
    Rebuild(MarksInSight());
}

// Only there can the user have made any lately; to read all entries of a long list is to measure all
// captions.
Shelf::Marks Shelf::MarksInSight() const {
    Marks marks;
    const auto [first, end] = InSight();
    for (int i = first; i < end; ++i) {
        const QKListItem& entry = *Reader().GetItem(i);
        if (entry.nSelState == 0) marks.selected.push_back(FileOf(entry).name);
        if (entry.nFocusState == 0) marks.focused = FileOf(entry).name;
    }
    return marks;
}

void Shelf::Rebuild(const Marks& marks) {
    list_.RemoveAll();
    indexes_.clear();
    pathless_.clear();
    pictured_ = {0, 0};
    trusted_ = true;
    list_.SetArrange(1);
    list_.PlaceIn(area_);
    scrolls_ = files_.size() > static_cast<std::size_t>(list_.Capacity());
    if (scrolls_)
        AddSorted();
    else
        AddPlaced();
    for (const std::string& name : marks.selected)
        list_.SetSel(IndexOf(name), 1);
    if (QKListItem* entry = list_.GetItem(IndexOf(marks.focused))) entry->nFocusState = 0;
    WantThumbnails();
}

void Shelf::Add(std::size_t index, const std::optional<Cell>& cell) {
    const File& file = files_[index];
    QKListItem record;
    record.nUser1 = static_cast<int>(index);
    record.SetText(file.caption);
    if (!SetPath(record, PathOf(folder_, file.name))) pathless_.push_back(list_.GetCount());
    if (const Picture& icon = icons_.Of(file)) record.pImage = icon->Clone();
    indexes_[file.name] = list_.GetCount();
    if (scrolls_) {
        list_.AddItem(&record, 0);  // placed with all others, when the last is there
    } else if (cell) {
        const CPoint corner = list_.CornerOf(*cell);
        list_.AddItem(&record, corner.x, corner.y);
    } else {
        list_.AddItem(&record, 1);
    }
}

void Shelf::AddSorted() {
    list_.SetArrange(0);
    for (std::size_t i = 0; i < files_.size(); ++i)
        Add(i, std::nullopt);
    list_.PlaceIn(area_);
}

// Those with a place of their own first: the others fill what is free.
void Shelf::AddPlaced() {
    const auto placeOf = [this](const File& file) {
        std::optional<Cell> cell = places_.Find(file.name);
        if (cell && (cell->column >= list_.Columns() || cell->row >= list_.Rows())) cell.reset();
        return cell;
    };
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (const std::optional<Cell> cell = placeOf(files_[i]))
            Add(i, cell);
        else
            others.push_back(i);
    }
    for (const std::size_t i : others)
        Add(i, std::nullopt);
    // What is in its place now stays there when others come and go. A place outside of a screen that is small
    // today is not forgotten.
    std::vector<std::string> names;
    for (int i = 0; i < list_.GetCount(); ++i) {
        const QKListItem& entry = *Reader().GetItem(i);
        names.push_back(FileOf(entry).name);
        if (!places_.Find(names.back())) places_.Set(names.back(), list_.CellOf(entry));
    }
    places_.Prune(names);
}

std::vector<QKListItem*> Shelf::Selected() {
    std::vector<QKListItem*> selected;
    const auto [first, end] = InSight();
    for (int i = first; i < end; ++i) {
        if (Reader().GetItem(i)->nSelState == 0) selected.push_back(list_.GetItem(i));
    }
    return selected;
}

void Shelf::SelectDraggable() {
    for (const int index : pathless_)
        list_.SetSel(index, 0);
}

void Shelf::Settle(const std::vector<QKListItem*>& moved) {
    std::set<Cell> taken;
    for (int i = 0; i < list_.GetCount(); ++i) {
        const QKListItem* entry = Reader().GetItem(i);
        if (std::find(moved.begin(), moved.end(), entry) == moved.end()) taken.insert(list_.CellOf(*entry));
    }
    for (QKListItem* entry : moved) {
        const Cell wanted = list_.NearestTo(entry->rcItem.TopLeft());
        const Cell cell = NearestFree(wanted, {list_.Columns(), list_.Rows()}, taken).value_or(wanted);
        taken.insert(cell);
        const CPoint corner = list_.CornerOf(cell);
        IconList::Shift(*entry, CSize(corner.x - entry->rcItem.left, corner.y - entry->rcItem.top));
        places_.Set(FileOf(*entry).name, cell);
    }
}

int Shelf::ContentHeight() const {
    const int rows = (list_.GetCount() + list_.Columns() - 1) / list_.Columns();
    return rows * list_.Pitch().cy;
}

void Shelf::ScrollTo(int offset) {
    CRect area = area_;
    area.OffsetRect(0, -offset);
    list_.PlaceIn(area);
}

// The first entry, and the one behind the last: those on the screen, and as many on either side.
std::pair<int, int> Shelf::InSight() const {
    if (!scrolls_) return {0, list_.GetCount()};
    CRect list;
    list_.GetRect(&list);
    const int row = (area_.top - list.top) / list_.Pitch().cy;
    const int rows = list_.Rows() + 1;
    return {std::max(0, (row - rows) * list_.Columns()),
            std::min(list_.GetCount(), (row + 2 * rows) * list_.Columns())};
}

void Shelf::WantThumbnails() {
    const auto sight = InSight();
    for (int i = pictured_.first; i < pictured_.second; ++i) {
        if (i >= sight.first && i < sight.second) continue;
        const File& file = FileOf(*Reader().GetItem(i));
        if (Thumbnails::MayHave(file)) SetPicture(i, icons_.Of(file));
    }
    std::vector<Thumbnails::Wish> wishes;
    for (int i = sight.first; i < sight.second; ++i) {
        const File& file = FileOf(*Reader().GetItem(i));
        if (!Thumbnails::MayHave(file)) continue;
        if (const Picture picture = thumbnails_.Find(file))
            SetPicture(i, picture);
        else
            wishes.push_back({PathOf(folder_, file.name), file});
    }
    pictured_ = sight;
    thumbnails_.Want(std::move(wishes));
}

void Shelf::SetPicture(int index, const Picture& picture) {
    QKListItem* entry = list_.GetItem(index);
    if (!entry || !picture) return;
    delete std::exchange(entry->pImage, picture->Clone());
}

}  // namespace desktop
