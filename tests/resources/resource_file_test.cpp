// The .res parser on files that end early, lie or are damaged at random.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "platform/resources/dialog_template.h"
#include "platform/resources/resource_file.h"
#include "resource_kit.h"

namespace {

using kit::Bytes;
using kit::BytesOf;
using kit::ResourceFile;
using platform::ParseResourceFile;
using platform::ResourceEntry;

// Reads every byte that the parser points at, so that the sanitizer judges them.
unsigned Touched(const std::vector<ResourceEntry>& entries, std::span<const std::byte> file) {
    unsigned sum = 0;
    for (const ResourceEntry& entry : entries) {
        EXPECT_GE(entry.data.data(), file.data());
        EXPECT_LE(entry.data.data() + entry.data.size(), file.data() + file.size());
        for (const std::byte value : entry.data)
            sum += std::to_integer<unsigned>(value);
        if (entry.type == platform::ResourceName(WORD{5}))
            sum += platform::ParseDialogTemplate(Tight(entry.data).View()).has_value();
    }
    return sum;
}

// A file cut anywhere is refused, or it was cut between two entries and gives those before the cut.
TEST(ResourceFile, HoldsWhatTheScriptSaysAsFarAsItReaches) {
    const Bytes bytes = kit::ReadBytes(SAMPLE_RES);
    const auto whole = ParseResourceFile(ViewOf(bytes));
    ASSERT_TRUE(whole);
    ASSERT_EQ(whole->size(), 8u);
    EXPECT_EQ((*whole)[0].type.Text(), u"PNG");
    EXPECT_EQ((*whole)[0].name.Number(), 101);
    EXPECT_EQ((*whole)[1].name.Text(), u"LOGO");
    EXPECT_GT(Touched(*whole, ViewOf(bytes)), 0u);
    std::size_t accepted = 0;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Tight cut(ViewOf(bytes).first(length));
        const auto entries = ParseResourceFile(cut.View());
        if (!entries) continue;
        Touched(*entries, cut.View());
        ASSERT_LE(entries->size(), whole->size());
        for (std::size_t i = 0; i < entries->size(); ++i) {
            ASSERT_EQ((*entries)[i].name, (*whole)[i].name);
            ASSERT_EQ(Characters((*entries)[i].data), Characters((*whole)[i].data));
        }
        ++accepted;
    }
    // After the opening entry and after each other, with none to three bytes of padding.
    EXPECT_GE(accepted, whole->size());
    EXPECT_LE(accepted, 4 * (whole->size() + 1));
}

TEST(ResourceFile, RandomDamageIsRefusedOrReadWithinTheFile) {
    const Bytes original = kit::ReadBytes(SAMPLE_RES);
    std::mt19937 random(1809);
    int refused = 0;
    const int rounds = 20000;
    for (int round = 0; round < rounds; ++round) {
        Bytes bytes = original;
        for (std::uint32_t flips = 1 + random() % 8; flips > 0; --flips) {
            std::uint8_t& byte = bytes[random() % bytes.size()];
            byte = static_cast<std::uint8_t>(random() % 2   ? byte ^ 1U << (random() % 8)
                                             : random() % 3 ? 0xFF
                                                            : 0x00);
        }
        const Tight tight(ViewOf(bytes));
        const auto entries = ParseResourceFile(tight.View());
        const HMODULE module = RegisterModuleResources(tight.View().data(), tight.View().size());
        ASSERT_EQ(entries.has_value(), static_cast<bool>(module));
        if (!entries) {
            ASSERT_EQ(GetLastError(), ERROR_BAD_FORMAT);
            ++refused;
            continue;
        }
        Touched(*entries, tight.View());
        ASSERT_TRUE(UnregisterModuleResources(module));
    }
    EXPECT_GT(refused, rounds / 10);
    EXPECT_LT(refused, rounds);
}

