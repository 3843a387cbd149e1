#include "platform/window/core/file_drop.h"

#include "platform/ole/file_block.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/display.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// The deepest window at a point, given in the coordinates of one around it.
const Window& DeepestAt(const Window& window, CPoint point) {
    for (std::size_t i = window.children.size(); i-- > 0;) {
        const Window* child = Peek(window.children[i]);
        if (!child || !child->IsShown() || child->type->letsPointerThrough) continue;
        const CPoint inside(point.x - child->rect.left, point.y - child->rect.top);
        const bool there = !child->shape || child->shape->Contains(inside.x, inside.y);
        if (there && child->rect.PtInRect(point)) return DeepestAt(*child, inside);
    }
    return window;
}

// The one there that takes files, or the closest around it that does.
const Window* TakerAt(HWND topLevel, POINT screen) {
    const Window* top = Peek(topLevel);
    // What lies in another program's window is that program's to speak for.
    if (!top || top->host || !IsOnDisplay(*top)) return nullptr;
    const CPoint origin = ScreenOrigin(*top);
    const Window* at = &DeepestAt(*top, CPoint(screen.x - origin.x, screen.y - origin.y));
    if (!IsEnabledInTree(*at)) return nullptr;
    while (at && !(at->exStyle & WS_EX_ACCEPTFILES))
        at = at->IsChild() ? Peek(at->parent) : nullptr;
    return at;
}

DROPEFFECT EffectsOf(const Window& taker, DROPEFFECT wanted) {
    const DROPEFFECT performs = taker.movesFiles ? DROPEFFECT_COPY | DROPEFFECT_MOVE : DROPEFFECT_COPY;
    return wanted & performs ? wanted & performs : DWORD{DROPEFFECT_COPY};
}

// Says what became of a drop, however that ends. The window system that it came from may be gone by then.
class DropEnd {
  public:
    explicit DropEnd(std::uint64_t drop) : drop_(drop), serial_(SystemSerial()) {}
    ~DropEnd() {
        WindowSystem* system = SystemSerial() == serial_ ? System() : nullptr;
        if (FileReceiver* receiver = system ? system->FileDrops() : nullptr)
            receiver->Finish(drop_, performed);
    }
    DropEnd(const DropEnd&) = delete;
    DropEnd& operator=(const DropEnd&) = delete;
    DROPEFFECT performed = DROPEFFECT_NONE;

  private:
    std::uint64_t drop_;
    unsigned serial_;
};

}  // namespace

DROPEFFECT EffectsOfDrop(HWND topLevel, POINT screen, DROPEFFECT wanted) {
    const Window* taker = TakerAt(topLevel, screen);
    return taker ? EffectsOf(*taker, wanted) : DWORD{DROPEFFECT_NONE};
}

void DeliverDrop(HWND topLevel, const FileDrop& drop) {
    DropEnd end(drop.id);
    const Window* taker = TakerAt(topLevel, drop.screen);
    if (!taker) return;
    const CPoint origin = ScreenOrigin(*taker);
    const HGLOBAL block = MakeFileBlock(drop.paths, {drop.screen.x - origin.x, drop.screen.y - origin.y});
    if (!block) return;
    const DROPEFFECT effects = EffectsOf(*taker, drop.wanted);
    const LRESULT result = CallProcedure(taker->handle, WM_DROPFILES, static_cast<WPARAM>(block.ToParam()),
                                         static_cast<LPARAM>(effects));
    const bool moved = (effects & DROPEFFECT_MOVE) != 0 && result == DROPEFFECT_MOVE;
    end.performed = moved ? DROPEFFECT_MOVE : DROPEFFECT_COPY;
}

}  // namespace platform

using namespace platform;

void DragAcceptFiles(HWND handle, BOOL accept) {
    Window* window = Require(handle);
    if (!window) return;
    const DWORD others = window->exStyle & ~DWORD{WS_EX_ACCEPTFILES};
    SetWindowLongPtrW(handle, GWL_EXSTYLE,
                      static_cast<LONG_PTR>(accept ? others | WS_EX_ACCEPTFILES : others));
}

void DragAcceptMoves(HWND handle, BOOL accept) {
    if (Window* window = Require(handle)) window->movesFiles = accept != FALSE;
}
