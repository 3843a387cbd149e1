// Ownership of what GLib allocates.
#pragma once

#include <gio/gio.h>

#include <memory>

namespace platform {

template <auto Free>
struct Freed {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
template <class T>
using GRef = std::unique_ptr<T, Freed<g_object_unref>>;
using GText = std::unique_ptr<char, Freed<g_free>>;
using GVariantRef = std::unique_ptr<GVariant, Freed<g_variant_unref>>;
using GKeyFileRef = std::unique_ptr<GKeyFile, Freed<g_key_file_unref>>;

}  // namespace platform
