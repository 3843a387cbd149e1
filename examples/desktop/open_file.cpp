#include "examples/desktop/open_file.h"

#include <memory>
#include <utility>

namespace desktop {

void OpenFile(const std::string& path, const Lifetime& owner, std::function<void(const CString&)> failed) {
    struct Launch {
        std::weak_ptr<const void> owner;
        std::function<void(const CString&)> failed;
    };
    const auto launched = [](GObject*, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Launch> launch(static_cast<Launch*>(data));
        GError* raw = nullptr;
        if (g_app_info_launch_default_for_uri_finish(result, &raw)) return;
        const Owned<GError> error(raw);
        if (!launch->owner.expired()) launch->failed(FromUtf8(error->message));
    };
    const Owned<GFile> file(g_file_new_for_path(path.c_str()));
    const Owned<char> uri(g_file_get_uri(file.get()));
    g_app_info_launch_default_for_uri_async(uri.get(), nullptr, nullptr, launched,
                                            new Launch{owner.Watch(), std::move(failed)});
}

}  // namespace desktop