TEST(ResourceFile, LyingSizesAreRefused) {
    const auto entry = [](std::uint32_t dataSize, std::uint32_t headerSize, std::size_t held) {
        ResourceFile file;
        kit::PutOrdinal(kit::PutOrdinal(file.Raw().Long(dataSize).Long(headerSize), 10), 1);
        file.Raw().Fill(16 + held, 0);
        return file.Take();
    };
    const Bytes one = ResourceFile().Add(10, 1, BytesOf("x")).Take();
    const std::size_t opening = ResourceFile().Take().size();
    const struct {
        const char* what;
        Bytes bytes;
        bool accepted;
    } cases[] = {
        {"right", entry(4, 32, 4), true},
        {"padding missing at the end", entry(3, 32, 3), true},
        {"data longer than the file", entry(5, 32, 4), false},
        {"data as long as can be said", entry(0xFFFFFFFF, 32, 4), false},
        {"data that wraps round to the header", entry(0xFFFFFFE0, 32, 4), false},
        {"header too short", entry(4, 31, 4), false},
        {"header too long", entry(0, 36, 4), false},
        {"header of no length", entry(4, 0, 4), false},
        {"header as long as can be said", entry(4, 0xFFFFFFFF, 4), false},
        {"a further entry cut after its sizes", entry(0, 32, 8), false},
        {"nothing", {}, false},
        {"no opening", Bytes(one.begin() + static_cast<std::ptrdiff_t>(opening), one.end()), false},
        {"only the opening", ResourceFile().Take(), true},
        {"two files joined", ResourceFile().Open().Add(10, 1, BytesOf("x")).Take(), true},
        {"a name without end",
         ResourceFile().Raw().Long(0).Long(64).Word(0xFFFF).Word(10).Fill(16, 0x33).Take(), false},
        {"the mark of a number at the very end", ResourceFile().Raw().Fill(8, 0).Word(0xFFFF).Take(), false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(ParseResourceFile(Tight(ViewOf(each.bytes)).View()).has_value(), each.accepted);
    }
}

// Different names of eight units that the standard library gives one hash: of the two words that a name is
// made of, the second undoes what the first did.
std::vector<std::u16string> NamesOfOneHash(std::size_t count) {
    constexpr std::uint64_t multiplier = 0xC6A4A7935BD1E995, inverse = 0x5F7A0EA7E59B19BD;
    const auto shifted = [](std::uint64_t value) { return value ^ (value >> 47); };
    std::mt19937_64 random(2);
    std::vector<std::u16string> names;
    while (names.size() < count) {
        std::uint64_t words[2] = {random(), 0};
        const std::uint64_t first = shifted(words[0] * multiplier) * multiplier;
        const std::uint64_t between = ((0xC70F6907 ^ 16 * multiplier) ^ first) * multiplier;
        words[1] = shifted(between * inverse) * inverse;
        char16_t units[8];
        std::memcpy(units, words, sizeof units);
        if (std::none_of(units, units + 8,
                         [](char16_t u) { return u == 0 || u == 0xFFFF || (u >= u'a' && u <= u'z'); }))
            names.emplace_back(units, 8);
    }
    return names;
}

// Only the first of many entries of one name is kept, and all are found, however they are named: minutes, if
// each was compared with all others.
TEST(ResourceFile, ManyEntriesOfAnyNames) {
    ResourceFile file;
    const std::vector<std::u16string> names = NamesOfOneHash(100000);
    EXPECT_EQ(std::hash<std::u16string>()(names[0]), std::hash<std::u16string>()(names[1]));
    for (const std::u16string& name : names)
        file.Add(10, 1, BytesOf(&name == &names[0] ? "early" : "late")).Add(10, name, BytesOf("x"));
    const Bytes bytes = file.Take();
    const HMODULE module = RegisterModuleResources(bytes.data(), bytes.size());
    ASSERT_TRUE(module);
    EXPECT_EQ(SizeofResource(module, FindResourceW(module, MAKEINTRESOURCE(1), RT_RCDATA)), 5u);
    for (const std::u16string& name : names)
        ASSERT_TRUE(FindResourceW(module, name.c_str(), RT_RCDATA));
    UnregisterModuleResources(module);
}

}  // namespace
