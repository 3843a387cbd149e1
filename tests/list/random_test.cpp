// Long random lives of a list, beside a plain model of it that walks its entries from the first to the last
// for every question. Both must agree about everything after every step.
#include <cmath>
#include <deque>
#include <limits>
#include <map>
#include <random>

#include "list/list_entries.h"
#include "list/list_kit.h"

namespace {

using kit::ListDialog;
using kit::TestList;

CRect NoPlace() {
    return {-1, -1, -1, -1};
}

constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();

// Whole numbers that end at the ends of an int.
int Cut(double value) {
    return value >= kHigh ? kHigh : value <= kLow ? kLow : static_cast<int>(value);
}
template <class... Ints>
int Sum(Ints... values) {
    return Cut((static_cast<double>(values) + ...));
}
bool Fits(double value) {
    return Cut(value) == value;
}

bool Meet(const CRect& a, const CRect& b) {
    return !a.IsRectEmpty() && !b.IsRectEmpty() && a.left < b.right && b.left < a.right && a.top < b.bottom &&
           b.top < a.bottom;
}

struct Plain {
    int serial;
    std::u16string text;
    CRect item, caption, hit, focusRect;
    int clickSel = 1, focus = 1, mouse = 0, unselected = 1, id = -1;
    bool captionEmpty = true;
};

// The list as a record of settings and a walk.
class Model {
  public:
    explicit Model(const TestList& list) : list_(list) {}

    std::vector<Plain*> entries;  // some stand in two places
    std::vector<int> selection;   // serials
    CRect place;
    int type = 2, itemWidth = -1, itemHeight = 20, imageWidth = 18, imageHeight = 18, gapX = -1, gapY = 3;
    int arrange = 0;
    bool desktop = false, hasParent = true;

    int NextId() const {
        int most = -1;
        for (const Plain* e : entries)
            most = std::max(most, e->id);
        return most + 1;
    }
    bool Occupied(int x, int y) const {
        return std::any_of(entries.begin(), entries.end(), [&](const Plain* e) {
            return e->item.PtInRect(POINT{x, y});
        });
    }

    void Measure(Plain& e) const {
        if (!hasParent) return;
        Gdiplus::StringFormat format(&list_.m_format);
        format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
        const auto box = [&](float width, float height) {
            return Gdiplus::GetTextExtent(e.text.empty() ? u"0" : e.text.c_str(), -1, list_.m_pFont.get(),
                                          {0, 0, width, height}, &format)
                .box;
        };
        const auto width = static_cast<float>(e.caption.Width());
        const auto height = static_cast<float>(e.caption.Height());
        const Gdiplus::RectF trimmed = box(width, height), whole = box(width, type == 2 ? height : 400);
        if (type == 2) {
            const auto row = [&](float right) {
                CRect rect(e.item.left, e.item.top, Cut(right), Sum(e.item.bottom, 3));
                if (rect.Width() < 80) rect.right = Sum(rect.left, 80);
                return rect;
            };
            e.hit = row(static_cast<float>(Sum(imageWidth, 5, e.item.left)) + trimmed.Width + 5);
            e.focusRect = row(static_cast<float>(Sum(imageWidth, 10, e.item.left)) + whole.Width);
        } else {
            const auto top = static_cast<float>(e.caption.top);
            e.hit = CRect(e.item.left, e.item.top, e.item.right, Cut(top + trimmed.Height + 3));
            e.focusRect = CRect(e.item.left, e.item.top, e.item.right, Cut(top + whole.Height + 3));
        }
    }

