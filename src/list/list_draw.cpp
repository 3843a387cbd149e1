// What a list draws: frames, icon and caption of each entry, the focused ones above all others.
#include <algorithm>

#include <qkui/dialog/dialog_base.h>
#include <qkui/list/list_ctrl.h>
#include "dialog/frame_painter.h"
#include "dialog/recorder.h"
#include "items/arithmetic.h"
#include "items/draw_operations.h"
#include "items/glow_text.h"
#include "items/nine_patch.h"
#include "list/list_caption.h"
#include "list/list_entries.h"

using namespace qkui;

namespace {

void ComposeFrame(const std::array<std::shared_ptr<Gdiplus::Image>, 9>& frame, const CRect& rect,
                  OperationSink& pieces) {
    std::array<Gdiplus::Image*, 9> images;
    std::transform(frame.begin(), frame.end(), images.begin(), [](const auto& image) { return image.get(); });
    RecordNinePatch(images.data(), ToRectF(rect), pieces);
}

}  // namespace

// Captions of the frame before stay, whatever room they take.
void QKListCtrl::BeginFrame() {
    m_lstItems->Captions().Trim(m_nCaptionLimit);
    m_lstItems->Captions().BeginFrame();
    m_lstItems->SyncInTurn();
}

SIZE QKListCtrl::LargestFrame() const {
    SIZE largest = {0, 0};
    for (const NineImages* set : {&m_pMoveImage, &m_pDownImage, &m_pFouceImage})
        for (const auto& image : *set) {
            if (!image) continue;
            largest.cx = std::max(largest.cx, static_cast<LONG>(image->GetWidth()));
            largest.cy = std::max(largest.cy, static_cast<LONG>(image->GetHeight()));
        }
    return largest;
}

const std::vector<Entry*>& QKListCtrl::DrawnIn(const CRect& area) {
    return m_lstItems->DrawnIn(Clipped(area), {Metrics(), LargestFrame()});
}

void QKListCtrl::ComposeEntry(Entry& node, OperationSink& pieces) {
    const EntryRects rects = m_lstItems->RectsOf(node);
    const bool showsText = node.ShowsText();
    // A selected entry with the focus has the frame twice: that is how the current one stands out.
    const bool focused = node.focus == 0 && showsText;
    const CRect& frame = focused ? rects.focus : rects.hit;
    if (focused) ComposeFrame(m_pFouceImage, frame, pieces);
    if (node.unselected == 0) ComposeFrame(m_pFouceImage, frame, pieces);
    if (node.mouse == QK_MOUSEON) ComposeFrame(m_pMoveImage, frame, pieces);
    if (node.mouse == QK_MOUSEDOWN) ComposeFrame(m_pDownImage, frame, pieces);

    if (Gdiplus::Image* const icon = node.Icon())
        pieces.Add(ImageOperation{icon, ToRectF(IconBox(Metrics(), rects.cell)), WholeImage(icon)});

    if (!showsText || node.Text().empty()) return;
    const int height = node.focus == 0 ? rects.focus.Height() : rects.caption.Height();
    const Gdiplus::RectF place =
        ToRectF(CRect(rects.caption.TopLeft(), CSize(rects.caption.Width(), height)));
    Gdiplus::Image* caption = CaptionOf(
        node, place, focused ? Gdiplus::StringTrimmingNone : Gdiplus::StringTrimmingEllipsisCharacter);
    if (caption) pieces.Add(ImageOperation{caption, place, WholeImage(caption)});
}

void QKListCtrl::DescribeEntry(Entry& node, DisplayList& inputs) {
    if (m_scroll.on) inputs.Add(View());
    std::optional<ListEntries::Picture> picture = m_lstItems->KnownPicture(node);
    if (picture) {
        m_lstItems->Captions().NoteShown(node);
    } else if (node.IsUsual()) {
        OperationBounds bounds;
        ComposeEntry(node, bounds);
        picture = m_lstItems->KeepPicture(node, bounds.Touched());
    }
    if (!picture) {
        Recorder pieces(inputs);
        ComposeEntry(node, pieces);
        return inputs.Touches(Clipped(pieces.Touched()));
    }
    inputs.Add(picture->number);
    inputs.Add(static_cast<std::uint64_t>(picture->place.x));
    inputs.Add(static_cast<std::uint64_t>(picture->place.y));
    inputs.Touches(Clipped(picture->touched));
}

// Rendered when it is first seen. One that was dropped for lack of room comes back as it was.
Gdiplus::Image* QKListCtrl::CaptionOf(Entry& node, const Gdiplus::RectF& place,
                                      Gdiplus::StringTrimming trimming) {
    CaptionCache& captions = m_lstItems->Captions();
    node.Look();
    if (node.Caption() && captions.ShowsText(node)) {
        captions.NoteShown(node);
        return node.Caption();
    }
    if (!m_pFont) return nullptr;
    const SIZE size = {Whole(place.Width), Whole(place.Height)};
    const EntryLook::Rendering rendering = captions.RenderingFor(node, {size, trimming, 0});
    m_format.SetTrimming(rendering.trimming);
    captions.Take(
        node,
        RenderCaption(node.Text(), {*m_pFont, m_format, m_crText, m_crGlow, Gdiplus::PointF(1, 1), 3},
                      rendering.size),
        rendering);
    return node.Caption();
}

void CQKDialogBase::DrawListCtrl(HDC dc, QKListCtrl* list) {
    m_pPainter->PaintList(dc, *list);
}
