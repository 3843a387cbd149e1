// The wallpaper of desktop environments that keep it in GSettings.
#include "platform/shell/gobject.h"
#include "platform/shell/wallpaper.h"

namespace platform {

namespace {

struct Place {
    const char* desktop;  // as XDG_CURRENT_DESKTOP says it
    const char* schema;
    const char* key;
    const char* darkKey;  // or null
    bool isUri;
};

constexpr const char* kGnome = "org.gnome.desktop.background";
constexpr Place kPlaces[] = {
    {"GNOME", kGnome, "picture-uri", "picture-uri-dark", true},
    {"Unity", kGnome, "picture-uri", "picture-uri-dark", true},
    {"Budgie", kGnome, "picture-uri", "picture-uri-dark", true},
    {"Pantheon", kGnome, "picture-uri", "picture-uri-dark", true},
    {"X-Cinnamon", "org.cinnamon.desktop.background", "picture-uri", nullptr, true},
    {"Cinnamon", "org.cinnamon.desktop.background", "picture-uri", nullptr, true},
    {"MATE", "org.mate.background", "picture-filename", nullptr, false},
};
constexpr const char* kOptions = "picture-options";

using SchemaRef = std::unique_ptr<GSettingsSchema, Freed<g_settings_schema_unref>>;

// Asking for settings that are not installed ends the program, so this is asked first.
SchemaRef SchemaOf(const char* name) {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    return SchemaRef(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

class SettingsWallpaper final : public Wallpaper {
  public:
    SettingsWallpaper(const Place& place, SchemaRef schema)
        : place_(place),
          schema_(std::move(schema)),
          settings_(g_settings_new_full(schema_.get(), nullptr, nullptr)) {}

    bool Set(const std::string& path) override {
        const GText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
        const char* value = place_.isUri ? uri.get() : path.c_str();
        if (!value || !g_settings_set_string(settings_.get(), place_.key, value)) return false;
        if (HasDark()) g_settings_set_string(settings_.get(), place_.darkKey, value);
        if (HasKey(kOptions) && Text(kOptions) == "none")
            g_settings_set_string(settings_.get(), kOptions, "zoom");
        g_settings_sync();
        return Text(place_.key) == value;
    }
    std::optional<std::string> Get() override {
        if (HasKey(kOptions) && Text(kOptions) == "none") return std::string();
        const std::string value = Text(IsDark() && HasDark() ? place_.darkKey : place_.key);
        if (!place_.isUri || value.empty()) return value;
        const GText path(g_filename_from_uri(value.c_str(), nullptr, nullptr));
        return path ? std::optional<std::string>(path.get()) : std::nullopt;
    }

  private:
    bool HasKey(const char* key) const { return g_settings_schema_has_key(schema_.get(), key) != FALSE; }
    bool HasDark() const { return place_.darkKey && HasKey(place_.darkKey); }
    std::string Text(const char* key) const {
        return GText(g_settings_get_string(settings_.get(), key)).get();
    }
    // The desktop shows the other of its two wallpapers.
    static bool IsDark() {
        const SchemaRef schema = SchemaOf("org.gnome.desktop.interface");
        if (!schema || !g_settings_schema_has_key(schema.get(), "color-scheme")) return false;
        const GRef<GSettings> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
        const GText chosen(g_settings_get_string(settings.get(), "color-scheme"));
        return std::string(chosen.get()) == "prefer-dark";
    }

    const Place& place_;
    SchemaRef schema_;
    GRef<GSettings> settings_;
};

}  // namespace

std::unique_ptr<Wallpaper> MakeSettingsWallpaper(const std::string& desktops) {
    for (const Place& place : kPlaces) {
        if (!NamesDesktop(desktops, place.desktop)) continue;
        SchemaRef schema = SchemaOf(place.schema);
        if (schema && g_settings_schema_has_key(schema.get(), place.key))
            return std::make_unique<SettingsWallpaper>(place, std::move(schema));
    }
    return nullptr;
}

}  // namespace platform
