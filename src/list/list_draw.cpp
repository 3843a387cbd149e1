// What a list draws: frames, icon and caption of each entry, the focused ones above all others.
#include <algorithm>

#include "dialog/dialog_base.h"
#include "items/arithmetic.h"
#include "items/glow_text.h"
#include "items/pieces.h"
#include "items/state_image.h"
#include "list/list_caption.h"
#include "list/list_ctrl.h"
#include "list/list_entries.h"
#include "list/list_text.h"

namespace {

constexpr Gdiplus::ARGB kCaptionGlow = 0xB4323232;

void ComposeFrame(const std::array<std::shared_ptr<Gdiplus::Image>, 9>& frame, const CRect& rect,
                  QKPieces& pieces) {
    std::array<Gdiplus::Image*, 9> images;
    std::transform(frame.begin(), frame.end(), images.begin(), [](const auto& image) { return image.get(); });
    QKComposeStateImage(images.data(), QKRectF(rect), pieces);
}

}  // namespace

// Captions of the frame before stay, whatever room they take.
void QKListCtrl::BeginFrame() {
    m_lstItems->Captions().Trim(m_nCaptionLimit);
    m_lstItems->Captions().BeginFrame();
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

std::vector<QKListNode*> QKListCtrl::DrawnIn(const CRect& area) {
    std::vector<QKListNode*> drawn;
    const std::vector<QKListNode*> nodes = m_lstItems->DrawnIn(area, {Metrics(), LargestFrame()});
    drawn.reserve(nodes.size());
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(drawn),
                 [](const QKListNode* node) { return node->focus != 0; });
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(drawn),
                 [](const QKListNode* node) { return node->focus != 1; });
    return drawn;
}

void QKListCtrl::ComposeEntry(QKListNode& node, QKPieces& pieces) {
    const QKListItem& entry = *node.item;
    // A selected entry with the focus has the frame twice: that is how the current one stands out.
    const bool focused = entry.nFocusState == 0 && entry.bShowText;
    const CRect& frame = focused ? entry.rcFState : entry.rcMState;
    if (focused) ComposeFrame(m_pFouceImage, frame, pieces);
    if (entry.nSelState == 0) ComposeFrame(m_pFouceImage, frame, pieces);
    if (entry.nMouseState == QK_MOUSEON) ComposeFrame(m_pMoveImage, frame, pieces);
    if (entry.nMouseState == QK_MOUSEDOWN) ComposeFrame(m_pDownImage, frame, pieces);

    if (entry.pImage)
        pieces.Add(QKImagePiece{entry.pImage, QKRectF(QKIconBox(Metrics(), entry.rcItem)),
                                QKWholeImage(entry.pImage)});

    if (!entry.szText[0] || !entry.bShowText) return;
    const int height = entry.nFocusState == 0 ? entry.rcFState.Height() : entry.rcText.Height();
    const Gdiplus::RectF place = QKRectF(CRect(entry.rcText.TopLeft(), CSize(entry.rcText.Width(), height)));
    Gdiplus::Image* caption = CaptionOf(
        node, place, focused ? Gdiplus::StringTrimmingNone : Gdiplus::StringTrimmingEllipsisCharacter);
    if (caption) pieces.Add(QKImagePiece{caption, place, QKWholeImage(caption)});
}

// Rendered when it is first seen. One that was dropped for lack of room comes back as it was.
Gdiplus::Image* QKListCtrl::CaptionOf(QKListNode& node, const Gdiplus::RectF& place,
                                      Gdiplus::StringTrimming trimming) {
    QKListItem& entry = *node.item;
    QKCaptionStore& captions = m_lstItems->Captions();
    const std::u16string_view text = QKTextOf(entry.szText);
    if (QKHasCaption(entry, text)) {
        captions.Seen(node, nullptr);
        return entry.pTextImage;
    }
    if (!m_pFont) return nullptr;
    const SIZE size = {QKWhole(place.Width), QKWhole(place.Height)};
    const QKListNode::Rendering rendering = captions.RenderingFor(node, {size, trimming, 0});
    m_format.SetTrimming(rendering.trimming);
    Gdiplus::Image* caption = QKCaption(
        entry, text, {*m_pFont, m_format, m_crText, Gdiplus::Color(kCaptionGlow), Gdiplus::PointF(1, 1), 3},
        rendering.size);
    if (caption) captions.Seen(node, &rendering);
    return caption;
}

void CQKDialogBase::DrawListCtrl(HDC dc, QKListCtrl* list) {
    Gdiplus::Graphics graphics(dc);
    PaintList(graphics, dc, *list);
}
