#include "examples/desktop/file.h"

#include <algorithm>

#include "examples/desktop/glib.h"

namespace desktop {
namespace {

// The type follows from the name alone: opening each of many files to look inside takes seconds.
constexpr const char* kAttributes =
    "standard::name,standard::type,standard::fast-content-type,standard::is-hidden,"
    "standard::is-backup,time::modified,time::modified-usec";

File ToFile(GFileInfo* info) {
    File file;
    file.name = g_file_info_get_name(info);
    file.caption = FromUtf8(file.name);
    if (const char* type =
            g_file_info_get_attribute_string(info, G_FILE_ATTRIBUTE_STANDARD_FAST_CONTENT_TYPE))
        file.type = type;
    file.modified = static_cast<std::int64_t>(
        g_file_info_get_attribute_uint64(info, G_FILE_ATTRIBUTE_TIME_MODIFIED) * 1'000'000 +
        g_file_info_get_attribute_uint32(info, G_FILE_ATTRIBUTE_TIME_MODIFIED_USEC));
    file.folder = g_file_info_get_file_type(info) == G_FILE_TYPE_DIRECTORY;
    file.sortKey = Owned<char>(g_utf8_collate_key_for_filename(ToUtf8(file.caption).c_str(), -1)).get();
    return file;
}

bool IsShown(GFileInfo* info) {
    return !g_file_info_get_is_hidden(info) && !g_file_info_get_is_backup(info);
}

CString Message(const GError* error) {
    return error ? FromUtf8(error->message) : CString(u"unknown fault");
}

}  // namespace

bool ShownBefore(const File& a, const File& b) {
    if (a.folder != b.folder) return a.folder;
    const int order = a.sortKey.compare(b.sortKey);
    return order != 0 ? order < 0 : a.name < b.name;
}

Listing ReadListing(const std::string& folder) {
    Listing listing;
    GError* raw = nullptr;
    const auto fault = [&] {
        const Owned<GError> error(raw);
        listing.files.clear();
        listing.fault = Message(error.get());
        return listing;
    };
    const Owned<GFile> place(g_file_new_for_path(folder.c_str()));
    const Owned<GFileInfo> itself(
        g_file_query_info(place.get(), G_FILE_ATTRIBUTE_ID_FILE, G_FILE_QUERY_INFO_NONE, nullptr, &raw));
    if (!itself) return fault();
    if (const char* id = g_file_info_get_attribute_string(itself.get(), G_FILE_ATTRIBUTE_ID_FILE))
        listing.identity = id;
    const Owned<GFileEnumerator> files(
        g_file_enumerate_children(place.get(), kAttributes, G_FILE_QUERY_INFO_NONE, nullptr, &raw));
    if (!files) return fault();
    while (const Owned<GFileInfo> info{g_file_enumerator_next_file(files.get(), nullptr, &raw)}) {
        if (IsShown(info.get())) listing.files.push_back(ToFile(info.get()));
    }
    if (raw) return fault();
    std::sort(listing.files.begin(), listing.files.end(), ShownBefore);
    return listing;
}

std::string PathOf(const std::string& folder, const std::string& name) {
    return Owned<char>(g_build_filename(folder.c_str(), name.c_str(), nullptr)).get();
}

}  // namespace desktop
