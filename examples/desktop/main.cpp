// qk-desktop: a folder as the user's desktop. A small host of the library, from the window to the wallpaper.
#include <glib-unix.h>

#include <clocale>
#include <csignal>
#include <cstdio>

#include "examples/desktop/options.h"
#include "examples/desktop/shot.h"
#include "examples/desktop/view.h"

namespace {

using namespace desktop;

// Exit codes.
constexpr int kFailed = 1;
constexpr int kMisused = 2;

// A session that ends says so by a signal: what is to be kept is written on the way out.
gboolean Close(gpointer view) {
    static_cast<View*>(view)->CloseQKDlg();
    return G_SOURCE_CONTINUE;
}

int Run(const std::string& folder) {
    View view(folder, std::string(g_get_user_config_dir()) + "/qk-desktop");
    if (!view.Open()) {
        std::fprintf(stderr, "qk-desktop: no window: %s\n", ErrorText(GetLastError()));
        return kFailed;
    }
    Source terminated;
    Source interrupted;
    terminated.Start(g_unix_signal_add(SIGTERM, Close, &view));
    interrupted.Start(g_unix_signal_add(SIGINT, Close, &view));
    if (AfxRunMessageLoop() == 0) return 0;
    std::fprintf(stderr, "qk-desktop: %s\n", ErrorText(ERROR_CONNECTION_UNAVAIL));
    return kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    // Names are sorted, and faults told, as the user is used to.
    for (const int category : {LC_CTYPE, LC_COLLATE, LC_MESSAGES})
        std::setlocale(category, "");
    const std::optional<Options> options = ParseOptions(count, arguments);
    if (!options) return kMisused;
    if (options->help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    return options->shot.empty() ? Run(options->folder) : Shoot(options->folder, options->shot);
}
