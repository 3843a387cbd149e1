#include "examples/desktop/places.h"

#include <algorithm>
#include <set>
#include <utility>

#include "examples/desktop/glib.h"

namespace desktop {
namespace {

// Key files are text and have signs of their own; an escaped name has neither.
std::string Escaped(const std::string& name) {
    return Owned<char>(g_uri_escape_bytes(reinterpret_cast<const guint8*>(name.data()), name.size(), nullptr))
        .get();
}

std::optional<std::string> Unescaped(const char* key) {
    GBytes* bytes = g_uri_unescape_bytes(key, -1, nullptr, nullptr);
    if (!bytes) return std::nullopt;
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    std::string name(data, size);
    g_bytes_unref(bytes);
    return name;
}

// Null when there is no file.
Owned<GKeyFile> Load(const std::string& file) {
    Owned<GKeyFile> keys(g_key_file_new());
    GError* raw = nullptr;
    if (g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_KEEP_COMMENTS, &raw)) return keys;
    const Owned<GError> error(raw);
    if (!g_error_matches(raw, G_FILE_ERROR, G_FILE_ERROR_NOENT)) {
        const std::string aside = file + ".broken";
        std::rename(file.c_str(), aside.c_str());
    }
    return Owned<GKeyFile>(g_key_file_new());
}

std::optional<Cell> ReadCell(GKeyFile* keys, const char* group, const char* key) {
    gsize count = 0;
    int* numbers = g_key_file_get_integer_list(keys, group, key, &count, nullptr);
    std::optional<Cell> cell;
    if (count == 2 && numbers[0] >= 0 && numbers[1] >= 0) cell = Cell{numbers[0], numbers[1]};
    g_free(numbers);
    return cell;
}

}  // namespace

Places::Places(std::string file, const std::string& folder) : file_(std::move(file)) {
    group_ = Owned<char>(g_uri_escape_string(folder.c_str(), "/", FALSE)).get();
    if (file_.empty()) return;
    const Owned<GKeyFile> keys = Load(file_);
    char** names = g_key_file_get_keys(keys.get(), group_.c_str(), nullptr, nullptr);
    for (char** key = names; key && *key; ++key) {
        const std::optional<std::string> name = Unescaped(*key);
        const std::optional<Cell> cell = ReadCell(keys.get(), group_.c_str(), *key);
        if (name && cell) cells_[*name] = *cell;
    }
    g_strfreev(names);
}

std::optional<Cell> Places::Find(const std::string& name) const {
    const auto found = cells_.find(name);
    return found == cells_.end() ? std::nullopt : std::optional(found->second);
}

void Places::Set(const std::string& name, Cell cell) {
    const auto [place, added] = cells_.try_emplace(name, cell);
    if (!added && place->second == cell) return;
    place->second = cell;
    changed_ = true;
}

void Places::Rename(const std::string& from, const std::string& to) {
    const std::optional<Cell> cell = Find(from);
    if (!cell) return;
    cells_.erase(from);
    Set(to, *cell);
    changed_ = true;
}

void Places::Clear() {
    changed_ = changed_ || !cells_.empty();
    cells_.clear();
}

void Places::Prune(const std::vector<std::string>& names) {
    if (cells_.size() <= kMost) return;
    const std::set<std::string> kept(names.begin(), names.end());
    std::erase_if(cells_, [&](const auto& place) { return !kept.contains(place.first); });
    changed_ = true;
}

bool Places::Save() {
    if (!changed_ || file_.empty()) return true;
    // Read anew: another desktop may have written its own folder's places meanwhile.
    const Owned<GKeyFile> keys = Load(file_);
    g_key_file_remove_group(keys.get(), group_.c_str(), nullptr);
    for (const auto& [name, cell] : cells_) {
        int numbers[] = {cell.column, cell.row};
        g_key_file_set_integer_list(keys.get(), group_.c_str(), Escaped(name).c_str(), numbers, 2);
    }
    const Owned<char> folder(g_path_get_dirname(file_.c_str()));
    g_mkdir_with_parents(folder.get(), 0700);
    // Through a temporary file beside it, which takes its place when it is complete.
    if (!g_key_file_save_to_file(keys.get(), file_.c_str(), nullptr)) return false;
    changed_ = false;
    return true;
}

}  // namespace desktop
