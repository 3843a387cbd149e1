// One frame: what it is drawn with, in which order, and onto what.
#include "dialog/frame_painter.h"

#include <cstdint>
#include <optional>
#include <variant>

#include <qkui/list/list_ctrl.h>
#include "dialog/recorder.h"
#include "dialog/rubber_band.h"
#include "dialog/tab_focus.h"
#include "list/list_access.h"
#include "list/uninterrupted.h"

namespace qkui {

namespace {

// All that a context may draw on.
class Drawable : public Region {
  public:
    explicit Drawable(HDC dc) {
        GetDrawableRgn(dc, *this);
        box_ = Region::Box();
    }
    const CRect& Box() const { return box_; }
    bool Meets(const CRect& rect) const {
        CRect inside;
        return inside.IntersectRect(rect, box_) && Region::Meets(rect);
    }

  private:
    CRect box_;
};

Gdiplus::Rect AsRect(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

}  // namespace

CRect FramePainter::Client() const {
    CRect client;
    dialog_.GetClientRect(client);
    return client;
}

Background FramePainter::BackgroundNow() const {
    return {dialog_.m_pBackImage.get(), backgroundParts_, dialog_.m_bBackKeepRatio != 0,
            dialog_.m_bBackColor != 0, dialog_.m_crBack};
}

bool FramePainter::HasCachedBackground() const {
    return dialog_.m_bBackCache && dialog_.m_pBackCache;
}

// Every frame that is asked for leaves the cache behind, also one that is there already.
void FramePainter::CacheBackground() const {
    if (!dialog_.m_bBackCache || dialog_.m_pBackCache || !IsWindow(dialog_.m_hWnd)) return;
    dialog_.m_pBackCache = BackgroundNow().Render(Client().Size());
}

// Whether composing a frame on nothing leaves no pixel as it was.
bool FramePainter::CoversAll(CSize size) const {
    if (dialog_.m_nLayStyle == LAY_COLORKEY) return true;
    return !HasCachedBackground() && Client() == CRect(CPoint(0, 0), size) && BackgroundNow().Covers(size);
}

void FramePainter::PaintOnto(HDC dc, CSize size) {
    if (!IsWindow(dialog_.m_hWnd)) return;
    dialog_.SettleScrolling();
    DisplayList list;
    RecordItems(Drawable(dc).Box(), list);
    Compose(dc, size, Under::Pixels, list);
    CacheBackground();
}

void FramePainter::PaintKept(HDC dc, CSize size) {
    if (!IsWindow(dialog_.m_hWnd)) return;
    const Uninterrupted uninterrupted;
    if (PaintInWindow(dc, size)) return;
    if (!store_) store_ = std::make_unique<BackingStore>();
    if (!store_->Prepare(dc, size.cx, size.cy)) return PaintOnto(dc, size);
    store_->TakeSurroundings();
    Record(store_->Damaged());
    store_->Repaint(Drawable(dc),
                    [&] { Compose(store_->Context(), size, Under::Nothing, store_->Damaged().List()); });
    CacheBackground();
    BitBlt(dc, 0, 0, size.cx, size.cy, store_->Context(), 0, 0, SRCCOPY);
}

bool FramePainter::PaintInWindow(HDC dc, CSize size) {
    if (!window_.IsOurs(dialog_.m_hWnd, dc, size.cx, size.cy)) return false;
    Record(window_.Damaged());
    window_.Repaint(dc, CoversAll(size),
                    [&] { Compose(dc, size, Under::Nothing, window_.Damaged().List()); });
    CacheBackground();
    return true;
}

void FramePainter::PaintList(HDC dc, QKListCtrl& list) {
    const Drawable drawable(dc);
    DisplayList entries;
    RecordEntries(list, drawable.Box(), entries);
    Gdiplus::Graphics graphics(dc);
    Replay(entries, dc, graphics);
}

void FramePainter::RecordSurroundings(const CRect& whole, DisplayList& list) const {
    list.Begin();
    list.Touches(whole);
    list.Add(Client());
    list.Add(static_cast<std::uint64_t>(dialog_.m_nLayStyle));
    list.Add(dialog_.m_crColorKey);
    list.Add(static_cast<std::uint64_t>(dialog_.m_bTranMouseOver));
    list.Add(HasCachedBackground());
    if (!HasCachedBackground()) BackgroundNow().Record(list);
}

void FramePainter::RecordEntries(QKListCtrl& list, const CRect& area, DisplayList& entries) const {
    if (!list.IsShow()) return;
    for (Entry* entry : ListAccess::DrawnIn(list, area)) {
        entries.Begin();
        ListAccess::DescribeEntry(list, *entry, entries);
        entries.DrawOnly(EntryOperation{&list, entry});
    }
}

void FramePainter::RecordItems(const CRect& area, DisplayList& list) const {
    for (QKItemBase* item : dialog_.m_arItems) {
        list.Begin();
        Recorder recorder(list);
        if (item->IsShow() && !item->GetTranMouseOver()) {
            CatchOperation catching;
            item->GetRect(&catching.area);
            recorder.Add(catching);
        }
        RecordItem(*item, recorder);
        list.Touches(recorder.Touched());
        if (item->GetType() == QKUI_LISTCTRL) RecordEntries(static_cast<QKListCtrl&>(*item), area, list);
    }
}

std::optional<RubberBand> FramePainter::Band() const {
    if (!dialog_.m_bSelRect || !dialog_.m_bSelecting) return std::nullopt;
    RubberBand band{dialog_.m_rcSel, std::nullopt};
    if (const QKListCtrl* const list = dialog_.BandList()) band.clip = ListAccess::View(*list);
    return band;
}

void FramePainter::Record(Damage& damage) const {
    const CRect whole(0, 0, damage.Width(), damage.Height());
    dialog_.SettleScrolling();
    for (QKItemBase* item : dialog_.m_arItems)
        if (item->GetType() == QKUI_LISTCTRL && item->IsShow())
            ListAccess::BeginFrame(static_cast<QKListCtrl&>(*item));
    DisplayList& list = damage.NewList();
    RecordSurroundings(whole, list);
    RecordItems(whole, list);
    if (const std::optional<RubberBand> band = Band()) band->Record(list);
    if (const CRect focus = dialog_.m_pFocus->Frame(); !focus.IsRectEmpty()) {
        list.Begin();
        list.Add(focus);
        list.Add(dialog_.m_pFocus->GetColor().GetValue());
        list.Touches(focus);
    }
    damage.TakeList();
}

void FramePainter::Compose(HDC dc, CSize size, Under under, const DisplayList& list) const {
    if (dialog_.m_nLayStyle == LAY_COLORKEY) {
        under = Under::Pixels;
        const HBRUSH brush = CreateSolidBrush(dialog_.m_crColorKey);
        FillRect(dc, CRect(CPoint(0, 0), size), brush);
        DeleteObject(brush);
    }
    Gdiplus::Graphics graphics(dc);
    if (!HasCachedBackground()) BackgroundNow().Draw(graphics, Client().Size(), under);
    if (dialog_.m_nLayStyle == LAY_OPAQUE && !dialog_.m_bTranMouseOver) {
        const Gdiplus::SolidBrush catching{Gdiplus::Color(QK_PAINT_TRANSPARENT)};
        graphics.FillRectangle(&catching, AsRect(CRect(CPoint(0, 0), Client().Size())));
    }
    Replay(list, dc, graphics);
    if (const CRect focus = dialog_.m_pFocus->Frame(); !focus.IsRectEmpty())
        dialog_.m_pFocus->Draw(graphics, focus);
    if (const std::optional<RubberBand> band = Band()) band->Draw(graphics);
}

// Entries of a list that scrolls are drawn under the clip of its view.
void FramePainter::Replay(const DisplayList& list, HDC dc, Gdiplus::Graphics& graphics) const {
    const Drawable drawable(dc);
    const Gdiplus::SolidBrush catching{Gdiplus::Color(QK_PAINT_TRANSPARENT)};
    OperationPainter painter(graphics);
    const int scale = GetDeviceScale(dc);
    const QKListCtrl* clipped = nullptr;
    const auto clipTo = [&](const QKListCtrl* scrolling) {
        if (scrolling == clipped) return;
        clipped = scrolling;
        if (scrolling)
            graphics.SetClip(AsRect(ListAccess::View(*scrolling)));
        else
            graphics.ResetClip();
    };
    list.Replay([&](const CRect& touched) { return drawable.Meets(touched); },
                [&](const Operation& operation) {
                    const auto* const drawn = std::get_if<EntryOperation>(&operation);
                    clipTo(drawn && drawn->list->IsScrolling() ? drawn->list : nullptr);
                    if (drawn)
                        ListAccess::ComposeEntry(*drawn->list, *drawn->entry, painter, scale);
                    else if (const auto* const area = std::get_if<CatchOperation>(&operation))
                        graphics.FillRectangle(&catching, area->area);
                    else if (const auto* const image = std::get_if<ImageOperation>(&operation))
                        painter.Add(*image);
                    else
                        painter.Add(std::get<TextOperation>(operation));
                });
    clipTo(nullptr);
}

}  // namespace qkui
