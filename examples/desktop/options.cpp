#include "examples/desktop/options.h"

#include <cstdio>
#include <string_view>

#include "examples/desktop/glib.h"

namespace desktop {
namespace {

std::string UsersDesktop() {
    if (const char* folder = g_get_user_special_dir(G_USER_DIRECTORY_DESKTOP)) return folder;
    return std::string(g_get_home_dir()) + "/Desktop";
}

}  // namespace

const char* const kUsage =
    "usage: qk-desktop [FOLDER]               show a folder's icons below all windows\n"
    "       qk-desktop --shot FILE [FOLDER]   write a picture of it, without a display\n"
    "\n"
    "Without FOLDER it is the user's desktop folder. Places of icons and the wallpaper are kept in the "
    "folder\n"
    "qk-desktop of the user's settings; a picture is made without them and leaves no trace.\n";

std::optional<Options> ParseOptions(int count, const char* const* arguments) {
    Options options;
    const auto complain = [](const char* what, std::string_view argument) {
        std::fprintf(stderr, "qk-desktop: %s: %.*s (--help says more)\n", what,
                     static_cast<int>(argument.size()), argument.data());
        return std::nullopt;
    };
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
        } else if (argument == "--shot") {
            if (i + 1 == count || !options.shot.empty())
                return complain("one file is wanted after", argument);
            options.shot = arguments[++i];
        } else if (argument.starts_with("-") || argument.empty() || !options.folder.empty()) {
            return complain("unknown argument", argument);
        } else {
            options.folder = Owned<char>(g_canonicalize_filename(arguments[i], nullptr)).get();
        }
    }
    if (options.folder.empty()) options.folder = UsersDesktop();
    return options;
}

}  // namespace desktop
