#include "platform/window/headless/foreign_tree.h"

#include "platform/window/headless/headless_system.h"

namespace platform {

const ForeignTree::Node* ForeignTree::Find(ForeignId window) const {
    const auto found = nodes_.find(window);
    return found == nodes_.end() ? nullptr : &found->second;
}

const std::vector<ForeignId>& ForeignTree::ChildrenOf(ForeignId window) const {
    static const std::vector<ForeignId> none;
    if (window == kScreen) return onScreen_;
    const Node* node = Find(window);
    return node ? node->children : none;
}

ForeignId ForeignTree::Add(Node node) {
    const ForeignId id = ++last_;
    node.window.id = id;
    const ForeignId parent = node.parent;
    nodes_.emplace(id, std::move(node));
    (parent == kScreen ? onScreen_ : nodes_.at(parent).children).push_back(id);
    return id;
}

void ForeignTree::Close(ForeignId window) {
    const auto found = nodes_.find(window);
    if (found == nodes_.end()) return;
    const std::vector<ForeignId> children = found->second.children;
    for (const ForeignId child : children)
        Close(child);
    const ForeignId parent = found->second.parent;
    std::erase(parent == kScreen ? onScreen_ : nodes_.at(parent).children, window);
    nodes_.erase(found);
    system_.PutOutOf(window);
}

CRect ForeignTree::VisiblePart(ForeignId window) const {
    const Node* node = Find(window);
    if (!node || !node->shown) return CRect(0, 0, 0, 0);
    CRect part = node->place;
    while (node->parent != kScreen) {
        node = Find(node->parent);
        CRect inside;
        if (!node->shown || !inside.IntersectRect(part, node->place)) return CRect(0, 0, 0, 0);
        part = inside;
    }
    return part;
}

std::vector<ForeignWindow> ForeignTree::In(ForeignId parent) {
    std::vector<ForeignWindow> all;
    for (const ForeignId child : ChildrenOf(parent))
        all.push_back(Find(child)->window);
    return all;
}

void ForeignTree::SetShown(ForeignId window, bool shown) {
    const auto found = nodes_.find(window);
    if (found == nodes_.end()) return;
    found->second.shown = shown;
    system_.HostsChanged();
}

bool ForeignTree::PutInto(HWND window, ForeignId parent) {
    return (parent == kScreen || Exists(parent)) && system_.SetHost(window, parent);
}

}  // namespace platform
