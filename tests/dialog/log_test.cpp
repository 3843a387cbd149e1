// What a host asked for and did not get is said, once for each time that it asked, and nothing else is.
#include <QKUILib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

TEST(Log, NamesWhatIsNotThere) {
    setenv("PLATFORM_LOG", "1", 1);
    Headless::Use(100, 100);
    const std::string source = std::string(QKUI_TEST_DATA) + "/../dialog/log_test.cpp";
    testing::internal::CaptureStderr();

    QKButton button;
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(button.SetImage(77, u"PNG", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 0);
    const DWORD error = GetLastError();
    button.SetImage(u"nowhere.png", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
    const Gdiplus::Image text(FromUtf8(source).GetString());
    const Gdiplus::Image good((FromUtf8(QKUI_TEST_DATA) + u"/../resources/close.png").GetString());
    EXPECT_EQ(good.GetLastStatus(), Gdiplus::Ok);
    const Gdiplus::Font installed(u"DejaVu Sans", 12);
    const Gdiplus::Font foreign(u"No Such Face", 12);
    EXPECT_GT(foreign.GetHeight(), 0);  // looked for when it is used
    EXPECT_GT(installed.GetHeight(), 0);
    EXPECT_EQ(CDialog(404).DoModal(), -1);

    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, "Missing: resource 77 of type \"PNG\": " + std::string(ErrorText(error)) + "\n" +
                        "Missing: picture \"nowhere.png\": no such file, or not one that can be read\n" +
                        "Missing: picture \"" + source +
                        "\": not a picture of a known format, or a damaged one\n"
                        "Missing: font \"No Such Face\": not installed, \"DejaVu Sans\" is used\n"
                        "Missing: resource 404 of type 5: " +
                        ErrorText(error) + "\n");
}

}  // namespace
