// Owners for what GLib and GDK-Pixbuf hand out.
#pragma once

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gio/gio.h>

#include <memory>

namespace desktop {

struct GlibRelease {
    void operator()(char* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    template <class Object>
    void operator()(Object* object) const {
        g_object_unref(object);
    }
};

// Text from g_malloc, GKeyFile, and every kind of GObject.
template <class T>
using Owned = std::unique_ptr<T, GlibRelease>;

// A source of the main context, taken away with its owner. Zero while there is none.
class Source {
  public:
    Source() = default;
    ~Source() { Stop(); }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    explicit operator bool() const { return id_ != 0; }
    void Start(guint id) {
        Stop();
        id_ = id;
    }
    void Stop() {
        if (id_ != 0) g_source_remove(id_);
        id_ = 0;
    }
    // To be called by a source that ends by itself.
    void Ended() { id_ = 0; }

  private:
    guint id_ = 0;
};

}  // namespace desktop
