// Lists when memory runs out: at each allocation of an operation in turn.
#include <cstdlib>
#include <new>

#include "list/list_kit.h"

namespace {

int g_untilFailure = -1;  // allocations that succeed yet; below 0 all do

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (g_untilFailure == 0) throw std::bad_alloc();
    if (g_untilFailure > 0) --g_untilFailure;
    if (void* block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

using kit::TestList;

class ListMemory : public kit::HeadlessTest {};

// Entries of every kind: taken cells, a selection, one that the host holds, one far away.
void Fill(TestList& list) {
    list.SetListMode(QKLIST_DESKTOP);
    for (int i = 0; i < 30; ++i)
        list.Add(CString(u"caption", i % 7));
    list.AddIn(CRect(3000, 3000, 3010, 3010));
    list.SetSel(3, 1);
    list.GetItem(5)->nFocusState = 0;
}

std::string Cells(const TestList& list) {
    std::ostringstream out;
    out << list.Place();
    for (int i = 0; i < list.GetCount(); ++i) {
        const QKListItem& entry = list.Look(i);
        out << entry.nID << CRect(entry.rcItem) << CRect(entry.rcMState) << entry.nSelState;
    }
    return out.str();
}

// Runs out at the n-th allocation for every n, until the operation gets by; done once more with memory, the
// list is as one that never lacked any.
TEST_F(ListMemory, EveryOperationAnswersWithoutMemoryAndGoesOnWithIt) {
    struct Case {
        const char* name;
        int (*act)(TestList& list, QKListItem* record);  // 1 done, 0 not done, -1 says nothing
        bool (*done)(const TestList& list, const QKListItem* record);
        bool whole;  // done or not done, nothing between
    };
    constexpr int kCount = 31;
    const auto grown = [](const TestList& l, const QKListItem*) { return l.GetCount() == kCount + 1; };
    const Case cases[] = {
        {"added", [](TestList& l, QKListItem* r) { return l.AddItem(r, 1); }, grown, true},
        {"added at a point", [](TestList& l, QKListItem* r) { return l.AddItem(r, 90, 90); }, grown, true},
        {"inserted", [](TestList& l, QKListItem* r) { return l.InsertItem(r, 4), -1; }, grown, false},
        {"put into a place", [](TestList& l, QKListItem* r) { return l.SetItem(7, r), -1; },
         [](const TestList& l, const QKListItem* r) { return &l.Look(7) == r; }, true},
        {"got", [](TestList& l, QKListItem*) { return l.GetItem(9) ? 1 : 0; },
         [](const TestList&, const QKListItem*) { return true; }, true},
        {"selected", [](TestList& l, QKListItem*) { return l.SetSel(9, 1); },
         [](const TestList& l, const QKListItem*) { return l.Look(9).nSelState == 0; }, true},
        {"laid out",
         [](TestList& l, QKListItem*) {
             const CRect place(5, 5, 400, 250);
             return l.SetRect(&place), -1;
         },
         [](const TestList& l, const QKListItem*) { return l.Cell(30).left > 5; }, false},
    };
    kit::ListDialog dialog;
    dialog.Open();
    Gdiplus::Bitmap icon(4, 4);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::string before, after;
        for (int n = -1, left = 0; left == 0; ++n) {  // at first with all the memory there is
            SCOPED_TRACE(n);
            TestList list(QKLT_ICON, CRect(0, 0, 300, 200));
            dialog.AddQKItem(&list);
            Fill(list);
            if (n < 0) before = Cells(list);
            QKListItem* const replaced = list.GetItem(7);
            auto* const record = new QKListItem;
            record->pImage = icon.Clone();
            int result = 0;
            g_untilFailure = n;
            EXPECT_NO_THROW(result = c.act(list, record));
            left = std::exchange(g_untilFailure, -1);
            if (!c.done(list, record)) {
                EXPECT_LE(result, 0);
                EXPECT_TRUE(record->pImage);
                if (c.whole) {
                    EXPECT_EQ(Cells(list), before);
                }
            }
            if (result == 0 || !c.done(list, record)) {
                EXPECT_NE(c.act(list, record), 0);
            }
            EXPECT_TRUE(c.done(list, record));
            list.ReSetPos(1);
            if (n < 0) after = Cells(list), left = 0;
            EXPECT_EQ(Cells(list), after);
            QKListItem* const loose = &list.Look(7) == record ? replaced : record;
            delete loose->pImage;  // the list owns that of an adopted record
            delete loose;
            dialog.RemoveQKItem(&list);
        }
    }
}

}  // namespace
