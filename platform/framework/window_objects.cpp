#include "platform/framework/window_objects.h"

#include <cstdint>
#include <unordered_map>

#include <platform/framework.h>

namespace platform {
namespace {

// Objects with static storage outlive the thread's own storage. Whether the table is still there is kept
// apart from it, in a flag that is never destroyed.
enum class TableState { NotMade, Ready, Gone };
thread_local TableState tableState = TableState::NotMade;

struct Table {
    Table() { tableState = TableState::Ready; }
    // What is left belongs to objects that outlive the thread; they must not reach for their windows then.
    ~Table() {
        tableState = TableState::Gone;
        for (const auto& [handle, object] : objects)
            object->m_hWnd = nullptr;
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    std::unordered_map<std::uint64_t, CWnd*> objects;
};

Table* ThreadTable() {
    if (tableState == TableState::Gone) return nullptr;
    thread_local Table table;
    return &table;
}

}  // namespace

CWnd* ObjectOf(HWND window) {
    const Table* table = ThreadTable();
    if (!table) return nullptr;
    const auto found = table->objects.find(window.ToParam());
    return found == table->objects.end() ? nullptr : found->second;
}

void BindObject(HWND window, CWnd* object) {
    if (Table* table = ThreadTable()) table->objects[window.ToParam()] = object;
}

void UnbindObject(HWND window) {
    if (Table* table = ThreadTable()) table->objects.erase(window.ToParam());
}

}  // namespace platform
