// The gallery: every ability of the library's dialogs and items, on pictures drawn for it.
#include <algorithm>
#include <cstdio>

#include "examples/gallery/options.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/shots.h"
#include "examples/gallery/skin_files.h"

namespace {

using namespace gallery;

// Exit codes.
constexpr int kFailed = 1;
constexpr int kMisused = 2;

constexpr const char* kShotsFolder = "gallery-shots";

int OpenGallery(std::size_t page) {
    SetScreenScale(0);  // as dense as the screen is
    Shell shell;
    if (!shell.Open()) {
        const DWORD error = GetLastError();
        if (error == ERROR_CONNECTION_UNAVAIL) {
            std::fprintf(stderr, "gallery: no display; pictures go to the folder %s\n", kShotsFolder);
            return ShootAllPages(kShotsFolder);
        }
        std::fprintf(stderr, "gallery: no window: %s\n", ErrorText(error));
        return kFailed;
    }
    CRect place;
    shell.GetWindowRect(place);
    shell.Show(CPoint((GetSystemMetrics(SM_CXSCREEN) - place.Width()) / 2,
                      (GetSystemMetrics(SM_CYSCREEN) - place.Height()) / 2));
    shell.Select(page);
    if (AfxRunMessageLoop() == 0) return 0;
    std::fprintf(stderr, "gallery: %s\n", ErrorText(ERROR_CONNECTION_UNAVAIL));
    return kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    const std::optional<Options> options = ParseOptions(count, arguments);
    if (!options) return kMisused;
    const std::vector<const PageEntry*> pages = AllPages();
    if (options->task == Options::Task::Help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (options->task == Options::Task::List) {
        for (const PageEntry* page : pages)
            std::puts(page->Facts().name);
        return 0;
    }

    std::size_t page = 0;
    if (!options->page.empty()) {
        const auto named = std::find_if(pages.begin(), pages.end(), [&options](const PageEntry* entry) {
            return entry->Facts().name == options->page;
        });
        if (named == pages.end()) {
            std::fprintf(stderr, "gallery: no page is called %s (--list names them)\n",
                         options->page.c_str());
            return kMisused;
        }
        page = static_cast<std::size_t>(named - pages.begin());
    }
    if (SkinFolder().empty()) {
        std::fputs("gallery: its pictures lie neither beside the program nor in ../share/QKUILib/gallery\n",
                   stderr);
        return kFailed;
    }
    if (options->dense) ShootDense();
    switch (options->task) {
        case Options::Task::Shot:
            return ShootPage(page, options->target);
        case Options::Task::ShotAll:
            return ShootAllPages(options->target);
        case Options::Task::Specimens:
            return ShootSpecimens(options->target);
        default:
            return OpenGallery(page);
    }
}