    bool Put(Plain& e, double x, double y) {
        const bool rows = type == 2;
        const int width = rows ? place.Width() : itemWidth;
        if (!Fits(x) || !Fits(y) || !Fits(x + width) || !Fits(y + itemHeight)) return false;
        e.item = CRect(CPoint(Cut(x), Cut(y)), CSize(width, itemHeight));
        if (rows) {
            e.caption = CRect(Sum(x, 5, imageWidth), Sum(y, 4), Sum(e.item.right, -5.0, -1.0 * imageWidth),
                              e.item.bottom);
            e.captionEmpty = true;
        } else {
            PutCaptionInGrid(e);
        }
        Measure(e);
        Grow(e);
        return true;
    }
    bool PutInGrid(Plain& e, double x, double y) {
        if (!Fits(x) || !Fits(y) || !Fits(x + itemWidth) || !Fits(y + itemHeight)) return false;
        e.item = CRect(CPoint(Cut(x), Cut(y)), CSize(itemWidth, itemHeight));
        PutCaptionInGrid(e);
        Measure(e);
        Grow(e);
        return true;
    }
    void PutCaptionInGrid(Plain& e) const {
        e.caption = CRect(e.item.left, Sum(e.item.top, imageHeight, 3, 5), e.item.right, e.item.bottom);
    }
    void Grow(const Plain& e) {
        place.bottom = std::max(place.bottom, e.item.bottom);
        place.right = std::max(place.right, e.item.right);
        place = CRect(place.TopLeft(), place.Size());  // a list has a width and a height
    }

    // The next cell of a grid; false where there is none.
    struct Walk {
        double x, y, along = 0;
        double left, top, step, across, length, size;
        bool columns;

        bool Next() {
            double& on = columns ? y : x;
            double& over = columns ? x : y;
            if (along + step > length - size) {
                on = columns ? top : left;
                over += across;
                along = 0;
                if (across == 0) return false;  // the same cells again
            } else {
                on += step;
                along += step;
                if (step == 0) return false;
            }
            return !(along > length) && Fits(x) && Fits(y);
        }
    };
    Walk Start(bool columns) const {
        const int stepX = Sum(gapX, itemWidth), stepY = Sum(gapY, itemHeight);
        Walk walk{};
        walk.x = walk.left = place.left;
        walk.y = walk.top = place.top;
        walk.step = columns ? stepY : stepX;
        walk.across = columns ? stepX : stepY;
        walk.length = columns ? place.Height() : place.Width();
        walk.size = columns ? itemHeight : itemWidth;
        walk.columns = columns;
        return walk;
    }

    void PlaceFirstFree(Plain& e) {
        Walk walk = Start(arrange == 0);
        if (type == 2) {
            walk.columns = true;
            walk.step = Sum(gapY, itemHeight);
            walk.length = std::numeric_limits<double>::infinity();
        } else if (walk.length < walk.step) {
            return;
        }
        while (Occupied(Cut(walk.x), Cut(walk.y)))
            if (!walk.Next()) return;
        Put(e, walk.x, walk.y);
    }

    void PlaceAtPoint(Plain& e, int px, int py) {
        Walk walk = Start(true);
        if (!desktop || walk.length < walk.step) return;
        bool reached = py + walk.step >= place.bottom;
        const bool ends =
            walk.step > 0 ? (std::floor(walk.length / walk.step) + 1) * walk.step <= walk.length - walk.size
                          : walk.step > walk.length - walk.size && walk.length < 0;
        const bool within = walk.step > 0 && walk.across > 0 && px >= place.left && py >= place.top;
        if (!within && !ends) reached = true;  // as no cell is under it, and there is always another one
        for (;;) {
            if (within && px >= walk.x && px < walk.x + walk.across && py >= walk.y &&
                py < walk.y + walk.step)
                reached = true;
            if (reached && !Occupied(Cut(walk.x), Cut(walk.y))) break;
            if (!walk.Next()) return;
            if (!reached && walk.x > px) {
                walk = Start(true);
                reached = true;
            }
        }
        PutInGrid(e, walk.x, walk.y);
    }

    void LayOut() {
        for (Plain* e : entries)
            e->item = e->caption = e->hit = e->focusRect = NoPlace();
        for (Plain* e : entries)
            PlaceFirstFree(*e);
    }
    void Heights() {
        for (Plain* e : entries) {
            e->item.bottom = Sum(e->item.top, itemHeight);
            e->caption.top = Sum(e->item.top, imageHeight, 3, 5);
            e->caption.bottom = e->item.bottom;
            Measure(*e);
        }
    }

