// What a surface was last composed of, and where it does not show that.
#pragma once

#include <cstdint>

#include <platform/gdi.h>

#include "dialog/frame_inputs.h"
#include "dialog/owned_region.h"

class QKFrameRecord {
  public:
    // The inputs of the coming frame, to be filled in; then TakeInputs finds what they make stale.
    QKFrameInputs& NewInputs();
    void TakeInputs();

    // What does not show the current inputs yet, and the whole of the surface that it lies in.
    const QKRegion& Stale() const { return stale_; }
    void AddStale(HRGN region);
    void MakeAllStale();
    void Resize(int width, int height);  // all is stale then
    int Width() const { return width_; }
    int Height() const { return height_; }

    // `part` of the surface behind `context` shows the current inputs now. Whoever draws on it afterwards
    // breaks the seal.
    void Seal(HRGN part, HDC context);
    void BreakSeal() { seal_ = 0; }
    bool IsSealed(HDC context) const { return seal_ != 0 && GetSurfaceRevision(context) == seal_; }

  private:
    CRect Whole() const { return {0, 0, width_, height_}; }

    int width_ = 0;
    int height_ = 0;
    QKFrameInputs current_;
    QKFrameInputs coming_;
    QKRegion stale_;
    std::uint64_t seal_ = 0;  // the surface's revision
};

// The part of a record's surface that is to be composed again. While it lasts, the context is confined to
// that part; then it has its clip again. The part counts as current once it is Done.
class QKFrameRepair {
  public:
    // What is stale in `wanted` (null: everywhere) is composed as far as `drawable` reaches.
    QKFrameRepair(QKFrameRecord& record, HDC context, HRGN wanted, HRGN drawable);
    ~QKFrameRepair();
    QKFrameRepair(const QKFrameRepair&) = delete;
    QKFrameRepair& operator=(const QKFrameRepair&) = delete;

    // False when nothing is stale there.
    bool IsNeeded() const { return needed_; }
    const QKRegion& Part() const { return part_; }
    void Done() { record_.Seal(part_, context_); }

  private:
    QKFrameRecord& record_;
    const HDC context_;
    QKRegion part_;
    QKRegion clip_;
    bool needed_ = false;
    bool hadClip_ = false;
};
