// What a list keeps besides its settings.
#pragma once

#include <memory>

#include "list/frame_cache.h"
#include "list/list_calls.h"
#include "list/list_entries.h"
#include "list/list_keys.h"
#include "list/list_scroll.h"

namespace qkui {

struct ListState {
    std::shared_ptr<ListEntries> entries;  // shared by copies of the list
    std::shared_ptr<const char> life =
        std::make_shared<const char>();  // until the list ends, or is another's copy
    FrameCache frames;
    ListScroll scroll;
    ListKeys keys;
    ListCalls calls;
};

}  // namespace qkui
