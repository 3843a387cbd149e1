// The parts of the desktop that work without a window.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "examples/desktop/cell.h"
#include "examples/desktop/file.h"
#include "examples/desktop/places.h"
#include "examples/desktop/thumbnail_cache.h"

namespace desktop {
namespace {

namespace fs = std::filesystem;

class DesktopTest : public testing::Test {
  protected:
    DesktopTest() {
        std::string pattern = (fs::temp_directory_path() / "desktop_test.XXXXXX").string();
        folder_ = g_mkdtemp(pattern.data());
    }
    ~DesktopTest() override { fs::remove_all(folder_); }

    // GLib asks the environment once in the life of a process.
    static void SetUpTestSuite() {
        std::string pattern = (fs::temp_directory_path() / "desktop_cache.XXXXXX").string();
        cache_ = g_mkdtemp(pattern.data());
        g_setenv("XDG_CACHE_HOME", cache_.c_str(), TRUE);
    }
    static void TearDownTestSuite() { fs::remove_all(cache_); }
    static auto CachedFiles() {
        return std::distance(fs::recursive_directory_iterator(cache_), fs::recursive_directory_iterator());
    }

    std::string FileIn(const std::string& name) const { return (folder_ / name).string(); }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(FileIn(name), std::ios::binary) << text;
    }
    static std::string TextOf(const std::string& file) {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }

    fs::path folder_;
    static inline fs::path cache_;
};

const std::vector<std::string> kNames = {"plain", "a=b [c];\n#", "caf\xE9", "%41", "雪", "trailing "};

TEST_F(DesktopTest, PlacesComeBackWhateverTheNames) {
    const std::string file = FileIn("new/places");
    Places places(file, "/odd [folder]=\xE9");
    for (std::size_t i = 0; i < kNames.size(); ++i)
        places.Set(kNames[i], {static_cast<int>(i), 7});
    places.Rename("plain", "fancy");
    ASSERT_TRUE(places.Save());
    Places others(file, "/other");
    others.Set("plain", {9, 9});
    ASSERT_TRUE(others.Save());

    const Places again(file, "/odd [folder]=\xE9");
    EXPECT_FALSE(again.Find("plain"));
    EXPECT_EQ(again.Find("fancy"), (Cell{0, 7}));
    for (std::size_t i = 1; i < kNames.size(); ++i)
        EXPECT_EQ(again.Find(kNames[i]), (Cell{static_cast<int>(i), 7})) << kNames[i];
}

TEST_F(DesktopTest, ABrokenFileOfPlacesIsKeptAside) {
    Write("places", "no key file\n\x01");
    Places places(FileIn("places"), "/folder");
    places.Set("name", {1, 2});
    EXPECT_TRUE(places.Save());
    EXPECT_EQ(TextOf(FileIn("places.broken")), "no key file\n\x01");
    EXPECT_EQ(Places(FileIn("places"), "/folder").Find("name"), (Cell{1, 2}));
}

TEST_F(DesktopTest, SenselessCellsAreNoPlaces) {
    Write("places", "[/folder]\na=-1;2;\nb=1;\nc=x;y;\nd=3;4;\n");
    const Places places(FileIn("places"), "/folder");
    for (const char* name : {"a", "b", "c"})
        EXPECT_FALSE(places.Find(name)) << name;
    EXPECT_EQ(places.Find("d"), (Cell{3, 4}));
}

TEST_F(DesktopTest, NoMorePlacesThanThereMayBe) {
    Places places(std::string(), "/folder");
    for (int i = 0; i <= static_cast<int>(Places::kMost); ++i)
        places.Set(std::to_string(i), {i, 0});
    places.Prune({"7"});
    EXPECT_TRUE(places.Find("7"));
    EXPECT_FALSE(places.Find("8"));
}

TEST(CellTest, TheNearestFreeCell) {
    const GridSize size{3, 2};
    const std::set<Cell> some = {{1, 0}, {1, 1}};
    EXPECT_EQ(NearestFree({2, 1}, size, some), (Cell{2, 1}));
    EXPECT_EQ(NearestFree({1, 1}, size, some), (Cell{0, 1}));
    EXPECT_EQ(NearestFree({9, 9}, size, some), (Cell{2, 1}));
    std::set<Cell> all;
    for (int column = 0; column < size.columns; ++column)
        for (int row = 0; row < size.rows; ++row)
            all.insert({column, row});
    EXPECT_FALSE(NearestFree({1, 1}, size, all));
}

TEST_F(DesktopTest, AListingIsSortedAsPeopleCount) {
    fs::create_directory(folder_ / "zoo");
    for (const char* name : {"file 10", "file 9", "caf\xE9", ".hidden", "backup~"})
        Write(name, "x");
    const Listing listing = ReadListing(folder_.string());
    std::vector<std::string> names;
    for (const File& file : listing.files)
        names.push_back(file.name);
    EXPECT_EQ(names, (std::vector<std::string>{"zoo", "caf\xE9", "file 9", "file 10"}));
    EXPECT_EQ(listing.files.at(1).caption, CString(u"caf\uFFFD"));

    const Listing none = ReadListing(FileIn("nowhere"));
    EXPECT_FALSE(none.fault.IsEmpty());
    EXPECT_TRUE(none.files.empty());
}

// What a stranger puts on the desktop: each is refused in no time, and nothing is kept of it.
TEST_F(DesktopTest, NoThumbnailOfWhatIsNoPicture) {
    const auto before = CachedFiles();
    const std::string vast = "P6 60000 60000 255\n";
    for (const std::string& bytes : {std::string(), std::string("\x89PNG\r\n\x1a\n"), vast}) {
        Write("bad.png", bytes);
        EXPECT_FALSE(LoadThumbnail(FileIn("bad.png"), 1, 48));
    }
    EXPECT_EQ(CachedFiles(), before);
}

TEST_F(DesktopTest, AThumbnailIsMadeOnceAndAgainForANewPicture) {
    const auto paint = [this](int width, guint32 colour) {
        const Pixels pixels(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, 100));
        gdk_pixbuf_fill(pixels.get(), colour);
        gdk_pixbuf_save(pixels.get(), FileIn("picture.png").c_str(), "png", nullptr, nullptr);
    };
    const auto red = [this](std::int64_t modified) {
        const Pixels pixels = LoadThumbnail(FileIn("picture.png"), modified, 48);
        EXPECT_TRUE(pixels && gdk_pixbuf_get_width(pixels.get()) == 48 &&
                    gdk_pixbuf_get_height(pixels.get()) == 24);
        return pixels ? gdk_pixbuf_read_pixels(pixels.get())[0] : 0;
    };
    paint(200, 0xFF0000FF);
    EXPECT_EQ(red(1'000'000), 255);
    paint(200, 0x400000FF);
    EXPECT_EQ(red(1'000'000), 255);  // from the cache: nobody said that the file changed
    EXPECT_EQ(red(2'000'000), 64);
}

}  // namespace
}  // namespace desktop
