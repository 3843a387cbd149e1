// A plain list: what a list should be, found by a walk over its entries from the first to the last for every
// question.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "list/list_kit.h"

namespace plain {

using kit::TestList;

inline CRect NoPlace() {
    return {-1, -1, -1, -1};
}

inline constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();

// Whole numbers that end at the ends of an int.
inline int Cut(double value) {
    return value >= kHigh ? kHigh : value <= kLow ? kLow : static_cast<int>(value);
}
template <class... Ints>
int Sum(Ints... values) {
    return Cut((static_cast<double>(values) + ...));
}
inline bool Fits(double value) {
    return Cut(value) == value;
}

inline bool Meet(const CRect& a, const CRect& b) {
    return !a.IsRectEmpty() && !b.IsRectEmpty() && a.left < b.right && b.left < a.right && a.top < b.bottom &&
           b.top < a.bottom;
}

// An entry as it should be; its caption is in szText.
struct Plain : QKListItem {
    int serial = 0;
    bool captionEmpty = true;
};

struct Cells {
    int type = 2, itemWidth = -1, itemHeight = 20, imageWidth = 18, imageHeight = 18, gapX = -1, gapY = 3;
};

// The list as a record of settings and a walk.
class Model : public Cells {
  public:
    explicit Model(const TestList& list) : list_(list) {}

    std::vector<Plain*> entries;  // some stand in two places
    std::vector<int> selection;   // serials
    CRect place;
    int arrange = 0;
    bool desktop = false, hasParent = true;

    int NextId() const {
        int most = -1;
        for (const Plain* e : entries)
            most = std::max(most, e->nID);
        return most + 1;
    }
    bool Occupied(int x, int y) const {
        return std::any_of(entries.begin(), entries.end(), [&](const Plain* e) {
            return e->rcItem.PtInRect(POINT{x, y});
        });
    }

    void Measure(Plain& e) const {
        if (!hasParent) return;
        Gdiplus::StringFormat format(&list_.m_format);
        format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
        const auto box = [&](float width, float height) {
            return Gdiplus::GetTextExtent(e.szText[0] ? e.szText : u"0", -1, list_.m_pFont.get(),
                                          {0, 0, width, height}, &format)
                .box;
        };
        const auto width = static_cast<float>(e.rcText.Width());
        const auto height = static_cast<float>(e.rcText.Height());
        const Gdiplus::RectF trimmed = box(width, height), whole = box(width, type == 2 ? height : 400);
        if (type == 2) {
            const auto row = [&](float right) {
                CRect rect(e.rcItem.left, e.rcItem.top, Cut(right), Sum(e.rcItem.bottom, 3));
                if (rect.Width() < 80) rect.right = Sum(rect.left, 80);
                return rect;
            };
            e.rcMState = row(static_cast<float>(Sum(imageWidth, 5, e.rcItem.left)) + trimmed.Width + 5);
            e.rcFState = row(static_cast<float>(Sum(imageWidth, 10, e.rcItem.left)) + whole.Width);
        } else {
            const auto top = static_cast<float>(e.rcText.top);
            e.rcMState = CRect(e.rcItem.left, e.rcItem.top, e.rcItem.right, Cut(top + trimmed.Height + 3));
            e.rcFState = CRect(e.rcItem.left, e.rcItem.top, e.rcItem.right, Cut(top + whole.Height + 3));
        }
    }

    void Put(Plain& e, double x, double y, bool rows) {
        const int width = rows ? place.Width() : itemWidth;
        if (!Fits(x) || !Fits(y) || !Fits(x + width) || !Fits(y + itemHeight)) return;
        e.rcItem = CRect(CPoint(Cut(x), Cut(y)), CSize(width, itemHeight));
        PutCaptionInGrid(e);
        if (rows) {
            e.rcText = CRect(Sum(x, 5, imageWidth), Sum(y, 4), Sum(e.rcItem.right, -5.0, -1.0 * imageWidth),
                             e.rcItem.bottom);
            e.captionEmpty = true;
        }
        Measure(e);
        place.bottom = std::max(place.bottom, e.rcItem.bottom);
        place.right = std::max(place.right, e.rcItem.right);
        place = CRect(place.TopLeft(), place.Size());  // a list has a width and a height
    }
    void PutCaptionInGrid(Plain& e) const {
        e.rcText =
            CRect(e.rcItem.left, Sum(e.rcItem.top, imageHeight, 3, 5), e.rcItem.right, e.rcItem.bottom);
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
        Put(e, walk.x, walk.y, type == 2);
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
        Put(e, walk.x, walk.y, false);
    }

    void LayOut() {
        for (Plain* e : entries)
            e->rcItem = e->rcText = e->rcMState = e->rcFState = NoPlace();
        for (Plain* e : entries)
            PlaceFirstFree(*e);
    }
    void Heights() {
        for (Plain* e : entries) {
            e->rcItem.bottom = Sum(e->rcItem.top, itemHeight);
            e->rcText.top = Sum(e->rcItem.top, imageHeight, 3, 5);
            e->rcText.bottom = e->rcItem.bottom;
            Measure(*e);
        }
    }

    void Select(Plain& e, bool select) {
        e.nSelState = select ? 0 : 1;
        const auto found = std::find(selection.begin(), selection.end(), e.serial);
        if (select && found == selection.end()) selection.push_back(e.serial);
        if (!select && found != selection.end()) selection.erase(found);
    }
    void UnselectAll() {
        for (Plain* e : entries)
            Select(*e, false);
    }
    void Focus(Plain& e, int focus) {
        e.nFocusState = focus;
        e.captionEmpty = true;
    }

  private:
    const TestList& list_;
};

}  // namespace plain
