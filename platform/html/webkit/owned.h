// Ownership of what GLib and its relatives allocate.
#pragma once

#include <memory>
#include <string>

#include <glib-object.h>

namespace platform::html {

struct ObjectDeleter {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, ObjectDeleter>;

template <class T>
Owned<T> Share(T* object) {
    return Owned<T>(static_cast<T*>(g_object_ref(object)));
}

struct MemoryDeleter {
    void operator()(gpointer memory) const { g_free(memory); }
};
using OwnedText = std::unique_ptr<char, MemoryDeleter>;

inline std::string Text(const char* text) {
    return text ? text : "";
}

}  // namespace platform::html
