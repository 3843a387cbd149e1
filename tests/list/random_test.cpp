// Long random lives of a list, beside a plain one that walks its entries for every question. Both must agree
// about everything after every step.
#include <array>
#include <deque>
#include <map>
#include <random>

#include "list/list_kit.h"
#include "list/plain_list.h"

namespace {

using kit::ListDialog;
using kit::TestList;
using namespace plain;

class Life {
  public:
    // `isMany`: as if there were many entries and the host had got them all.
    Life(unsigned seed, bool isMany) : random_(seed), isMany_(isMany), model_(list_) {
        if (isMany) list_.SetPace({4, 3, 2});
        dialog_.Create(kit::kDialogTemplate);
        dialog_.SetNoMove(1);
        dialog_.AddQKItem(&list_);
        CRect place(0, 0, 300, 250);
        list_.SetRect(&place);
        model_.place = place;
    }

    void Step() {
        got_ = 0;
        constexpr void (Life::*kActs[])() = {
            &Life::Add,     &Life::Add,     &Life::Insert,   &Life::Remove,      &Life::RemoveSelected,
            &Life::Swap,    &Life::Place,   &Life::Settings, &Life::HostChanges, &Life::HostChanges,
            &Life::Select,  &Life::Band,    &Life::Restyle,  &Life::Read,        &Life::SetItem,
            &Life::Pointer, &Life::Pointer, &Life::Pointer,  &Life::Pointer,     &Life::Pointer,
            &Life::Pointer, &Life::Pointer, &Life::Extremes};
        (this->*kActs[Roll(static_cast<int>(std::size(kActs)))])();
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
            selected += plain.nSelState == 0;
            bottom = std::max(bottom, plain.rcItem.bottom);
            right = std::max(right, plain.rcItem.right);
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
            if (Meet(area, model_.entries[static_cast<std::size_t>(i)]->rcItem)) first = i;
        QKListItem* out = nullptr;
        ASSERT_EQ(list_.GetItemFromRect(&area, out), first);
    }

