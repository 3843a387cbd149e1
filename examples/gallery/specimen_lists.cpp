// Icon lists: the states of an entry, the shapes of the cells, the rubber band.
#include <string>

#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

const CSize kEntryRoom{140, 140};
const CSize kListRoom{380, 220};

CStringArray FrameFiles(const char* look) {
    CStringArray files;
    for (int i = 0; i < 9; ++i)
        files.Add(SkinFile((std::string("frame_") + look + "_" + std::to_string(i) + ".png").c_str()));
    return files;
}

void AddEntry(QKListCtrl& list, const char* icon, LPCWSTR caption) {
    QKListItem record;
    record.pImage = new Gdiplus::Image(SkinFile((std::string("icon_") + icon + ".png").c_str()));
    record.SetText(caption);
    list.AddItem(&record, 1);
}

QKListCtrl& AddList(SpecimenWindow& window, QKListType type, const CRect& place) {
    QKListCtrl& list = window.Add<QKListCtrl>(place);
    list.SetMouseMoveImage(FrameFiles("hover"));
    list.SetMouseDownImage(FrameFiles("press"));
    list.SetFouceImage(FrameFiles("focus"));
    list.SetListType(type);
    list.SetArrange(0);
    return list;
}

// One entry in the middle of its window, and what is done to it.
Specimen Entry(const char* name, std::function<void(SpecimenWindow&, QKListCtrl&)> act) {
    const auto show = [act](SpecimenWindow& window) {
        QKListCtrl& list = AddList(window, QKLT_BIGICON, CRect(32, 16, 32 + 80, 16 + 110));
        AddEntry(list, "picture", u"Northern lights over the lake at midnight");
        if (act) act(window, list);
    };
    return {name, kEntryRoom, show};
}

void Fill(QKListCtrl& list) {
    AddEntry(list, "folder", u"Summer");
    AddEntry(list, "document", u"Letter to the moon");
    AddEntry(list, "music", u"Reeds in the wind");
    AddEntry(list, "picture", u"北极光");
    AddEntry(list, "film", u"A comet passes");
    AddEntry(list, "archive", u"Winter");
}

Specimen Shape(const char* name, QKListType type) {
    const auto show = [type](SpecimenWindow& window) {
        Fill(AddList(window, type, CRect(14, 14, kListRoom.cx - 14, kListRoom.cy - 14)));
        window.PointAt(40, 36);
    };
    return {name, kListRoom, show};
}

void DragBand(SpecimenWindow& window) {
    QKListCtrl& list = AddList(window, QKLT_ICON, CRect(14, 14, kListRoom.cx - 14, kListRoom.cy - 14));
    list.SetListMode(QKLIST_DESKTOP);
    window.Dialog().SetSelRect(1);
    window.Dialog().SetNoMove(1);  // the band, not the window
    Fill(list);
    window.PressAt(300, 190);
    window.PointAt(120, 40);
}

// Halfway down, with the focus moved there by keys.
void Scroll(SpecimenWindow& window) {
    constexpr int kTimes = 8;
    const CRect place(14, 14, kListRoom.cx - 44, kListRoom.cy - 14);
    auto& bar = window.Add<QKVScrollBar>(CRect(kListRoom.cx - 32, 14, kListRoom.cx - 14, kListRoom.cy - 14));
    bar.SetBarImage(SkinFile("scroll_top_v.png"), SkinFile("scroll_middle_v.png"),
                    SkinFile("scroll_bottom_v.png"));
    bar.SetTrackImage(SkinFile("scroll_track.png"));
    QKListCtrl& list = AddList(window, QKLT_ICON, place);
    list.SetScrollBar(&bar);
    list.SetRect(&place);
    for (int i = 0; i < kTimes; ++i)
        Fill(list);
    list.SetScrollPos(0, list.GetScrollMax().cy / 2);
    list.SetFocusItem(21);
    list.SetSel(21, 1);
}

}  // namespace

std::vector<Specimen> ListSpecimens() {
    static const CPoint kOn(70, 40);  // the icon
    return {
        Entry("entry-normal", {}),
        Entry("entry-over", [](SpecimenWindow& window, QKListCtrl&) { window.PointAt(kOn.x, kOn.y); }),
        Entry("entry-selected", [](SpecimenWindow&, QKListCtrl& list) { list.SetSel(0, 1); }),
        Entry("entry-pressed", [](SpecimenWindow& window, QKListCtrl&) { window.PressAt(kOn.x, kOn.y); }),
        Entry("entry-clicked",
              [](SpecimenWindow& window, QKListCtrl&) {
                  window.ClickAt(kOn.x, kOn.y);
                  window.PointAt(4, 136);
              }),
        Entry("entry-without-caption",
              [](SpecimenWindow&, QKListCtrl& list) {
                  list.GetItem(0)->bShowText = 0;
                  list.SetSel(0, 1);
              }),
        Shape("list-big-icons", QKLT_BIGICON),
        Shape("list-icons", QKLT_ICON),
        Shape("list-rows", QKLT_LIST),
        {"list-band", kListRoom, DragBand},
        {"list-scrolled", kListRoom, Scroll},
    };
}

}  // namespace gallery
