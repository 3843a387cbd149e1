// Wallpapers that are kept by a service of the session bus: Xfce's settings, and the desktop portal.
#include <fcntl.h>
#include <gio/gunixfdlist.h>
#include <unistd.h>

#include <mutex>
#include <vector>

#include "platform/shell/gobject.h"
#include "platform/shell/wallpaper.h"

namespace platform {

namespace {

constexpr int kAnswerTime = 2000;  // milliseconds

using Bus = GRef<GDBusConnection>;

Bus OpenBus() {
    return Bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
}

// ---- Xfce

class XfceWallpaper final : public Wallpaper {
  public:
    explicit XfceWallpaper(Bus bus) : bus_(std::move(bus)) {}

    // Each monitor and workspace has its own.
    bool Set(const std::string& path) override {
        const std::vector<Entry> entries = Entries();
        bool all = !entries.empty();
        for (const Entry& entry : entries)
            all = GVariantRef(Call("SetProperty", g_variant_new("(ssv)", kChannel, entry.property.c_str(),
                                                                g_variant_new_string(path.c_str())))) &&
                  all;
        return all;
    }
    std::optional<std::string> Get() override {
        const std::vector<Entry> entries = Entries();
        return entries.empty() ? std::nullopt : std::optional(entries.front().value);
    }

  private:
    struct Entry {
        std::string property, value;
    };
    static constexpr const char* kChannel = "xfce4-desktop";

    GVariant* Call(const char* method, GVariant* arguments) {
        return g_dbus_connection_call_sync(bus_.get(), "org.xfce.Xfconf", "/org/xfce/Xfconf",
                                           "org.xfce.Xfconf", method, arguments, nullptr,
                                           G_DBUS_CALL_FLAGS_NONE, kAnswerTime, nullptr, nullptr);
    }
    std::vector<Entry> Entries() {
        std::vector<Entry> entries;
        const GVariantRef answer(Call("GetAllProperties", g_variant_new("(ss)", kChannel, "/backdrop")));
        if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(a{sv})"))) return entries;
        const GVariantRef all(g_variant_get_child_value(answer.get(), 0));
        GVariantIter iterator;
        g_variant_iter_init(&iterator, all.get());
        const char* name = nullptr;
        GVariant* value = nullptr;
        while (g_variant_iter_next(&iterator, "{&sv}", &name, &value)) {
            const GVariantRef kept(value);
            if (g_str_has_suffix(name, "/last-image") && g_variant_is_of_type(value, G_VARIANT_TYPE_STRING))
                entries.push_back({name, g_variant_get_string(value, nullptr)});
        }
        return entries;
    }

    Bus bus_;
};

// ---- the portal

// It cannot be asked what it shows, so this remembers what it was given.
struct Given {
    std::mutex mutex;
    std::string path;
};

Given& LastGiven() {
    static Given* const given = new Given;
    return *given;
}

class PortalWallpaper final : public Wallpaper {
  public:
    explicit PortalWallpaper(Bus bus) : bus_(std::move(bus)) {}

    bool Set(const std::string& path) override {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) return false;
        const GRef<GUnixFDList> files(g_unix_fd_list_new());
        const int index = g_unix_fd_list_append(files.get(), file, nullptr);
        close(file);
        GVariantBuilder options;
        g_variant_builder_init(&options, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&options, "{sv}", "show-preview", g_variant_new_boolean(FALSE));
        g_variant_builder_add(&options, "{sv}", "set-on", g_variant_new_string("background"));
        const GVariantRef answer(g_dbus_connection_call_with_unix_fd_list_sync(
            bus_.get(), "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
            "org.freedesktop.portal.Wallpaper", "SetWallpaperFile",
            g_variant_new("(sha{sv})", "", index, &options), nullptr, G_DBUS_CALL_FLAGS_NONE, kAnswerTime,
            files.get(), nullptr, nullptr, nullptr));
        if (!answer) return false;
        const std::lock_guard lock(LastGiven().mutex);
        LastGiven().path = path;
        return true;
    }
    std::optional<std::string> Get() override {
        const std::lock_guard lock(LastGiven().mutex);
        return LastGiven().path;
    }

  private:
    Bus bus_;
};

}  // namespace

std::unique_ptr<Wallpaper> MakeXfceWallpaper(const std::string& desktops) {
    if (!NamesDesktop(desktops, "XFCE")) return nullptr;
    Bus bus = OpenBus();
    return bus ? std::make_unique<XfceWallpaper>(std::move(bus)) : nullptr;
}

std::unique_ptr<Wallpaper> MakePortalWallpaper() {
    Bus bus = OpenBus();
    return bus ? std::make_unique<PortalWallpaper>(std::move(bus)) : nullptr;
}

}  // namespace platform
