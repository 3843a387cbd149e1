#include <qkui/items/gif_image.h>

#include <algorithm>
#include <cstring>

#include <platform/window.h>

QKGifImage::QKGifImage() : QKImage(QKUI_GIFIMAGE) {}

int QKGifImage::SetImage(UINT id, LPCWSTR type) {
    const int loaded = QKImage::SetImage(id, type);
    if (loaded) ReadFrames();
    return loaded;
}

int QKGifImage::SetImage(LPCWSTR path) {
    const int loaded = QKImage::SetImage(path);
    if (loaded) ReadFrames();
    return loaded;
}

void QKGifImage::ReadFrames() {
    m_dimensions.resize(m_pImage->GetFrameDimensionsCount());
    if (m_dimensions.empty()) return;
    m_pImage->GetFrameDimensionsList(m_dimensions.data(), static_cast<UINT>(m_dimensions.size()));
    m_nFrames = static_cast<int>(m_pImage->GetFrameCount(&m_dimensions.front()));

    const UINT size = m_pImage->GetPropertyItemSize(Gdiplus::PropertyTagFrameDelay);
    if (size == 0) return;
    // The record at the start of the block points to the values behind it.
    std::vector<Gdiplus::PropertyItem> block(size / sizeof(Gdiplus::PropertyItem) + 1);
    if (m_pImage->GetPropertyItem(Gdiplus::PropertyTagFrameDelay, size, block.data()) != Gdiplus::Ok) return;
    m_delays.resize(block.front().length / sizeof(std::uint32_t));
    std::memcpy(m_delays.data(), block.front().value, m_delays.size() * sizeof(std::uint32_t));
}

void QKGifImage::StartRun(UINT timer, HWND window) {
    m_nTimer = timer;
    if (timer == 0 || !window) return;
    m_nFrame = 0;
    if (const std::optional<UINT> time = GetFrameTime()) SetTimer(window, timer, *time, nullptr);
}

void QKGifImage::Step() {
    if (++m_nFrame >= m_nFrames) m_nFrame = 0;
    if (m_pImage && !m_dimensions.empty())
        m_pImage->SelectActiveFrame(&m_dimensions.front(), static_cast<UINT>(m_nFrame));
}

std::optional<UINT> QKGifImage::GetFrameTime() const {
    if (m_delays.empty()) return std::nullopt;
    // The delays may be an earlier picture's, of fewer frames.
    const std::size_t frame = std::min(static_cast<std::size_t>(m_nFrame), m_delays.size() - 1);
    return m_delays[frame] * 10;
}
