// Icons that follow the pointer over the desktop until they are put down.
#pragma once

#include <vector>

#include <QKUILib.h>

namespace desktop {

class Carry {
  public:
    // A press on an entry. Nothing moves before the pointer has gone far enough to mean it.
    void Arm(CPoint point);
    void Disarm() { *this = Carry(); }
    bool IsArmed() const { return armed_; }
    bool IsFar(CPoint point) const;
    bool IsUnderway() const { return !entries_.empty(); }

    // The entries stay the list's; none may leave it meanwhile.
    void Begin(std::vector<QKListItem*> entries);
    void MoveTo(CPoint point);
    void PutBack();
    // Where they are now. They are let go of.
    std::vector<QKListItem*> PutDown();

  private:
    bool armed_ = false;
    CPoint pressed_;
    CPoint at_;
    std::vector<QKListItem*> entries_;
};

}  // namespace desktop