    void Select(Plain& e, bool select) {
        e.unselected = select ? 0 : 1;
        const auto found = std::find(selection.begin(), selection.end(), e.serial);
        if (select && found == selection.end()) selection.push_back(e.serial);
        if (!select && found != selection.end()) selection.erase(found);
    }
    void UnselectAll() {
        for (Plain* e : entries)
            Select(*e, false);
    }
    void Focus(Plain& e, int focus) {
        e.focus = focus;
        e.captionEmpty = true;
    }
    template <class Test>
    Plain* First(Test test) {
        for (Plain* e : entries)
            if (test(*e)) return e;
        return nullptr;
    }
    void Press(Plain& e) {
        e.mouse = 2;
        if (e.focus != 0) Focus(e, 0);
    }

    void Move(CPoint point) {
        int hot = -1;
        for (Plain* at : entries) {
            Plain& e = *at;
            if (!e.hit.PtInRect(point)) continue;
            hot = e.id;
            if (e.mouse == 1) continue;
            e.mouse = 1;
            break;
        }
        if (Plain* left = First([&](const Plain& e) { return e.mouse != 0 && e.id != hot; })) left->mouse = 0;
    }
    void Down(CPoint point) {
        int hot = -1;
        for (Plain* at : entries) {
            Plain& e = *at;
            if (!e.hit.PtInRect(point)) continue;
            hot = e.id;
            if (e.mouse == 2) continue;
            Press(e);
            if (e.unselected != 0) {
                UnselectAll();
                Select(e, true);
            }
            break;
        }
        if (Plain* before = First([&](const Plain& e) { return e.focus != 1 && e.id != hot; }))
            Focus(*before, 1);
    }
    void Up(CPoint point) {
        int hot = -1;
        for (Plain* at : entries) {
            Plain& e = *at;
            if (!e.hit.PtInRect(point)) continue;
            hot = e.id;
            bool changed = e.mouse != 1;
            e.mouse = 1;
            if (e.clickSel) {
                UnselectAll();
                Select(e, true);
                changed = true;
            }
            if (changed) break;
        }
        if (Plain* left = First([&](const Plain& e) { return e.mouse != 0 && e.id != hot; })) left->mouse = 0;
    }
    void Double(CPoint point) {
        if (Plain* e = First([&](const Plain& at) { return at.hit.PtInRect(point) && at.mouse != 2; })) {
            Press(*e);
            if (e->unselected != 0) {
                UnselectAll();
                Select(*e, true);
            }
        }
        if (Plain* focused = First([](const Plain& e) { return e.focus != 1; })) Focus(*focused, 1);
    }
    void RightDown(CPoint point) {
        int hot = -1;
        for (Plain* at : entries) {
            Plain& e = *at;
            if (!e.hit.PtInRect(point)) continue;
            hot = e.id;
            if (e.mouse == 2) continue;
            Press(e);
            break;
        }
        if (Plain* before = First([&](const Plain& e) { return e.focus != 1 && e.id != hot; }))
            Focus(*before, 1);
    }
    void Band(const CRect& band) {
        for (Plain* e : entries)
            Select(*e, Meet(band, e->hit));
    }

  private:
    const TestList& list_;
};

class Life {
  public:
    // `isMany`: as if there were many entries and the host had got them all.
    Life(unsigned seed, bool isMany) : random_(seed), isMany_(isMany), model_(list_) {
        if (isMany) list_.m_lstItems->SetPace({4, 3, 2});
        dialog_.Create(kit::kDialogTemplate);
        dialog_.SetNoMove(1);
        dialog_.AddQKItem(&list_);
        CRect place(0, 0, 300, 250);
        list_.SetRect(&place);
        model_.place = place;
    }

    void Step() {
        got_ = 0;
        switch (Roll(22)) {
            case 0:
            case 1:
                return Add();
            case 2:
                return Insert();
            case 3:
                return Remove();
            case 4:
                return Swap();
            case 5:
                return Place();
            case 6:
                return Settings();
            case 7:
            case 8:
                return HostChanges();
            case 9:
                return Select();
            case 10:
                return Band();
            case 11:
                return Restyle();
            case 12:
                return Read();
            case 13:
                return SetItem();
            case 14:
                return Extremes();
            default:
                return Pointer();
        }
    }

