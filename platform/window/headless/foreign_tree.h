// The windows of other programs on the headless screen, as a test arranges them.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include <platform/geometry.h>

#include "platform/window/foreign_windows.h"

namespace platform {

class HeadlessSystem;

class ForeignTree final : public ForeignWindows {
  public:
    explicit ForeignTree(HeadlessSystem& system) : system_(system) {}

    struct Node {
        ForeignWindow window;
        ForeignId parent = kScreen;
        CRect place;  // on the screen
        std::uint32_t colour = 0;
        bool shown = true;
        std::vector<ForeignId> children;
    };

    // ---- the other programs
    ForeignId Add(Node node);
    // With all that lies in it.
    void Close(ForeignId window);
    const Node* Find(ForeignId window) const;
    // What can be seen of it: inside all that it lies in; empty when one of these is hidden, or gone.
    CRect VisiblePart(ForeignId window) const;
    // From the bottom up.
    template <class F>
    void ForEach(F f, ForeignId from = kScreen) const {
        const std::vector<ForeignId>& in = ChildrenOf(from);
        for (auto at = in.rbegin(); at != in.rend(); ++at) {
            f(*Find(*at));
            ForEach(f, *at);
        }
    }

    // ---- ForeignWindows
    std::vector<ForeignWindow> In(ForeignId parent) override;
    bool Exists(ForeignId window) override { return Find(window) != nullptr; }
    bool IsShown(ForeignId window) override { return !VisiblePart(window).IsRectEmpty(); }
    void SetShown(ForeignId window, bool shown) override;
    bool PutInto(HWND window, ForeignId parent) override;

  private:
    const std::vector<ForeignId>& ChildrenOf(ForeignId window) const;

    HeadlessSystem& system_;
    std::map<ForeignId, Node> nodes_;
    std::vector<ForeignId> onScreen_;
    ForeignId last_ = kScreen;
};

}  // namespace platform
