#include <qkui/items/progress.h>

#include "items/arithmetic.h"
#include "items/item_access.h"

QKProgress::QKProgress() : QKItemBase(QKUI_PROGRESS) {}

void QKProgress::DestroyImag() {
    m_pBackImage.reset();
    m_pBarImage.reset();
}

void QKProgress::SetBarImage(UINT backId, UINT barId, LPCWSTR type) {
    m_pBackImage = LoadShared(backId, type);
    m_pBarImage = LoadShared(barId, type);
}

void QKProgress::SetBarImage(LPCWSTR backPath, LPCWSTR barPath) {
    m_pBackImage = LoadShared(backPath);
    m_pBarImage = LoadShared(barPath);
}

void QKProgress::SetMinMax(unsigned int minimum, unsigned int maximum) {
    m_nMin = minimum;
    m_nMax = maximum;
}

CRect QKProgress::GetFilledRect() const {
    if (m_nPos < m_nMin || m_nPos > m_nMax || m_nMin == m_nMax) return {};
    // In 32 bits: widths times ranges beyond four thousand million wrap.
    const unsigned int border = static_cast<unsigned int>(m_nBorder);
    const unsigned int room = static_cast<unsigned int>(m_nWidth) - 2 * border;
    const unsigned int product = room * (m_nPos - m_nMin);
    const double filled = static_cast<double>(product) / (m_nMax - m_nMin);
    return {CPoint(qkui::Sum(m_nX, m_nBorder), qkui::Sum(m_nY, m_nBorder)),
            CSize(static_cast<int>(static_cast<unsigned int>(filled)),
                  static_cast<int>(static_cast<unsigned int>(m_nHeight) - 2 * border))};
}

void qkui::ItemAccess::Record(const QKProgress& progress, OperationSink& sink) {
    if (Gdiplus::Image* const track = progress.m_pBackImage.get()) {
        Gdiplus::RectF place;
        progress.GetRect(&place);
        sink.Add({track, place, WholeImage(track)});
    }
    if (Gdiplus::Image* const bar = progress.m_pBarImage.get())
        sink.Add({bar, ToRectF(progress.GetFilledRect()), WholeImage(bar)});
}
