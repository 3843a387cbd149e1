// Resources compiled and embedded by the build are found by name; modules come and go.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <platform/resources.h>
#include <platform/text.h>
#include <platform/window.h>

#include "resource.h"
#include "resource_kit.h"

namespace {

using kit::Bytes;
using kit::BytesOf;
using kit::ResourceFile;

std::string SourceFile(const std::string& name) {
    return Characters(ViewOf(kit::ReadBytes(std::string(QKUI_TEST_DATA) + "/../resources/" + name)));
}

TEST(Embedded, EveryKindOfResourceIsFound) {
    const std::string picture = SourceFile("close.png");
    ASSERT_FALSE(picture.empty());
    for (const LPCWSTR name : {LPCWSTR(MAKEINTRESOURCE(IDB_CLOSE)), LPCWSTR(u"Logo"), LPCWSTR(u"lOGO")})
        for (const LPCWSTR type : {u"PNG", u"png"})
            EXPECT_EQ(Characters(Embedded(name, type)), picture);
    EXPECT_EQ(Characters(Embedded(MAKEINTRESOURCE(IDH_HELP), RT_HTML)), SourceFile("help page.html"));
    EXPECT_EQ(Characters(Embedded(MAKEINTRESOURCE(IDR_VARIANT), RT_RCDATA)), "first");
    EXPECT_FALSE(Embedded(MAKEINTRESOURCE(IDD_SETTINGS), RT_DIALOG).empty());
}

// The header for scripts and the one for C++ are two lists of the same numbers.
TEST(Embedded, ScriptsAndProgramsAgreeOnStyles) {
    const std::vector<DWORD> expected = {
        WS_OVERLAPPED,   WS_TABSTOP,       WS_MAXIMIZEBOX,    WS_MINIMIZEBOX,   WS_THICKFRAME,
        WS_SYSMENU,      WS_BORDER,        WS_DLGFRAME,       WS_CAPTION,       WS_CLIPCHILDREN,
        WS_CLIPSIBLINGS, WS_DISABLED,      WS_VISIBLE,        WS_MINIMIZE,      WS_CHILD,
        WS_POPUP,        WS_EX_TOPMOST,    WS_EX_TRANSPARENT, WS_EX_TOOLWINDOW, WS_EX_APPWINDOW,
        WS_EX_LAYERED,   WS_EX_NOACTIVATE, DS_SETFONT,        DS_MODALFRAME,    DS_CENTER};
    kit::ByteWriter writer;
    for (const DWORD style : expected)
        writer.Long(style);
    EXPECT_EQ(Characters(Embedded(MAKEINTRESOURCE(IDR_STYLES), RT_RCDATA)),
              Characters(ViewOf(writer.Take())));
}

TEST(Lookup, WhatIsMissingIsNamed) {
    const struct {
        LPCWSTR name, type;
        DWORD error;
    } cases[] = {
        {MAKEINTRESOURCE(999), u"PNG", ERROR_RESOURCE_NAME_NOT_FOUND},
        {u"101", u"PNG", ERROR_RESOURCE_NAME_NOT_FOUND},
        {u"", u"PNG", ERROR_RESOURCE_NAME_NOT_FOUND},
        {nullptr, u"PNG", ERROR_RESOURCE_NAME_NOT_FOUND},
        {MAKEINTRESOURCE(IDB_CLOSE), u"GIF", ERROR_RESOURCE_TYPE_NOT_FOUND},
        {MAKEINTRESOURCE(IDB_CLOSE), RT_BITMAP, ERROR_RESOURCE_TYPE_NOT_FOUND},
        {MAKEINTRESOURCE(IDB_CLOSE), nullptr, ERROR_RESOURCE_TYPE_NOT_FOUND},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(&one - cases);
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(FindResourceW(nullptr, one.name, one.type));
        EXPECT_EQ(GetLastError(), one.error);
    }
}

TEST(Lookup, FindingTwiceGivesTheSameHandles) {
    const HRSRC found = FindResourceW(nullptr, u"LOGO", u"PNG");
    EXPECT_TRUE(found);
    EXPECT_TRUE(found == FindResourceW(AfxGetResourceHandle(), u"logo", u"png"));
    const HGLOBAL loaded = LoadResource(nullptr, found);
    EXPECT_TRUE(loaded == LoadResource(nullptr, found));
    EXPECT_TRUE(GlobalFree(loaded));  // the module's, not the caller's
    EXPECT_EQ(GlobalSize(loaded), SizeofResource(nullptr, found));
}

TEST(Module, HandlesGoStaleWithTheirModule) {
    const HMODULE host = AfxGetResourceHandle();
    ASSERT_TRUE(host);
    const Bytes file = ResourceFile().Add(10, 7, BytesOf("seven")).Add(10, u"Fuzz", {}).Take();
    const HMODULE module = RegisterModuleResources(file.data(), file.size());
    ASSERT_TRUE(module);
    EXPECT_TRUE(AfxGetResourceHandle() == host);
    EXPECT_FALSE(FindResourceW(nullptr, MAKEINTRESOURCE(7), RT_RCDATA));
    AfxSetResourceHandle(module);
    EXPECT_EQ(Characters(Embedded(MAKEINTRESOURCE(7), RT_RCDATA)), "seven");

    const HRSRC none = FindResourceW(module, u"fuZZ", RT_RCDATA);
    ASSERT_TRUE(none);
    EXPECT_EQ(SizeofResource(module, none), 0u);
    EXPECT_NE(LockResource(LoadResource(module, none)), nullptr);

    const HRSRC found = FindResourceW(module, MAKEINTRESOURCE(7), RT_RCDATA);
    const HGLOBAL loaded = LoadResource(module, found);
    EXPECT_EQ(SizeofResource(host, found), 0u);
    EXPECT_FALSE(LoadResource(host, found));
    EXPECT_TRUE(UnregisterModuleResources(module));
    EXPECT_FALSE(UnregisterModuleResources(module));
    EXPECT_TRUE(AfxGetResourceHandle() == host);  // the choice went with the module
    EXPECT_EQ(SizeofResource(nullptr, found), 0u);
    EXPECT_FALSE(LoadResource(nullptr, found));
    EXPECT_EQ(LockResource(loaded), nullptr);
    EXPECT_FALSE(FindResourceW(module, MAKEINTRESOURCE(7), RT_RCDATA));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    AfxSetResourceHandle(module);
    EXPECT_TRUE(AfxGetResourceHandle() == host);
}

CString FileOf(HMODULE module) {
    CString path;
    const DWORD length = GetModuleFileNameW(module, path.GetBuffer(4096), 4096);
    path.ReleaseBuffer(static_cast<int>(length));
    return path;
}

TEST(Module, ComesAndGoesWithTheLibraryThatHoldsIt) {
    const HMODULE host = AfxGetResourceHandle();
    HMODULE plugin;
    HGLOBAL bytes;
    {
        const std::unique_ptr<void, int (*)(void*)> library(dlopen(PLUGIN, RTLD_NOW), dlclose);
        ASSERT_TRUE(library) << dlerror();
        const auto name = reinterpret_cast<void (*)(HMODULE*)>(dlsym(library.get(), "NamePluginModule"));
        ASSERT_NE(name, nullptr);
        name(&plugin);
        EXPECT_EQ(ToUtf8(FileOf(plugin)), PLUGIN);
        EXPECT_TRUE(AfxGetResourceHandle() == host);
        EXPECT_FALSE(FindResourceW(nullptr, MAKEINTRESOURCE(IDR_PLUGIN), RT_RCDATA));
        AfxSetResourceHandle(plugin);
        EXPECT_EQ(Characters(Embedded(MAKEINTRESOURCE(IDR_PLUGIN), RT_RCDATA)), "from the plugin");
        bytes = LoadResource(plugin, FindResourceW(plugin, MAKEINTRESOURCE(IDR_PLUGIN), RT_RCDATA));
        EXPECT_NE(LockResource(bytes), nullptr);
    }
    EXPECT_EQ(LockResource(bytes), nullptr);
    EXPECT_FALSE(UnregisterModuleResources(plugin));
    EXPECT_TRUE(AfxGetResourceHandle() == host);
}

TEST(Module, IsNamedByItsFileAndMayBeBareOrRefused) {
    const CString program = FileOf(nullptr);
    EXPECT_TRUE(program.Right(15) == u"/resources_test");
    const HMODULE host = AfxGetResourceHandle();
    EXPECT_TRUE(FileOf(host) == program);
    EXPECT_TRUE(ModuleFromAddress(reinterpret_cast<const void*>(&SourceFile)) == host);
    const Bytes heap = ResourceFile().Take();
    EXPECT_FALSE(ModuleFromAddress(heap.data()));
    EXPECT_FALSE(ModuleFromAddress(nullptr));
    EXPECT_FALSE(RegisterModuleResources(nullptr, heap.size()));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    const HMODULE loose = RegisterModuleResources(heap.data(), heap.size());
    EXPECT_FALSE(FindResourceW(loose, u"LOGO", u"PNG"));
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_TYPE_NOT_FOUND);
    char16_t buffer[4] = u"abc";
    const struct {
        HMODULE module;
        LPWSTR buffer;
        DWORD size, error;
    } cases[] = {
        {loose, buffer, 4, ERROR_FILE_NOT_FOUND},
        {HMODULE(999, 1), buffer, 4, ERROR_INVALID_HANDLE},
        {host, buffer, 4, ERROR_INVALID_PARAMETER},
        {nullptr, buffer, static_cast<DWORD>(program.GetLength()), ERROR_INVALID_PARAMETER},
        {host, nullptr, 4096, ERROR_INVALID_PARAMETER},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(GetModuleFileNameW(one.module, one.buffer, one.size), 0u);
        EXPECT_EQ(GetLastError(), one.error);
    }
    EXPECT_EQ(std::u16string(buffer), u"abc");
    UnregisterModuleResources(loose);
}

}  // namespace
