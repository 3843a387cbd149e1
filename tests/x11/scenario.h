// One story, told on any window system: dialogs of every kind, acted upon step by step. What it logs and
// shows must not depend on where it is played.
#pragma once

#include <QKUILib.h>

#include <string>
#include <vector>

namespace scenario {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;

// Where the story is played: the user's hands and eyes. Each act returns once its effects are there.
class Stage {
  public:
    virtual ~Stage() = default;
    virtual void MovePointer(int x, int y) = 0;
    virtual void Button(int button, bool down) = 0;
    virtual void DoubleClick() = 0;
    virtual void Key(UINT virtualKey, const std::string& name) = 0;
    // Until nothing waits and the screen shows everything.
    virtual void Settle() = 0;
    // 0x00RRGGBB, top-down, of the whole screen.
    virtual std::vector<std::uint32_t> Screen() = 0;
    // What the library presents for a window: premultiplied ARGB, top-down. On a real screen only where a
    // compositor keeps the window's pixels.
    virtual std::vector<std::uint32_t> Window(HWND window, const std::string& title) = 0;
};

struct Told {
    std::string log;
    std::vector<std::string> titles;  // of the pictures
    std::vector<std::vector<std::uint32_t>> pictures;
};

Told Play(Stage& stage);

// Another one: a dialog of a style with items of every kind, and what the pointer makes of some. Its pictures
// show the screen, or in LAY_OPAQUE the window by itself.
Told PlayItems(Stage& stage, QKLayStyle style);

// And one of an icon list under the pointer: hover, clicks, a rubber band, a double click.
Told PlayList(Stage& stage);

// A file for what was told, so that two processes can compare.
bool Save(const Told& told, const std::string& path);
bool Load(Told& told, const std::string& path);

}  // namespace scenario
