// Windows with procedures of their own, copied text, and files that other programs open, on the window system
// in memory.
#include <afxwin.h>
#include <shellapi.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <platform/headless.h>
#include <platform/shell.h>

namespace {

HGLOBAL BlockOf(const void* bytes, std::size_t size) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(block), bytes, size);
    GlobalUnlock(block);
    return block;
}

CString Pasted() {
    if (!OpenClipboard(NULL)) return _T("(refused)");
    const HGLOBAL block = GetClipboardData(CF_UNICODETEXT);
    const CString text = block ? CString(static_cast<LPCTSTR>(GlobalLock(block))) : CString(_T("(none)"));
    CloseClipboard();
    return text;
}

TEST(PortingClipboard, TextIsCopiedAndPasted) {
    Headless::Use();
    EXPECT_FALSE(GetClipboardData(CF_UNICODETEXT));  // not open
    ASSERT_TRUE(OpenClipboard(NULL));
    EXPECT_FALSE(OpenClipboard(NULL));
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    const HGLOBAL open = BlockOf(u"ab", 4);  // no terminator
    EXPECT_FALSE(SetClipboardData(CF_UNICODETEXT, open));
    EXPECT_FALSE(GlobalFree(open));
    EXPECT_TRUE(SetClipboardData(CF_UNICODETEXT, BlockOf(u"h\u00E9llo", 12)));
    EXPECT_TRUE(CloseClipboard());
    EXPECT_EQ(Pasted(), u"h\u00E9llo");
    OpenClipboard(NULL);
    EXPECT_TRUE(SetClipboardData(CF_TEXT, BlockOf("\xC3\xA4", 3)));
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(GetClipboardData(CF_TEXT))), "\xC3\xA4");
    CloseClipboard();
    EXPECT_EQ(Pasted(), u"\u00E4");
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
}

TEST(PortingShell, StartsAndOpens) {
    const std::string folder = std::string(QKUI_TEST_OUTPUT) + "/opened";
    ASSERT_EQ(std::system(("rm -rf '" + folder + "' && mkdir -p '" + folder + "'").c_str()), 0);
    const auto run = [&](LPCTSTR verb, const CString& file, const CString& parameters) {
        return (INT_PTR)ShellExecute(NULL, verb, file, parameters, CString(folder), SW_SHOWNORMAL);
    };
    EXPECT_GT(run(_T("open"), _T("touch"), _T("'with blank' other")), 32);
    for (int i = 0; i < 200 && !std::ifstream(folder + "/other"); ++i)
        Sleep(10);
    EXPECT_TRUE(std::ifstream(folder + "/with blank") && std::ifstream(folder + "/other"));
    EXPECT_EQ(run(NULL, _T("nothing-of-this-name"), _T("")), SE_ERR_FNF);
    EXPECT_EQ(run(_T("print"), _T("other"), _T("")), SE_ERR_NOASSOC);
    EXPECT_EQ(run(NULL, _T("no-such-scheme:x"), _T("")), SE_ERR_NOASSOC);
}

// A list that its block cuts off ends with the last whole path.
TEST(PortingDrop, ListsOfFiles) {
    struct {
        DROPFILES header{sizeof(DROPFILES), {3, 4}, FALSE, TRUE};
        WCHAR paths[6] = {u'/', u'a', 0, u'/', u'b', u'c'};
    } const files;
    const HDROP drop = HDROP::FromParam(BlockOf(&files, sizeof files).ToParam());
    POINT point;
    EXPECT_TRUE(DragQueryPoint(drop, &point) && point.x == 3 && point.y == 4);
    EXPECT_EQ(DragQueryFile(drop, 0xFFFFFFFF, NULL, 0), 1U);
    WCHAR path[4];
    EXPECT_EQ(DragQueryFile(drop, 0, path, 4), 2U);
    EXPECT_EQ(CString(path), "/a");
    EXPECT_EQ(DragQueryFile(drop, 1, path, 4), 0U);
    DragFinish(drop);
}

}  // namespace
