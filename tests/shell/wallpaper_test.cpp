// The wallpaper of the headless screen.
#include <platform/shell.h>

#include <cstdio>
#include <filesystem>

#include "support/test_dialog.h"

namespace {

class Wallpaper : public kit::HeadlessTest {};

TEST_F(Wallpaper, IsShownAndReadBack) {
    QKShellFunctions shell;
    EXPECT_EQ(shell.GetWallpaper(), CString());
    // Two colours side by side, wider than the screen is: its middle fills the screen.
    const CString picture = kit::Strip("wallpaper", {0xFFFF0000, 0xFF0000FF}, 100, 20, false);
    EXPECT_TRUE(shell.SetWallpaper(picture, 7));
    EXPECT_EQ(shell.GetWallpaper(), picture);
    const Headless::Picture screen = Headless::CaptureScreen();
    EXPECT_EQ(screen.At(5, 5), 0xFFFF0000U);
    EXPECT_EQ(screen.At(634, 474), 0xFF0000FFU);
    // What is no picture changes nothing, and is no failure.
    for (const char* bad : {"", "relative.png", "/no/such/file.png", "/etc/passwd", "/"}) {
        EXPECT_TRUE(shell.SetWallpaper(bad, 0)) << bad;
        EXPECT_EQ(shell.GetWallpaper(), picture);
    }
    // A path of more than 259 units does not fit.
    const std::string folder = std::string(QKUI_TEST_OUTPUT) + "/" + std::string(200, 'f');
    std::filesystem::create_directories(folder);
    const std::string file = folder + "/" + std::string(100, 'g') + ".png";
    std::filesystem::copy_file(ToUtf8(picture), file, std::filesystem::copy_options::overwrite_existing);
    EXPECT_TRUE(shell.SetWallpaper(file.c_str(), 0));
    EXPECT_EQ(shell.GetWallpaper(), CString(file.substr(0, 259).c_str()));
}

TEST_F(Wallpaper, ComponentSaysWhatItRefuses) {
    void* made = nullptr;
    const GUID other = {1, 2, 3, {}};
    EXPECT_EQ(CoCreateInstance(other, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveDesktop, &made),
              REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoCreateInstance(CLSID_ActiveDesktop, nullptr, 4, IID_IActiveDesktop, &made),
              REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoCreateInstance(CLSID_ActiveDesktop, nullptr, 1, other, &made), E_NOINTERFACE);
    ASSERT_EQ(CoCreateInstance(CLSID_ActiveDesktop, nullptr, 1, IID_IActiveDesktop, &made), S_OK);
    auto* desktop = static_cast<IActiveDesktop*>(made);
    COMPONENTSOPT options = {12, TRUE, TRUE};
    EXPECT_EQ(desktop->SetDesktopItemOptions(&options, 0), S_OK);
    options.dwSize = 8;
    EXPECT_EQ(desktop->SetDesktopItemOptions(&options, 0), E_INVALIDARG);
    EXPECT_EQ(desktop->ApplyChanges(15), S_FALSE);
    EXPECT_EQ(desktop->ApplyChanges(16), E_INVALIDARG);
    EXPECT_EQ(desktop->SetWallpaper(nullptr, 0), E_INVALIDARG);
    EXPECT_EQ(desktop->AddRef(), 2U);
    EXPECT_EQ(desktop->Release(), 1U);
    EXPECT_EQ(desktop->Release(), 0U);
}

}  // namespace
