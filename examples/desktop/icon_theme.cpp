#include "examples/desktop/icon_theme.h"

#include <algorithm>
#include <climits>

#include "examples/desktop/glib.h"

namespace desktop {
namespace {

constexpr const char* kCommonTheme = "Adwaita";
constexpr const char* kLastTheme = "hicolor";  // every theme builds on it

std::string Join(const std::string& folder, const std::string& name) {
    return folder + "/" + name;
}

std::string FromSettings() {
    constexpr const char* kSchema = "org.gnome.desktop.interface";
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    GSettingsSchema* schema = source ? g_settings_schema_source_lookup(source, kSchema, TRUE) : nullptr;
    if (!schema) return {};
    const bool known = g_settings_schema_has_key(schema, "icon-theme");
    g_settings_schema_unref(schema);
    if (!known) return {};
    const Owned<GSettings> settings(g_settings_new(kSchema));
    return Owned<char>(g_settings_get_string(settings.get(), "icon-theme")).get();
}

std::string FromFile() {
    const Owned<GKeyFile> keys(g_key_file_new());
    const std::string file = Join(g_get_user_config_dir(), "gtk-3.0/settings.ini");
    if (!g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr)) return {};
    const Owned<char> name(g_key_file_get_string(keys.get(), "Settings", "gtk-icon-theme-name", nullptr));
    return name ? name.get() : "";
}

std::vector<std::string> Lines(GKeyFile* keys, const char* key) {
    std::vector<std::string> lines;
    char** texts = g_key_file_get_string_list(keys, "Icon Theme", key, nullptr, nullptr);
    for (char** text = texts; text && *text; ++text)
        lines.emplace_back(*text);
    g_strfreev(texts);
    return lines;
}

int Number(GKeyFile* keys, const std::string& group, const char* key, int otherwise) {
    GError* raw = nullptr;
    const int number = g_key_file_get_integer(keys, group.c_str(), key, &raw);
    const Owned<GError> error(raw);
    return error ? otherwise : number;
}

// Smaller is better.
int Distance(int smallest, int largest, int size) {
    if (size < smallest) return smallest - size;                // it is made smaller
    return size <= largest ? 0 : INT_MAX / 2 + size - largest;  // it is blown up
}

std::string FileIn(const std::string& folder, const std::string& name) {
    for (const char* ending : {".png", ".svg"}) {
        std::string path = Join(folder, name + ending);
        if (g_file_test(path.c_str(), G_FILE_TEST_IS_REGULAR)) return path;
    }
    return {};
}

}  // namespace

IconTheme::IconTheme() {
    roots_.push_back(Join(g_get_user_data_dir(), "icons"));
    roots_.push_back(Join(g_get_home_dir(), ".icons"));
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        roots_.push_back(Join(*folder, "icons"));
    std::vector<std::string> seen;
    for (const std::string& name : {FromSettings(), FromFile(), std::string(kCommonTheme)}) {
        if (!name.empty()) Load(name, seen);
    }
    Load(kLastTheme, seen);
}

void IconTheme::Load(const std::string& name, std::vector<std::string>& seen) {
    if (std::find(seen.begin(), seen.end(), name) != seen.end()) return;
    seen.push_back(name);
    const Owned<GKeyFile> keys(g_key_file_new());
    g_key_file_set_list_separator(keys.get(), ',');
    const auto described = [&](const std::string& root) {
        const std::string file = Join(Join(root, name), "index.theme");
        return g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) != FALSE;
    };
    if (std::none_of(roots_.begin(), roots_.end(), described)) return;

    Theme theme;
    for (const std::string& folder : Lines(keys.get(), "Directories")) {
        if (Number(keys.get(), folder, "Scale", 1) != 1) continue;
        const int size = Number(keys.get(), folder, "Size", 0);
        const Owned<char> type(g_key_file_get_string(keys.get(), folder.c_str(), "Type", nullptr));
        const bool scalable = type && std::string(type.get()) == "Scalable";
        const int smallest = scalable ? Number(keys.get(), folder, "MinSize", size) : size;
        const int largest = scalable ? Number(keys.get(), folder, "MaxSize", size) : size;
        for (const std::string& root : roots_) {
            const std::string path = Join(Join(root, name), folder);
            if (g_file_test(path.c_str(), G_FILE_TEST_IS_DIR)) theme.push_back({path, smallest, largest});
        }
    }
    themes_.push_back(std::move(theme));
    for (const std::string& parent : Lines(keys.get(), "Inherits"))
        if (parent != kLastTheme) Load(parent, seen);
}

std::string IconTheme::Find(const std::vector<std::string>& names, int size) const {
    for (const Theme& theme : themes_) {
        for (const std::string& name : names) {
            std::string best;
            int distance = INT_MAX;
            for (const Shelf& shelf : theme) {
                const int here = Distance(shelf.smallest, shelf.largest, size);
                if (here >= distance) continue;
                std::string file = FileIn(shelf.path, name);
                if (file.empty()) continue;
                best = std::move(file);
                distance = here;
            }
            if (!best.empty()) return best;
        }
    }
    return {};
}

}  // namespace desktop
