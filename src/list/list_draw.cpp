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
#include "list/list_access.h"
#include "list/list_caption.h"

using namespace qkui;

namespace {

FrameImages ImagesOf(const std::array<std::shared_ptr<Gdiplus::Image>, 9>& frame) {
    FrameImages images;
    std::transform(frame.begin(), frame.end(), images.begin(), [](const auto& image) { return image.get(); });
    return images;
}

}  // namespace

// Captions of the frame before stay, whatever room they take.
void ListAccess::BeginFrame(QKListCtrl& list) {
    Entries(list).Captions().Trim(list.m_nCaptionLimit);
    Entries(list).Captions().BeginFrame();
    Entries(list).SyncInTurn();
}

SIZE ListAccess::LargestFrame(const QKListCtrl& list) {
    SIZE largest = {0, 0};
    for (const QKListCtrl::NineImages* set : {&list.m_pMoveImage, &list.m_pDownImage, &list.m_pFouceImage})
        for (const auto& image : *set) {
            if (!image) continue;
            largest.cx = std::max(largest.cx, static_cast<LONG>(image->GetWidth()));
            largest.cy = std::max(largest.cy, static_cast<LONG>(image->GetHeight()));
        }
    return largest;
}

const std::vector<Entry*>& ListAccess::DrawnIn(QKListCtrl& list, const CRect& area) {
    return Entries(list).DrawnIn(
        Clipped(list, area), {Metrics(list), LargestFrame(list)},
        {RevisionsOf(ImagesOf(list.m_pMoveImage)), RevisionsOf(ImagesOf(list.m_pDownImage)),
         RevisionsOf(ImagesOf(list.m_pFouceImage))});
}

void ListAccess::ComposeEntry(QKListCtrl& list, Entry& entry, OperationSink& sink, int scale) {
    const auto composeFrame = [&](const QKListCtrl::NineImages& frame, const CRect& rect) {
        const FrameImages images = ImagesOf(frame);
        Gdiplus::Image* const whole =
            scale > 0 ? list.m_state->frames.Find(images, rect.Size(), scale) : nullptr;
        if (whole)
            sink.Add(ImageOperation{whole, ToRectF(rect), WholeImage(whole)});
        else
            RecordNinePatch(images.data(), ToRectF(rect), sink);
    };
    const EntryRects rects = Entries(list).RectsOf(entry);
    const bool showsText = entry.ShowsText();
    // A selected entry with the focus has the frame twice: that is how the current one stands out.
    const bool focused = entry.focus == 0 && showsText;
    const CRect& frame = focused ? rects.focus : rects.hit;
    if (focused) composeFrame(list.m_pFouceImage, frame);
    if (entry.unselected == 0) composeFrame(list.m_pFouceImage, frame);
    if (entry.mouse == QKItemBase::QK_MOUSEON) composeFrame(list.m_pMoveImage, frame);
    if (entry.mouse == QKItemBase::QK_MOUSEDOWN) composeFrame(list.m_pDownImage, frame);

    if (Gdiplus::Image* const icon = entry.Icon())
        sink.Add(ImageOperation{icon, ToRectF(IconBox(Metrics(list), rects.cell)), WholeImage(icon)});

    if (!showsText || entry.Text().empty()) return;
    const int height = entry.focus == 0 ? rects.focus.Height() : rects.caption.Height();
    const Gdiplus::RectF place =
        ToRectF(CRect(rects.caption.TopLeft(), CSize(rects.caption.Width(), height)));
    Gdiplus::Image* caption = CaptionOf(
        list, entry, place, focused ? Gdiplus::StringTrimmingNone : Gdiplus::StringTrimmingEllipsisCharacter);
    if (caption) sink.Add(ImageOperation{caption, place, WholeImage(caption)});
}

void ListAccess::DescribeEntry(QKListCtrl& list, Entry& entry, DisplayList& inputs) {
    if (list.m_state->scroll.on) inputs.Add(View(list));
    std::optional<ListEntries::Picture> picture = Entries(list).KnownPicture(entry);
    if (picture) {
        Entries(list).Captions().NoteShown(entry);
    } else {
        OperationBounds bounds;
        ComposeEntry(list, entry, bounds, 0);
        picture = Entries(list).KeepPicture(entry, bounds.Touched());
    }
    if (!picture) {
        Recorder sink(inputs);
        ComposeEntry(list, entry, sink, 0);
        return inputs.Touches(Clipped(list, sink.Touched()));
    }
    inputs.Add(picture->number);
    inputs.Add(static_cast<std::uint64_t>(picture->place.x));
    inputs.Add(static_cast<std::uint64_t>(picture->place.y));
    inputs.Touches(Clipped(list, picture->touched));
}

// Rendered when it is first seen. One that was dropped for lack of room comes back as it was.
Gdiplus::Image* ListAccess::CaptionOf(QKListCtrl& list, Entry& entry, const Gdiplus::RectF& place,
                                      Gdiplus::StringTrimming trimming) {
    CaptionCache& captions = Entries(list).Captions();
    entry.Look();
    if (entry.Caption() && captions.ShowsText(entry)) {
        captions.NoteShown(entry);
        return entry.Caption();
    }
    if (!list.m_pFont) return nullptr;
    const SIZE size = {Whole(place.Width), Whole(place.Height)};
    const EntryLook::Rendering rendering = captions.RenderingFor(entry, {size, trimming, 0});
    list.m_format.SetTrimming(rendering.trimming);
    captions.Take(
        entry,
        RenderCaption(entry.Text(),
                      {*list.m_pFont, list.m_format, list.m_crText, list.m_crGlow, Gdiplus::PointF(1, 1), 3},
                      rendering.size),
        rendering);
    return entry.Caption();
}

void CQKDialogBase::DrawListCtrl(HDC dc, QKListCtrl* list) {
    m_pPainter->PaintList(dc, *list);
}
