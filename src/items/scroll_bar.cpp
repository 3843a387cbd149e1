#include <qkui/items/scroll_bar.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "items/arithmetic.h"
#include "items/item_access.h"

namespace {

// What stands for the two caps where the thumb takes the pointer.
constexpr int kThumbExtension = 20;

// 32-bit numbers that wrap.
int Difference(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b));
}

int Product(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) * static_cast<unsigned int>(b));
}

}  // namespace

QKVScrollBar::QKVScrollBar() : QKItemBase(QKUI_VSCROLLBAR) {}

void QKVScrollBar::DestroyImag() {
    m_pTrackImage.reset();
    m_pMiddleImage.reset();
    m_pTopImage.reset();
    m_pBottomImage.reset();
}

void QKVScrollBar::SetBarImage(UINT firstId, UINT secondId, UINT, LPCWSTR type) {
    DestroyImag();
    m_pTopImage = LoadShared(firstId, type);
    m_pMiddleImage = LoadShared(secondId, type);
    m_pBottomImage = LoadShared(firstId, type);
}

void QKVScrollBar::SetBarImage(LPCWSTR topPath, LPCWSTR middlePath, LPCWSTR bottomPath) {
    DestroyImag();
    m_pTopImage = LoadShared(topPath);
    m_pMiddleImage = LoadShared(middlePath);
    m_pBottomImage = LoadShared(bottomPath);
}

int QKVScrollBar::SetTrackImage(UINT id, LPCWSTR type) {
    m_pTrackImage = LoadShared(id, type);
    return m_pTrackImage != nullptr;
}

int QKVScrollBar::SetTrackImage(LPCWSTR path) {
    m_pTrackImage = LoadShared(path);
    return m_pTrackImage != nullptr;
}

int QKVScrollBar::FrameHeight(const Picture& strip) const {
    return static_cast<int>(strip->GetHeight() / m_nFrames);
}

void QKVScrollBar::SetBarLength(int visible, int total) {
    m_nVisible = visible;
    m_nTotal = total;
    if (total <= 0) return;
    int length = m_nHeight;
    if (HasCaps()) length = Difference(length, FrameHeight(m_pTopImage) + FrameHeight(m_pBottomImage));
    m_nMax = Product(Difference(total, visible), length) / total;
    m_nBarHeight = Difference(length, m_nMax);
    if (m_scrollPos) SetScrollPos(*m_scrollPos);
}

void QKVScrollBar::SetThumb(int position) {
    m_nPos = std::max(std::min(position, m_nMax), 0);
}

void QKVScrollBar::SetBarPos(int position) {
    m_scrollPos.reset();
    SetThumb(position);
}

int QKVScrollBar::GetScrollMax() const {
    return static_cast<int>(
        std::clamp(std::int64_t{m_nTotal} - m_nVisible, std::int64_t{0}, std::int64_t{INT32_MAX}));
}

void QKVScrollBar::SetScrollPos(int position) {
    const int most = GetScrollMax();
    m_scrollPos = std::clamp(position, 0, most);
    // To the nearest pixel.
    SetThumb(most ? static_cast<int>((std::int64_t{m_nMax} * *m_scrollPos + most / 2) / most) : 0);
}

int QKVScrollBar::GetScrollPos() const {
    if (m_scrollPos) return *m_scrollPos;
    if (m_nMax <= 0) return 0;
    const std::int64_t position = (std::int64_t{GetScrollMax()} * m_nPos + m_nMax / 2) / m_nMax;
    return static_cast<int>(std::min<std::int64_t>(position, GetScrollMax()));
}

void QKVScrollBar::SetScrollCallBack(std::function<void(int position)> scrolled) {
    m_pScrolled = scrolled ? std::make_shared<const std::function<void(int)>>(std::move(scrolled)) : nullptr;
}

int QKVScrollBar::GetPos() const {
    if (m_nMax == 0) return 0;
    const double position = static_cast<double>(Difference(m_nTotal, m_nVisible)) / m_nMax * m_nPos;
    return static_cast<int>(std::clamp(position, -2147483648.0, 2147483647.0));
}

int QKVScrollBar::ptOnBar(const POINT& point) const {
    const CRect thumb(CPoint(m_nX, qkui::Sum(m_nY, m_nPos)),
                      CSize(m_nWidth, qkui::Sum(m_nBarHeight, kThumbExtension)));
    return thumb.PtInRect(point);
}

void QKVScrollBar::SetVBarCallBack(const QKVScrollCallbacks* callbacks) {
    m_pArgument = callbacks ? callbacks->pArgument : nullptr;
    m_pfnPosition = callbacks ? callbacks->pfnPosition : nullptr;
}

void qkui::ItemAccess::Record(const QKVScrollBar& bar, OperationSink& sink) {
    if (Gdiplus::Image* const track = bar.m_pTrackImage.get()) {
        Gdiplus::RectF place;
        bar.GetRect(&place);
        sink.Add({track, place, WholeImage(track)});
    }
    if (bar.HasCaps() && bar.m_pMiddleImage && bar.m_nPos >= 0 && bar.m_nPos <= bar.m_nMax && bar.m_nMax > 0)
        RecordThumb(bar, sink);
}

// All three parts show the frame at the middle strip's offset, and none is centred on its own width: cap
// strips are as high and wide as the middle's. A middle wider than the bar lands far outside of it.
void qkui::ItemAccess::RecordThumb(const QKVScrollBar& bar, OperationSink& sink) {
    const unsigned int height = bar.m_pMiddleImage->GetHeight();
    const unsigned int offset = bar.m_nStatus == QKItemBase::QK_MOUSEON     ? height / 3
                                : bar.m_nStatus == QKItemBase::QK_MOUSEDOWN ? 2 * height / 3
                                                                            : 0;
    const unsigned int margin = static_cast<unsigned int>(bar.m_nWidth) - bar.m_pMiddleImage->GetWidth();
    const auto left = static_cast<int>(static_cast<unsigned int>(bar.m_nX) + (margin >> 1U));
    int top = Sum(bar.m_nY, bar.m_nPos);
    const auto add = [&](const auto& strip, int drawn, int cut, Gdiplus::WrapMode wrap) {
        const auto width = static_cast<float>(strip->GetWidth());
        sink.Add({strip.get(),
                  {static_cast<float>(left), static_cast<float>(top), width, static_cast<float>(drawn)},
                  {0, static_cast<float>(offset), width, static_cast<float>(cut)},
                  wrap});
        top = Sum(top, drawn);
    };
    const int topCap = bar.FrameHeight(bar.m_pTopImage);
    const int bottomCap = bar.FrameHeight(bar.m_pBottomImage);
    add(bar.m_pTopImage, topCap, topCap, Gdiplus::WrapModeClamp);
    // A pixel short of the frame, so that the stretch never mixes in the next one.
    add(bar.m_pMiddleImage, bar.m_nBarHeight, bar.FrameHeight(bar.m_pMiddleImage) - 1,
        Gdiplus::WrapModeTileFlipY);
    add(bar.m_pBottomImage, bottomCap, bottomCap, Gdiplus::WrapModeClamp);
}
