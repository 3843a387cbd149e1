// The ways in which desktops keep a wallpaper.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

class Backdrop;

// One way, for the thread that it was made on. Calls may block as long as the desktop does not answer.
// Paths are absolute, in the bytes of the file system.
class Wallpaper {
  public:
    virtual ~Wallpaper() = default;
    virtual bool Set(const std::string& path) = 0;
    virtual std::optional<std::string> Get() = 0;  // empty text: there is none
};

// The one that the desktop at hand has; null when it has none.
std::unique_ptr<Wallpaper> ChooseWallpaper();

// The parts, each null where it does not apply.
std::unique_ptr<Wallpaper> MakeBackdropWallpaper(std::unique_ptr<Backdrop> backdrop);
std::unique_ptr<Wallpaper> MakeFileManagerWallpaper(int process);  // pcmanfm
// Of the desktop environments named by a list with colons.
std::unique_ptr<Wallpaper> MakeSettingsWallpaper(const std::string& desktops);
std::unique_ptr<Wallpaper> MakeXfceWallpaper(const std::string& desktops);
std::unique_ptr<Wallpaper> MakePortalWallpaper();

// Whether a list with colons names a desktop.
bool NamesDesktop(const std::string& desktops, const std::string& name);

}  // namespace platform
