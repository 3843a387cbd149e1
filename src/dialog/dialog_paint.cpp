// One frame: what it is composed of, in which order, and what it is drawn from.
#include <cstdint>
#include <vector>

#include <qkui/items/nine_parts.h>
#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "dialog/backing_store.h"
#include "dialog/recorder.h"
#include "dialog/tab_focus.h"
#include "dialog/window_paint.h"
#include "dialog/window_store.h"
#include "items/draw_operations.h"
#include "list/list_node.h"
#include "list/uninterrupted.h"

namespace {

constexpr Gdiplus::ARGB kBandFill = 0x643399FF;
constexpr Gdiplus::ARGB kBandOutline = 0xFF3399FF;

bool CatchesPointer(const QKItemBase* item) {
    return item->IsShow() && !item->GetTranMouseOver();
}

void AddBounds(const QKItemBase& item, qkui::OperationBounds& bounds) {
    if (CatchesPointer(&item)) {
        CRect rect;
        item.GetRect(&rect);
        bounds.Include(rect);
    }
    qkui::RecordItem(item, bounds);
}

void DescribeItem(const QKItemBase& item, qkui::DisplayList& inputs) {
    inputs.Begin();
    CRect catching;
    if (CatchesPointer(&item)) item.GetRect(&catching);
    inputs.Add(CatchesPointer(&item));
    inputs.Add(catching);
    qkui::Recorder pieces(inputs);
    AddBounds(item, pieces);
    inputs.Touches(pieces.Touched());
}

Gdiplus::Rect AsRect(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

// All that a context may draw on.
class Drawable : public qkui::Region {
  public:
    explicit Drawable(HDC dc) {
        GetDrawableRgn(dc, *this);
        box_ = Box();
    }
    bool Meets(const CRect& rect) const {
        CRect inside;
        return inside.IntersectRect(rect, box_) && qkui::Region::Meets(rect);
    }

  private:
    CRect box_;
};

}  // namespace

void CQKDialogBase::OnPaint() {
    const qkui::Alive alive(*this);
    const qkui::WindowPaint paint(m_hWnd);  // erases first: a call into the host
    if (!alive || m_nLayStyle == LAY_OPAQUE) return;
    CRect window;
    GetWindowRect(window);
    DrawSurface(paint.Context(), window.Width(), window.Height(), 1);
}

void CQKDialogBase::DrawSurface(HDC dc, int width, int height, int buffer) {
    if (m_nLayStyle == LAY_OPAQUE && m_pHandedOut && dc == m_pHandedOut->Context())
        PaintHandedOut(width, height);
    else if (m_nLayStyle != LAY_OPAQUE && buffer)
        PaintThroughFrame(dc, width, height);
    else
        OnQKPaint(dc, width, height);
}

// The frame outlives the paint: only what differs from its last state, and is asked for, is composed again.
void CQKDialogBase::PaintThroughFrame(HDC dc, int width, int height) {
    if (!IsWindow(m_hWnd)) return;
    const QKUninterrupted uninterrupted;
    if (PaintInPlace(dc, width, height)) return;
    if (!m_pFrame) m_pFrame = std::make_unique<qkui::BackingStore>();
    qkui::BackingStore& frame = *m_pFrame;
    if (!frame.Prepare(dc, width, height)) return OnQKPaint(dc, width, height);
    frame.TakeSurroundings();
    DescribeFrame(frame.Record());
    std::vector<CRect> bounds;
    frame.Mend(Drawable(dc), [&] { Compose(frame.Context(), CSize(width, height), Under::Nothing, bounds); });
    MakeBackCache();
    BitBlt(dc, 0, 0, width, height, frame.Context(), 0, 0, SRCCOPY);
}

// Straight into the window, which is the frame then.
bool CQKDialogBase::PaintInPlace(HDC dc, int width, int height) {
    qkui::WindowStore& frame = *m_pWindowFrame;
    if (!frame.Meet(m_hWnd, dc, width, height)) return false;
    DescribeFrame(frame.Record());
    std::vector<CRect> bounds;
    frame.Mend(dc, CoversAll(width, height),
               [&] { Compose(dc, CSize(width, height), Under::Nothing, bounds); });
    MakeBackCache();
    return true;
}

// Whether composing a frame on nothing leaves no pixel as it was.
bool CQKDialogBase::CoversAll(int width, int height) const {
    if (m_nLayStyle == LAY_COLORKEY) return true;
    CRect client;
    GetClientRect(client);
    if (HasCachedBackground() || client != CRect(0, 0, width, height)) return false;
    if (m_bBackColor) return m_crBack >> 24 == 0xFF;
    if (!m_pBackImage || !m_pBackParts->IsEmpty() || width < 1 || height < 1) return false;
    const Gdiplus::Rect source = BackgroundSource(width, height);
    return source.Width > 0 && source.Height > 0;
}

void CQKDialogBase::OnQKPaint(HDC dc, int width, int height) {
    if (!IsWindow(m_hWnd)) return;
    SettleScrolling();
    std::vector<CRect> bounds;
    Compose(dc, CSize(width, height), Under::Pixels, bounds);
    MakeBackCache();
}

// The pixels that each item may change.
std::vector<CRect> CQKDialogBase::ItemBounds() const {
    std::vector<CRect> rects;
    rects.reserve(static_cast<std::size_t>(m_arItems.GetSize()));
    for (const QKItemBase* item : m_arItems) {
        qkui::OperationBounds bounds;
        AddBounds(*item, bounds);
        rects.push_back(bounds.Touched());
    }
    return rects;
}

void CQKDialogBase::Compose(HDC dc, CSize size, Under under, std::vector<CRect>& itemBounds) {
    if (itemBounds.empty()) itemBounds = ItemBounds();
    if (m_nLayStyle == LAY_COLORKEY) {
        under = Under::Pixels;
        const CRect all(CPoint(0, 0), size);
        const HBRUSH brush = CreateSolidBrush(m_crColorKey);
        FillRect(dc, all, brush);
        DeleteObject(brush);
    }

    Gdiplus::Graphics graphics(dc);
    CRect client;
    GetClientRect(client);
    if (!HasCachedBackground()) DrawBackground(graphics, client.Size(), under);

    const Gdiplus::SolidBrush catching{Gdiplus::Color(QK_PAINT_TRANSPARENT)};
    if (m_nLayStyle == LAY_OPAQUE && !m_bTranMouseOver)
        graphics.FillRectangle(&catching, 0, 0, client.Width(), client.Height());

    const Drawable drawable(dc);
    qkui::OperationPainter painter(graphics);
    auto bounds = itemBounds.begin();
    for (QKItemBase* item : m_arItems) {
        if (drawable.Meets(*bounds++)) {
            if (CatchesPointer(item)) {
                Gdiplus::Rect rect;
                item->GetRect(&rect);
                graphics.FillRectangle(&catching, rect);
            }
            qkui::RecordItem(*item, painter);
        }
        if (item->GetType() == QKUI_LISTCTRL) PaintList(graphics, dc, static_cast<QKListCtrl&>(*item));
    }
    if (const CRect frame = FocusFrame(); !frame.IsRectEmpty()) m_pFocus->Draw(graphics, frame);
    DrawBand(graphics);
    graphics.ReleaseHDC(dc);  // never acquired: without effect
}

void CQKDialogBase::PaintList(Gdiplus::Graphics& graphics, HDC dc, QKListCtrl& list) {
    if (!list.IsShow()) return;
    const Drawable drawable(dc);
    qkui::OperationPainter painter(graphics);
    if (list.IsScrolling()) graphics.SetClip(AsRect(list.View()));
    for (QKListNode* node : list.DrawnIn(drawable.Box())) {
        if (drawable.Meets(list.Clipped(list.TouchedBy(*node)))) list.ComposeEntry(*node, painter);
    }
    if (list.IsScrolling()) graphics.ResetClip();
}

Gdiplus::Rect CQKDialogBase::BackgroundSource(int clientWidth, int clientHeight) const {
    constexpr double kSameRatio = 1e-7;
    const int width = static_cast<int>(m_pBackImage->GetWidth());
    const int height = static_cast<int>(m_pBackImage->GetHeight());
    if (!m_bBackKeepRatio || width < 1 || height < 1) return {0, 0, width, height};
    const double client = static_cast<double>(clientWidth) / clientHeight;
    const double picture = static_cast<double>(width) / height;
    if (client - picture > kSameRatio) {
        const int part = static_cast<int>(width / client);
        return {0, static_cast<int>(static_cast<unsigned>(height - part) >> 1), width, part};
    }
    const int part = static_cast<int>(height * client);
    return {static_cast<int>(static_cast<unsigned>(width - part) >> 1), 0, part, height};
}

void CQKDialogBase::DrawBackground(Gdiplus::Graphics& graphics, CSize client, Under under) const {
    if (m_bBackColor) {
        const Gdiplus::SolidBrush brush{Gdiplus::Color(m_crBack)};
        graphics.FillRectangle(&brush, 0, 0, client.cx, client.cy);
    }
    if (!m_pBackImage || client.cx < 1 || client.cy < 1) return;
    if (!m_pBackParts->IsEmpty())
        return m_pBackParts->Draw(graphics, *m_pBackImage, qkui::ToRectF(CRect(CPoint(0, 0), client)));
    Gdiplus::ImageAttributes attributes;
    attributes.SetWrapMode(Gdiplus::WrapModeTileFlipXY, Gdiplus::Color(0xFF000000), FALSE);
    const Gdiplus::Rect source = BackgroundSource(client.cx, client.cy);
    const bool isFirst = under == Under::Nothing && !m_bBackColor;
    if (isFirst) graphics.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
    graphics.DrawImage(m_pBackImage.get(), Gdiplus::Rect(0, 0, client.cx, client.cy), source.X, source.Y,
                       source.Width, source.Height, Gdiplus::UnitPixel, &attributes);
    graphics.SetCompositingMode(Gdiplus::CompositingModeSourceOver);
}

// Every frame that is asked for leaves the cache behind, also one that is there already.
void CQKDialogBase::MakeBackCache() {
    if (!m_bBackCache || m_pBackCache || !IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(client);
    const int scale = GetScreenScale();
    m_pBackCache = std::make_unique<Gdiplus::Bitmap>(client.Width() * scale, client.Height() * scale,
                                                     Gdiplus::PixelFormat32bppARGB);
    m_pBackCache->SetScale(scale);
    Gdiplus::Graphics graphics(m_pBackCache.get());
    DrawBackground(graphics, client.Size(), Under::Nothing);
    m_pBackCache->RotateFlip(Gdiplus::Rotate180FlipX);
}

void CQKDialogBase::DrawBand(Gdiplus::Graphics& graphics) {
    if (!m_bSelRect || !m_bSelecting) return;
    const Gdiplus::RectF band(static_cast<float>(m_rcSel.left), static_cast<float>(m_rcSel.top),
                              static_cast<float>(m_rcSel.Width()), static_cast<float>(m_rcSel.Height()));
    const QKListCtrl* const list = BandList();  // one that scrolls keeps its band
    if (list) graphics.SetClip(AsRect(list->View()));
    const Gdiplus::SolidBrush fill{Gdiplus::Color(kBandFill)};
    graphics.FillRectangle(&fill, band);
    const Gdiplus::Pen outline(Gdiplus::Color(kBandOutline), 1.0F);
    graphics.DrawRectangle(&outline, band);
    if (list) graphics.ResetClip();
}

// Of a band that grows, only the edges and what is new inside them are drawn again.
void CQKDialogBase::DescribeBand(qkui::DisplayList& inputs) const {
    if (!m_bSelRect || !m_bSelecting) return;
    constexpr int kEdge = 1;  // pixels that an outline may reach to either side
    const CRect& band = m_rcSel;
    const QKListCtrl* const list = BandList();
    const auto shown = [&](const CRect& rect) { return list ? list->Clipped(rect) : rect; };
    inputs.Begin();
    inputs.Fills(shown(band));
    for (const CRect& edge : {CRect(band.left, band.top, band.left, band.bottom),
                              CRect(band.right, band.top, band.right, band.bottom),
                              CRect(band.left, band.top, band.right, band.top),
                              CRect(band.left, band.bottom, band.right, band.bottom)}) {
        CRect outlined(edge);
        outlined.InflateRect(kEdge, kEdge);
        inputs.Begin();
        inputs.Touches(shown(outlined));
    }
}

// Everything that OnQKPaint reads must be told here, or a later frame would keep what it should redraw.
void CQKDialogBase::DescribeFrame(qkui::Damage& frame) const {
    const CRect whole(0, 0, frame.Width(), frame.Height());
    CRect client;
    GetClientRect(client);
    SettleScrolling();
    qkui::DisplayList& inputs = frame.NewInputs();
    inputs.Begin();
    inputs.Touches(whole);
    inputs.Add(client);
    inputs.Add(static_cast<std::uint64_t>(m_nLayStyle));
    inputs.Add(m_crColorKey);
    inputs.Add(static_cast<std::uint64_t>(m_bTranMouseOver));
    inputs.Add(HasCachedBackground());
    if (!HasCachedBackground()) {
        inputs.Add(m_bBackColor ? m_crBack : 0);
        inputs.Add(static_cast<std::uint64_t>(m_bBackColor));
        inputs.Add(m_pBackImage ? m_pBackImage->GetRevision() : 0);
        inputs.Add(static_cast<std::uint64_t>(m_bBackKeepRatio));
        inputs.Add(m_pBackParts->GetMargins());
    }

    for (QKItemBase* item : m_arItems) {
        DescribeItem(*item, inputs);
        if (item->GetType() != QKUI_LISTCTRL || !item->IsShow()) continue;
        auto& list = static_cast<QKListCtrl&>(*item);
        list.BeginFrame();
        for (QKListNode* node : list.DrawnIn(whole)) {
            inputs.Begin();
            list.DescribeEntry(*node, inputs);
        }
    }

    DescribeBand(inputs);
    if (const CRect focus = FocusFrame(); !focus.IsRectEmpty()) {
        inputs.Begin();
        inputs.Add(focus);
        inputs.Add(m_pFocus->GetColor().GetValue());
        inputs.Touches(focus);
    }
    frame.TakeInputs();
}
