// The off-screen frame of a dialog, kept between paints, and what it needs to know to recompose only what
// would look different from the last time.
#pragma once

#include <cstdint>

#include <platform/gdi.h>

#include "dialog/frame_inputs.h"
#include "dialog/owned_region.h"
#include "dialog/underlay.h"

// The frame's pixels: a memory context with a bitmap in it, and the region of it that does not show the
// current inputs yet.
class QKFrame {
  public:
    QKFrame() = default;
    ~QKFrame();
    QKFrame(const QKFrame&) = delete;
    QKFrame& operator=(const QKFrame&) = delete;

    // Makes the frame `width` by `height` pixels; a new size makes all of it stale, and so does a host that
    // did not leave the context as it was. False without memory.
    bool Prepare(HDC compatible, int width, int height);

    HDC Context() const { return context_; }
    int Width() const { return width_; }
    int Height() const { return height_; }

    // Gives the context to a host as if it held a fresh surface that shows `under` (null: nothing) and has no
    // clip. Its pixels are the last frame's until somebody wants them: only then are they made what they are
    // to seem. TakeBack tells whether nobody did. Withdraw ends it, and forgets what lay under.
    void HandOut(const Gdiplus::Bitmap* under);
    bool TakeBack();
    void Withdraw();

    // The inputs of the coming frame, to be filled in; then TakeInputs finds what they make stale, along with
    // what the context's clip, the picture under the frame and drawing of others do.
    QKFrameInputs& NewInputs();
    void TakeInputs();

    // The rectangle outside of which no pixel has changed since the last call. Whoever could not show it
    // makes all stale.
    CRect TakeChanges();
    void MakeAllStale();

  private:
    friend class QKFrameRepair;

    static void StartOver(void* frame);
    void Release();
    void RestoreUnderlay(const QKRegion& region);

    HDC context_;
    HBITMAP bitmap_;
    void* bits_ = nullptr;  // top-down
    int width_ = 0;
    int height_ = 0;
    bool untouched_ = false;  // since HandOut
    QKUnderlay underlay_;
    // What the frame was last composed of and in.
    QKFrameInputs current_;
    std::uint64_t underlayRevision_ = 0;
    QKRegion drawable_;
    std::uint64_t seal_ = 0;  // the surface's revision; another one means that somebody else drew on it
    QKFrameInputs coming_;
    QKRegion stale_;  // inside the frame
    CRect changed_;   // repaired since TakeChanges
};

// Recomposing of what is stale in `wanted` (empty: everywhere). While it lasts, the context is confined to
// that part, which starts from what lies under the frame, and to the clip that it had; then it has that clip
// again. The part counts as current once it is Done.
class QKFrameRepair {
  public:
    QKFrameRepair(QKFrame& frame, HRGN wanted);
    ~QKFrameRepair();
    QKFrameRepair(const QKFrameRepair&) = delete;
    QKFrameRepair& operator=(const QKFrameRepair&) = delete;

    // False when nothing is stale.
    bool IsNeeded() const { return needed_; }
    void Done();

  private:
    QKFrame& frame_;
    QKRegion part_;
    QKRegion clip_;
    bool needed_ = false;
    bool hadClip_ = false;
};