    // Everything that can be asked, asked of both.
    void Compare() {
        ASSERT_EQ(list_.GetCount(), Count());
        ASSERT_EQ(list_.Place(), model_.place);
        ASSERT_EQ(list_.ComputerID(), model_.NextId());
        int selected = 0, bottom = 0, right = 0;
        for (int i = 0; i < Count(); ++i) {
            SCOPED_TRACE("entry " + std::to_string(i));
            const Plain& plain = *model_.entries[static_cast<std::size_t>(i)];
            // What the host holds is true without asking; some entries are hardly ever asked for.
            // Where there are many, it is true when it was just got.
            if (const auto held = held_.find(plain.serial); held != held_.end())
                Same(isMany_ && plain.serial != got_ ? list_.Look(i) : *held->second, plain);
            if (const auto seen = seen_.find(plain.serial); seen != seen_.end() && !isMany_)
                Same(*seen->second, plain);
            if (plain.serial % 2 || !Roll(60)) Same(*(seen_[plain.serial] = &list_.Look(i)), plain);
            selected += plain.unselected == 0;
            bottom = std::max(bottom, plain.item.bottom);
            right = std::max(right, plain.item.right);
        }
        ASSERT_EQ(dialog_.GetNumsSel(), selected);
        ASSERT_EQ(list_.GetListMaxHeight(), Sum(bottom, -1.0 * model_.place.top));
        ASSERT_EQ(list_.GetListMaxWidth(), Sum(right, -1.0 * model_.place.left));
        const CPoint point(Roll(400) - 50, Roll(400) - 50);
        ASSERT_EQ(list_.IsItemInPos(point) != 0, model_.Occupied(point.x, point.y));
        if (Roll(4)) return;  // what it finds, it hands out
        const CRect area(point, CSize(Roll(60), Roll(60)));
        int first = -1;
        for (int i = Count() - 1; i >= 0; --i)
            if (Meet(area, model_.entries[static_cast<std::size_t>(i)]->item)) first = i;
        QKListItem* out = nullptr;
        ASSERT_EQ(list_.GetItemFromRect(&area, out), first);
    }

