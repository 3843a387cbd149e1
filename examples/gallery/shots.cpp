#include "examples/gallery/shots.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

constexpr int kScreenWidth = 1440;
constexpr int kScreenHeight = 900;
constexpr int kShellLeft = 24;
constexpr int kShellTop = 84;

DemoLooks WallpaperLooks() {
    DemoLooks looks;
    looks.size = CSize(kScreenWidth, kScreenHeight);
    looks.background = SkinFile("background.jpg");
    looks.keepRatio = true;
    return looks;
}

// Away from everything, and no button left down by the picture before.
void TakeHandsOff() {
    Headless::MovePointer(kScreenWidth - 1, kScreenHeight - 1);
    Headless::ButtonUp();
}

bool Write(const Headless::Picture& picture, const std::string& file) {
    if (picture.SavePng(FromUtf8(file))) return true;
    std::fprintf(stderr, "gallery: cannot write %s\n", file.c_str());
    return false;
}

bool MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        std::fprintf(stderr, "gallery: cannot make the folder %s: %s\n", folder.c_str(),
                     error.message().c_str());
    return !error;
}

std::string FileIn(const std::string& folder, const char* name) {
    return (std::filesystem::path(folder) / (std::string(name) + ".png")).string();
}

int pixelsToUnit = 1;

void TakeScreen() {
    constexpr int kDpi = 96;
    Headless::Use(kScreenWidth * pixelsToUnit, kScreenHeight * pixelsToUnit, kDpi * pixelsToUnit);
    SetScreenScale(pixelsToUnit);
}

// A screen in memory with a wallpaper, and the gallery on it.
class Studio {
  public:
    bool Open() {
        TakeScreen();
        if (!wallpaper_.Open(nullptr, CPoint(0, 0)) || !shell_.Open()) {
            std::fprintf(stderr, "gallery: no window: %s\n", ErrorText(GetLastError()));
            return false;
        }
        shell_.Show(CPoint(kShellLeft, kShellTop));
        return true;
    }

    std::size_t PageCount() const { return shell_.PageCount(); }
    const char* Name(std::size_t page) const { return shell_.Facts(page).name; }

    bool Shoot(std::size_t page, const std::string& file) {
        TakeHandsOff();
        shell_.Select(page);
        Headless::RunPending();
        shell_.Current()->Pose();
        Headless::RunPending();
        return Write(Headless::CaptureScreen(), file);
    }

  private:
    DemoWindow wallpaper_{WallpaperLooks()};
    Shell shell_;
};

}  // namespace

void ShootDense() {
    pixelsToUnit = 2;
}

int ShootPage(std::size_t page, const std::string& file) {
    Studio studio;
    return studio.Open() && studio.Shoot(page, file) ? 0 : 1;
}

int ShootAllPages(const std::string& folder) {
    if (!MakeFolder(folder)) return 1;
    Studio studio;
    if (!studio.Open()) return 1;
    for (std::size_t page = 0; page < studio.PageCount(); ++page) {
        const std::string file = FileIn(folder, studio.Name(page));
        if (!studio.Shoot(page, file)) return 1;
        std::printf("%s\n", file.c_str());
    }
    return 0;
}

int ShootSpecimens(const std::string& folder) {
    if (!MakeFolder(folder)) return 1;
    TakeScreen();
    for (const Specimen& specimen : AllSpecimens()) {
        TakeHandsOff();
        SpecimenWindow window(specimen.size);
        if (!window.Open()) {
            std::fprintf(stderr, "gallery: no window: %s\n", ErrorText(GetLastError()));
            return 1;
        }
        specimen.show(window);
        const std::string file = FileIn(folder, specimen.name);
        if (!Write(window.Capture(), file)) return 1;
        std::printf("%s\n", file.c_str());
    }
    return 0;
}

}  // namespace gallery
