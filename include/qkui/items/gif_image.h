/// @file
/// An image of several frames, stepped by a timer of the dialog.
#pragma once

#include <optional>
#include <vector>

#include <qkui/items/image.h>

/// A picture without frames or without delays is shown as a still one. The animation runs while the item is
/// registered, shown or not, until the dialog's window goes.
class PLATFORM_API QKGifImage : public QKImage {
  public:
    QKGifImage();

    ///@{
    /// As QKImage, then reads frames and delays. A picture that stores no delays leaves those of an earlier
    /// one in use: set the picture once.
    int SetImage(UINT id, LPCWSTR type);
    int SetImage(LPCWSTR path);
    int SetImage(UINT id, const platform::Utf8& type) { return SetImage(id, type.Utf16()); }
    int SetImage(const platform::Utf8& path) { return SetImage(path.Utf16()); }
    ///@}

    /// Starts over with the next step: after the first frame's delay, the second frame. `window` is that of
    /// the dialog that holds the item; `timer` is not 0 and the host's choice. Items with the same number
    /// step together. Without delays no timer is started: the host may run one of that number itself.
    void StartRun(UINT timer, HWND window);

    UINT GetTimerID() const { return m_nTimer; }
    int GetFrameIndex() const { return m_nFrame; }
    int GetFrameCount() const { return m_nFrames; }

    /// Goes on to the next frame, from the last to the first.
    void Step();
    /// How long the frame shown now stays, in milliseconds; nothing for a picture without delays.
    std::optional<UINT> GetFrameTime() const;

  private:
    void ReadFrames();

    int m_nFrame = 0;
    std::vector<Gdiplus::FrameDimension> m_dimensions;
    int m_nFrames = 0;
    UINT m_nTimer = 0;
    std::vector<std::uint32_t> m_delays;  ///< hundredths of a second, one per frame
};
