// The off-screen frame of a dialog, kept between paints, and what it needs to know to recompose only what
// would look different from the last time.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/gdi.h>
#include <platform/geometry.h>

// What one frame is drawn from: a list of steps in drawing order, each with the numbers that its picture
// depends on and the rectangle that it may touch. Equal numbers mean an equal picture.
class QKFrameInputs {
  public:
    void Clear();
    // Begins a step; Add and Touches belong to it.
    void Begin();
    void Add(std::uint64_t value) { values_.push_back(value); }
    void Add(const RECT& rect);
    void Touches(const RECT& rect);

    // Adds to `region` what differs between the two frames.
    static void Difference(const QKFrameInputs& before, const QKFrameInputs& after, HRGN region);

  private:
    struct Step {
        std::size_t first;  // of its numbers
        CRect touched;
    };
    bool SameStep(const QKFrameInputs& other, std::size_t step) const;
    std::size_t End(std::size_t step) const;

    std::vector<std::uint64_t> values_;
    std::vector<Step> steps_;
};

// The frame's pixels: a memory context with a bitmap in it, and the region of it that does not show the
// current inputs yet.
class QKFrame {
  public:
    QKFrame();
    ~QKFrame();
    QKFrame(const QKFrame&) = delete;
    QKFrame& operator=(const QKFrame&) = delete;

    // Makes the frame `width` by `height` pixels; a new size makes all of it stale. The memory of a bottom-up
    // frame is in reach (`Bits`). False without memory.
    bool Prepare(HDC compatible, int width, int height, bool bottomUp);

    HDC Context() const { return context_; }
    std::uint32_t* Bits() const { return static_cast<std::uint32_t*>(bits_); }
    int Width() const { return width_; }
    int Height() const { return height_; }

    // The inputs of the coming frame, to be filled in; then TakeInputs finds what they make stale.
    QKFrameInputs& NewInputs();
    void TakeInputs();

    void MakeAllStale();

    // Recomposing a part goes in this order: Begin clears the stale part of `wanted` (empty: all that is
    // stale) to transparent; Clip confines the context to it for drawing; End takes the clip off, and the
    // part counts as current. Begin and Clip answer false when there is nothing to do.
    bool BeginPart(HRGN wanted);
    bool ClipPart();
    void EndPart();
    HRGN Part() const { return part_; }
    bool IsWholePart() const;

    // Seal notes the pixels as they are; IsSealed is false once somebody drew on them since.
    void Seal();
    bool IsSealed() const;

  private:
    void Release();

    HDC context_;
    HBITMAP bitmap_;
    void* bits_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    bool bottomUp_ = false;
    std::uint64_t seal_ = 0;
    QKFrameInputs current_;
    QKFrameInputs coming_;
    HRGN stale_;
    HRGN part_;  // being recomposed
};