  private:
    std::string Print(const QKListItem& e, bool captionEmpty, bool isSelected) const {
        std::ostringstream out;
        out << e.nUser1 << " id " << e.nID << CRect(e.rcItem) << CRect(e.rcText) << " hit "
            << CRect(e.rcMState) << " focus " << CRect(e.rcFState) << " states " << e.nMouseState
            << e.nFocusState << e.nSelState << (captionEmpty ? "" : " shows its caption")
            << (isSelected ? " is selected" : "");
        return out.str();
    }
    void Same(const QKListItem& entry, const Plain& plain) {
        const auto& order = model_.selection;
        EXPECT_EQ(Print(entry, entry.szTextCath[0] == 0, list_.ItemInSelect(const_cast<QKListItem*>(&entry))),
                  Print(plain, plain.captionEmpty,
                        std::find(order.begin(), order.end(), plain.serial) != order.end()));
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
    CString Words() { return CString(u"江 a caption of some words or more", Roll(34)); }

    QKListItem Record(Plain& plain) {
        plain.serial = ++serial_;
        plain.SetText(Words());
        plain.nID = model_.NextId();
        if (Roll(3) == 0) plain.rcItem = CRect(CPoint(Roll(300), Roll(250)), CSize(Roll(120), Roll(120)));
        if (Roll(20) == 0) plain.rcItem = CRect(kHigh - Roll(9), 0, kHigh, Roll(9));
        if (Roll(20) == 0) plain.rcItem = CRect(list_.Place().TopLeft(), CSize(0, 0));
        plain.nUser1 = plain.serial;
        return plain;
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
    void RemoveSelected() {
        const auto leaves = [](const Plain* e) { return e->nSelState == 0; };
        const bool any = std::any_of(model_.entries.begin(), model_.entries.end(), leaves);
        for (Plain* e : model_.entries)
            if (leaves(e)) model_.Select(*e, false), e->nSelState = 0, Drop(*e);
        std::erase_if(model_.entries, leaves);
        EXPECT_EQ(dialog_.DeleteSelectedFiles(), any);
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
        SetCells({model_.type, any(), any(), any(), any(), any(), any()});
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
        SetCells({model_.type, 40, 50, 16, 16, 3, 3});
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
            case 2: {
                Cells cells{Roll(3),       30 + Roll(60), 40 + Roll(60), 16 + Roll(20),
                            16 + Roll(20), Roll(12) - 4,  Roll(12) - 4};
                if (Roll(6) == 0) cells.itemWidth = -1 - Roll(2), cells.gapX = 20 + Roll(9);
                if (Roll(6) == 0) cells.itemHeight = -1 - Roll(2), cells.gapY = 20 + Roll(9);
                return SetCells(cells);
            }
            default:
                static_cast<Cells&>(model_) =
                    std::array{Cells{0, 75, 90, 48, 48, 2, 10}, Cells{1, 75, 74, 32, 32, 0, 8}, Cells(),
                               Cells()}[static_cast<std::size_t>(type)];
                list_.SetListType(static_cast<QKListType>(model_.type));
                return model_.LayOut();
        }
    }
    void SetCells(const Cells& cells) {
        static_cast<Cells&>(model_) = cells;
        list_.SetListType(static_cast<QKListType>(model_.type), model_.itemWidth, model_.itemHeight,
                          model_.imageWidth, model_.imageHeight, model_.gapX, model_.gapY);
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
        const int what = Roll(10), number = Roll(what == 6 ? 80 : what == 3 ? 3 : 2);
        const CRect rect(CPoint(Roll(300), Roll(250)), CSize(Roll(90), Roll(90)));
        const CString words = Words();
        for (QKListItem* e : {&entry, static_cast<QKListItem*>(&plain)}) {
            if (what == 0)
                e->rcItem =
                    CRect(entry.rcItem) + (e == &entry ? CPoint(rect.left - 150, rect.top - 125) : CPoint());
            if (what == 1) e->rcMState = rect;
            if (what == 2) e->rcText = rect;
            if (what == 3) e->nMouseState = number;
            if (what == 4) e->nFocusState = number;
            if (what == 5) e->nSelState = number;
            if (what == 6) e->nID = number;
            if (what == 7) e->nClickSel = number;
            if (what == 9) e->SetText(words);
        }
        if (what == 7 || what == 8) {
            kit::SetText(entry.szTextCath, u"k");
            plain.captionEmpty = false;
        }
        if (what == 8) {
            list_.ScaleItemXY(&entry);
            model_.PlaceFirstFree(plain);
        }
        if (what != 9 || (!isMany_ && Roll(3) == 0)) return;  // until the next layout
        list_.ReCalcStateRect(&entry);
        model_.Measure(plain);
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
                    if (e->nFocusState != 1) model_.Focus(*e, 1);
                    e->nMouseState = 0;
                }
                model_.selection.clear();
                return;
            case 3:
                list_.RemoveMoveState();
                for (Plain* e : model_.entries)
                    e->nMouseState = e->nMouseState == 1 ? 0 : e->nMouseState;
                return;
            default: {
                const int select = Roll(2);
                EXPECT_EQ(list_.SetSel(index, select), plain.nSelState != !select);
                model_.Select(plain, select != 0);
            }
        }
    }
    void Band() {
        const CPoint corner(Roll(300), Roll(250));
        dialog_.m_rcSel = CRect(corner, CSize(Roll(4) ? Roll(200) : 0, Roll(200)));
        dialog_.CaleSelItem();
        for (Plain* e : model_.entries)
            model_.Select(*e, Meet(dialog_.m_rcSel, e->rcMState));
        dialog_.m_rcSel.SetRectEmpty();
    }
    // An event is about one entry at most, and takes a state that only one has from one other at most: the
    // first that a walk finds.
    void Pointer() {
        const CPoint point(Roll(400) - 50, Roll(350) - 50);
        enum Loser { kNobody, kOther, kAnyone };
        const struct {
            int (ListDialog::*handle)(QKListCtrl*, const CRect&, CPoint);
            int mouse;  // of the entry that it is about
            bool focuses, selects, byClick;
            Loser mouseLoser, focusLoser;
        } events[] = {{&ListDialog::MoveLDownList, 2, true, true, false, kNobody, kOther},
                      {&ListDialog::MoveUpList, 1, false, true, true, kOther, kNobody},
                      {&ListDialog::MoveLDBClickList, 2, true, true, false, kNobody, kAnyone},
                      {&ListDialog::MoveRDownList, 2, true, false, false, kNobody, kOther},
                      {&ListDialog::MoveOnList, 1, false, false, false, kOther, kNobody}};
        const auto& event = events[std::min(Roll(6), 4)];
        Plain* about = nullptr;
        int hot = -1;
        for (Plain* e : model_.entries) {
            if (about || !e->rcMState.PtInRect(point)) continue;
            hot = e->nID;
            if (e->nMouseState != event.mouse || (event.byClick && e->nClickSel)) about = e;
        }
        (dialog_.*event.handle)(&list_, list_.Place(), point);
        if (about) {
            about->nMouseState = event.mouse;
            if (event.focuses && about->nFocusState != 0) model_.Focus(*about, 0);
            if (event.selects && (event.byClick ? about->nClickSel != 0 : about->nSelState != 0))
                for (Plain* e : model_.entries)
                    model_.Select(*e, e == about);
        }
        const auto first = [&](Loser loser, auto has) {
            const auto found = std::find_if(model_.entries.begin(), model_.entries.end(), [&](Plain* e) {
                return loser != kNobody && has(*e) && (loser == kAnyone || e->nID != hot);
            });
            return found == model_.entries.end() ? nullptr : *found;
        };
        if (Plain* e = first(event.mouseLoser, [](Plain& at) { return at.nMouseState != 0; }))
            e->nMouseState = 0;
        if (Plain* e = first(event.focusLoser, [](Plain& at) { return at.nFocusState != 1; }))
            model_.Focus(*e, 1);
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