  private:
    void Same(const QKListItem& entry, const Plain& plain) {
        EXPECT_EQ(entry.nUser1, plain.serial);
        EXPECT_EQ(entry.nID, plain.id);
        EXPECT_EQ(entry.rcItem, plain.item);
        EXPECT_EQ(entry.rcText, plain.caption);
        EXPECT_EQ(entry.rcMState, plain.hit);
        EXPECT_EQ(entry.rcFState, plain.focusRect);
        EXPECT_EQ(entry.nMouseState, plain.mouse);
        EXPECT_EQ(entry.nFocusState, plain.focus);
        EXPECT_EQ(entry.nSelState, plain.unselected);
        EXPECT_EQ(entry.szTextCath[0] == 0, plain.captionEmpty);
        const auto& order = model_.selection;
        EXPECT_EQ(list_.ItemInSelect(const_cast<QKListItem*>(&entry)),
                  std::find(order.begin(), order.end(), plain.serial) != order.end());
    }
    int Roll(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    int Count() const { return static_cast<int>(model_.entries.size()); }
    Plain& Any(int& index) {
        index = Roll(Count());
        return *model_.entries[static_cast<std::size_t>(index)];
    }
    int First(const Plain& plain) const {
        return static_cast<int>(std::find(model_.entries.begin(), model_.entries.end(), &plain) -
                                model_.entries.begin());
    }
    std::u16string Words() {
        return std::u16string(u"江 a caption of some words or more", static_cast<std::size_t>(Roll(34)));
    }

    QKListItem Record(Plain& plain) {
        plain.serial = ++serial_;
        plain.text = Words();
        plain.id = model_.NextId();
        QKListItem record;
        record.nUser1 = plain.serial;
        if (Roll(3) == 0) record.rcItem = CRect(CPoint(Roll(300), Roll(250)), CSize(Roll(120), Roll(120)));
        if (Roll(20) == 0) record.rcItem = CRect(kHigh - Roll(9), 0, kHigh, Roll(9));
        if (Roll(20) == 0) record.rcItem = CRect(list_.Place().TopLeft(), CSize(0, 0));
        plain.item = record.rcItem;
        kit::SetText(record.szText, CString(plain.text.c_str()));
        return record;
    }
    void Add() {
        if (Count() > 60) return Remove();
        Plain& plain = records_.emplace_back();
        QKListItem record = Record(plain);
        if (Roll(3) == 0) {
            const CPoint point(Roll(400) - 40, Roll(350) - 40);
            list_.AddItem(&record, point.x, point.y);
            model_.PlaceAtPoint(plain, point.x, point.y);
        } else {
            const int layout = Roll(4);
            list_.AddItem(&record, layout);
            if (layout) model_.PlaceFirstFree(plain);
        }
        model_.entries.push_back(&plain);
    }
    void Insert() {
        Plain& plain = records_.emplace_back();
        QKListItem record = Record(plain);
        const int index = Roll(Count() + 3) - 1;
        list_.InsertItem(&record, index);
        model_.entries.insert(
            index < 0 || index >= Count() ? model_.entries.end() : model_.entries.begin() + index, &plain);
        model_.LayOut();
    }
    void Remove() {
        if (Count() == 0) return;
        int index = 0;
        Plain& plain = Any(index);
        model_.Select(plain, false);
        Drop(plain);
        EXPECT_EQ(list_.RemoveAt(list_.GetItem(index), 1), 1);
        std::erase(model_.entries, &plain);
    }
    void Drop(const Plain& plain) {
        held_.erase(plain.serial);
        seen_.erase(plain.serial);
    }
    // A record that stands in one place stands in two afterwards, and the one before may be gone.
    void SetItem() {
        if (Count() == 0) return;
        int from = 0, to = 0;
        Plain& plain = Any(from);
        Plain& before = Any(to);
        if (std::count(model_.entries.begin(), model_.entries.end(), &plain) > 1) return;
        QKListItem* const replaced = list_.GetItem(to);
        list_.SetSel(replaced, 0);
        model_.Select(before, false);
        list_.SetItem(to, list_.GetItem(from));
        model_.entries[static_cast<std::size_t>(to)] = &plain;
        if (First(before) < Count()) return;
        Drop(before);
        delete replaced;
    }
    // What a derived list does to its protected fields.
    void Restyle() {
        switch (Roll(5)) {
            case 4:
                model_.hasParent = Roll(3) != 0;
                return list_.SetParent(model_.hasParent ? dialog_.m_hWnd : HWND());
            case 0:
                list_.m_pFont.reset();
                [[fallthrough]];
            case 1:
                if (Roll(4) == 0) return;
                list_.m_pFont.reset(new Gdiplus::Font(u"DejaVu Sans", static_cast<float>(8 + 3 * Roll(3)),
                                                      Gdiplus::FontStyleBold));
                return;
            case 2:
                list_.m_format.SetFormatFlags(Roll(8) << 12 | Roll(2));
                return;
            default:
                list_.m_format.SetAlignment(static_cast<Gdiplus::StringAlignment>(Roll(3)));
                list_.m_format.SetLineAlignment(static_cast<Gdiplus::StringAlignment>(Roll(3)));
        }
    }
    void Read() {
        if (Count() == 0) return;
        int index = 0;
        const Plain& plain = Any(index);
        if (Roll(4))
            seen_[plain.serial] = &list_.Look(index);
        else
            held_[plain.serial] = list_.GetItem(index);
    }
    // Settings at and beyond the ends, for a while.
    void Extremes() {
        const int sizes[] = {kLow, -100, -1, 0, 1, 20, 1 << 30, kHigh};
        const auto any = [&] { return sizes[Roll(8)]; };
        const CRect place = model_.place;
        SetModel(model_.type, any(), any(), any(), any(), any(), any());
        ApplyModel();
        if (Roll(2))
            model_.place = CRect(CPoint(Roll(200) - 100, Roll(3) ? 0 : kHigh - 5), CSize(any(), any()));
        const CRect given = model_.place;
        model_.place = CRect(given.TopLeft(), given.Size());
        model_.LayOut();
        list_.SetRect(&given);
        if (Roll(2)) {
            list_.ReSetPos(0);
            model_.Heights();
        }
        Compare();
        SetModel(model_.type, 40, 50, 16, 16, 3, 3);
        ApplyModel();
        model_.place = place;
        model_.LayOut();
        list_.SetRect(&place);
    }
    void Swap() {
        if (Count() < 2) return;
        int a = 0, b = 0;
        const Plain &one = Any(a), &other = Any(b);
        list_.ChangeItemPos(list_.GetItem(a), list_.GetItem(b));
        std::swap(model_.entries[static_cast<std::size_t>(First(one))],
                  model_.entries[static_cast<std::size_t>(First(other))]);
    }
    void Place() {
        switch (Roll(4)) {
            case 0:
                list_.ReSetPos(0);
                return model_.Heights();
            case 1:
                list_.ReSetPos(1);
                return model_.LayOut();
            default: {
                const CSize size = Roll(3) ? given_ : given_ = CSize(60 + Roll(400), 60 + Roll(300));
                CRect place(CPoint(Roll(200) - 100, Roll(200) - 100), size);
                model_.place = place;
                if (Roll(2))
                    list_.SetRect(&place);
                else
                    list_.SetRect(static_cast<const CRect*>(&place));
                return model_.LayOut();
            }
        }
    }
    void Settings() {
        const int type = Roll(4);
        switch (Roll(4)) {
            case 0: {
                const int columnsFirst = Roll(2);
                list_.SetArrange(columnsFirst);
                model_.arrange = !columnsFirst;
                return;
            }
            case 1:
                model_.desktop = Roll(2) != 0;
                return list_.SetListMode(model_.desktop ? QKLIST_DESKTOP : QKLIST_NORMAL);
            case 2:
                SetModel(Roll(3), 30 + Roll(60), 40 + Roll(60), 16 + Roll(20), 16 + Roll(20), Roll(12) - 4,
                         Roll(12) - 4);
                if (Roll(6) == 0) model_.itemWidth = -1 - Roll(2), model_.gapX = 20 + Roll(9);
                if (Roll(6) == 0) model_.itemHeight = -1 - Roll(2), model_.gapY = 20 + Roll(9);
                return ApplyModel();
            default:
                if (type == 0) SetModel(0, 75, 90, 48, 48, 2, 10);
                if (type == 1) SetModel(1, 75, 74, 32, 32, 0, 8);
                if (type > 1) SetModel(2, -1, 20, 18, 18, -1, 3);
                list_.SetListType(static_cast<QKListType>(model_.type));
                return model_.LayOut();
        }
    }
    void ApplyModel() {
        list_.SetListType(static_cast<QKListType>(model_.type), model_.itemWidth, model_.itemHeight,
                          model_.imageWidth, model_.imageHeight, model_.gapX, model_.gapY);
    }
    void SetModel(int type, int itemWidth, int itemHeight, int imageWidth, int imageHeight, int gapX,
                  int gapY) {
        model_.type = type;
        model_.itemWidth = itemWidth;
        model_.itemHeight = itemHeight;
        model_.imageWidth = imageWidth;
        model_.imageHeight = imageHeight;
        model_.gapX = gapX;
        model_.gapY = gapY;
    }
    // Through a pointer got now, or long ago.
    void HostChanges() {
        if (Count() == 0) return;
        int index = 0;
        Plain& plain = Any(index);
        QKListItem*& held = held_[plain.serial];
        if (!held) held = list_.GetItem(index);
        Change(*held, plain);
        if (!isMany_) return;
        // The list is told: the entry is got again, or everything is laid out.
        if (Roll(3)) {
            EXPECT_EQ(list_.GetItem(index), held);
            got_ = plain.serial;
        } else {
            list_.ReSetPos(0);
            model_.Heights();
        }
    }
    void Change(QKListItem& entry, Plain& plain) {
        switch (Roll(10)) {
            case 0:
                entry.rcItem.OffsetRect(Roll(100) - 50, Roll(100) - 50);
                plain.item = entry.rcItem;
                return;
            case 1:
                plain.hit = entry.rcMState = CRect(CPoint(Roll(300), Roll(250)), CSize(Roll(90), Roll(90)));
                return;
            case 2:
                plain.caption = entry.rcText = CRect(CPoint(Roll(300), Roll(250)), CSize(Roll(90), Roll(90)));
                return;
            case 3:
                plain.mouse = entry.nMouseState = Roll(3);
                return;
            case 4:
                plain.focus = entry.nFocusState = Roll(2);
                return;
            case 5:
                plain.unselected = entry.nSelState = Roll(2);
                return;
            case 6:
                plain.id = entry.nID = Roll(80);
                return;
            case 7:
                plain.clickSel = entry.nClickSel = Roll(2);
                kit::SetText(entry.szTextCath, u"k");
                plain.captionEmpty = false;
                return;
            case 8:
                kit::SetText(entry.szTextCath, u"k");
                plain.captionEmpty = false;
                list_.ScaleItemXY(&entry);
                return model_.PlaceFirstFree(plain);
            default:
                plain.text = Words();
                kit::SetText(entry.szText, CString(plain.text.c_str()));
                if (!isMany_ && Roll(3) == 0) return;  // until the next layout
                list_.ReCalcStateRect(&entry);
                model_.Measure(plain);
        }
    }
    void Select() {
        if (Count() == 0) return;
        int index = 0;
        Plain& plain = Any(index);
        switch (Roll(8)) {
            case 0:
                list_.SelectAll();
                for (Plain* e : model_.entries)
                    model_.Select(*e, true);
                return;
            case 1:
                list_.UnSelRcItem();
                return model_.UnselectAll();
            case 2:
                list_.ClearState();
                model_.UnselectAll();
                for (Plain* e : model_.entries) {
                    if (e->focus != 1) model_.Focus(*e, 1);
                    e->mouse = 0;
                }
                model_.selection.clear();
                return;
            case 3:
                list_.RemoveMoveState();
                for (Plain* e : model_.entries)
                    e->mouse = e->mouse == 1 ? 0 : e->mouse;
                return;
            default: {
                const int select = Roll(2);
                EXPECT_EQ(list_.SetSel(index, select), plain.unselected != !select);
                model_.Select(plain, select != 0);
            }
        }
    }
    void Band() {
        const CPoint corner(Roll(300), Roll(250));
        dialog_.m_rcSel = CRect(corner, CSize(Roll(4) ? Roll(200) : 0, Roll(200)));
        dialog_.CaleSelItem();
        model_.Band(dialog_.m_rcSel);
        dialog_.m_rcSel.SetRectEmpty();
    }
    void Pointer() {
        const CPoint point(Roll(400) - 50, Roll(350) - 50);
        const CRect place = list_.Place();
        switch (Roll(6)) {
            case 0:
                dialog_.MoveLDownList(&list_, place, point);
                return model_.Down(point);
            case 1:
                dialog_.MoveUpList(&list_, place, point);
                return model_.Up(point);
            case 2:
                dialog_.MoveLDBClickList(&list_, place, point);
                return model_.Double(point);
            case 3:
                dialog_.MoveRDownList(&list_, place, point);
                return model_.RightDown(point);
            default:
                dialog_.MoveOnList(&list_, place, point);
                return model_.Move(point);
        }
    }

    std::mt19937 random_;
    const bool isMany_;
    int got_ = 0;  // the serial of what the host got last, and nothing since
    ListDialog dialog_;
    TestList list_;
    Model model_;
    std::deque<Plain> records_;
    std::map<int, QKListItem*> held_;        // to change
    std::map<int, const QKListItem*> seen_;  // to look at
    CSize given_{300, 250};
    int serial_ = 0;
};

class RandomList : public kit::HeadlessTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(RandomList, AnswersAsAWalkWould) {
    Life life(GetParam(), GetParam() % 2 == 0);
    for (int step = 0; step < 4000; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        life.Step();
        if (step % 3) continue;  // looking brings the list up to date
        life.Compare();
        if (HasFatalFailure() || HasNonfatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomList, ::testing::Values(1U, 2U, 3U, 4U, 5U, 6U, 8U, 10U));

}  // namespace
