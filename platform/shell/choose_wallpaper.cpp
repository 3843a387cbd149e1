// Which desktop is there. The order is part of what IActiveDesktop promises.
#include <glib.h>

#include "platform/shell/wallpaper.h"
#include "platform/window/backdrop.h"

namespace platform {

namespace {

bool IsSandboxed() {
    return g_file_test("/.flatpak-info", G_FILE_TEST_EXISTS) || g_getenv("SNAP") != nullptr;
}

}  // namespace

bool NamesDesktop(const std::string& desktops, const std::string& name) {
    return (':' + desktops + ':').find(':' + name + ':') != std::string::npos;
}

std::unique_ptr<Wallpaper> ChooseWallpaper() {
    if (auto headless = OpenHeadlessBackdrop()) return MakeBackdropWallpaper(std::move(headless));
    if (IsSandboxed()) return MakePortalWallpaper();
    std::unique_ptr<Backdrop> backdrop = OpenX11Backdrop();
    const std::optional<Backdrop::Cover> cover = backdrop ? backdrop->CoveredBy() : std::nullopt;
    if (cover && cover->program == "Pcmanfm") return MakeFileManagerWallpaper(cover->process);
    const char* named = g_getenv("XDG_CURRENT_DESKTOP");
    const std::string desktops = named ? named : "";
    if (auto settings = MakeSettingsWallpaper(desktops)) return settings;
    if (auto settings = MakeXfceWallpaper(desktops)) return settings;
    if (cover || !backdrop) return MakePortalWallpaper();
    return MakeBackdropWallpaper(std::move(backdrop));
}

}  // namespace platform
