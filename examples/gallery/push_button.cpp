#include "examples/gallery/push_button.h"

#include <utility>

#include "examples/gallery/skin_files.h"

namespace gallery {

void PushButton::Load(UINT picture, int frames) {
    SetImage(picture, u"PNG", static_cast<QKBT_IMGS>(frames), QKBT_VERTICAL);
}

void PushButton::Load(const char* file, int frames, QKBT_TYPE layout) {
    SetImage(SkinFile(file), static_cast<QKBT_IMGS>(frames), layout);
}

void PushButton::PlaceAt(int x, int y) {
    SetRect(x, y, 0, 0);
    CRect frame;
    GetButtonRect(frame);
    SetRect(x, y, frame.Width(), frame.Height());
}

CRect PushButton::Place() const {
    CRect place;
    GetRect(&place);
    return place;
}

void PushButton::OnClick(std::function<void()> action) {
    action_ = std::move(action);
    QKCallbacks callbacks;
    callbacks.pfnClick = [](LPVOID self) {
        // The action may delete the button.
        const std::function<void()> copy = static_cast<PushButton*>(self)->action_;
        copy();
    };
    callbacks.pArgument = this;
    SetCallBack(&callbacks);
}

}  // namespace gallery
