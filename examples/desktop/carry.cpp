#include "examples/desktop/carry.h"

#include <cstdlib>
#include <utility>

#include "examples/desktop/icon_list.h"

namespace desktop {
namespace {

constexpr int kThreshold = 6;  // pixels: hands shake

}  // namespace

void Carry::Arm(CPoint point) {
    Disarm();
    armed_ = true;
    pressed_ = at_ = point;
}

bool Carry::IsFar(CPoint point) const {
    return std::abs(point.x - pressed_.x) > kThreshold || std::abs(point.y - pressed_.y) > kThreshold;
}

void Carry::Begin(std::vector<QKListItem*> entries) {
    entries_ = std::move(entries);
}

void Carry::MoveTo(CPoint point) {
    for (QKListItem* entry : entries_)
        IconList::Shift(*entry, CSize(point.x - at_.x, point.y - at_.y));
    at_ = point;
}

void Carry::PutBack() {
    MoveTo(pressed_);
    Disarm();
}

std::vector<QKListItem*> Carry::PutDown() {
    std::vector<QKListItem*> entries = std::move(entries_);
    Disarm();
    return entries;
}

}  // namespace desktop
