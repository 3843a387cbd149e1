// Errors and starts by thread, memory blocks and streams.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <platform/memory.h>
#include <platform/ole.h>

#include "platform/base/global_memory.h"

namespace {

// A block that holds a text, without its terminator.
HGLOBAL BlockOf(const std::string& text) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size());
    std::memcpy(GlobalLock(block), text.data(), text.size());
    GlobalUnlock(block);
    return block;
}

TEST(Thread, LastErrorAndStartsBelongToTheThread) {
    SetLastError(ERROR_BAD_FORMAT);
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    EXPECT_EQ(CoInitialize(nullptr), S_FALSE);
    std::thread([] {
        EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
        SetLastError(ERROR_INVALID_DATA);
        CoUninitialize();  // not started: nothing to stop
        EXPECT_EQ(CoInitialize(nullptr), S_OK);
        CoUninitialize();
    }).join();
    EXPECT_EQ(GetLastError(), ERROR_BAD_FORMAT);
    int reserved = 0;
    EXPECT_EQ(CoInitialize(&reserved), E_INVALIDARG);
    CoUninitialize();
    CoUninitialize();
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    CoUninitialize();
}

TEST(Error, EveryCodeHasItsOwnSentence) {
    std::set<std::string> sentences = {ErrorText(0xFFFFFFFF)};
    for (const DWORD code :
         {ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_INVALID_HANDLE, ERROR_NOT_ENOUGH_MEMORY,
          ERROR_BAD_FORMAT, ERROR_INVALID_DATA, ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER,
          ERROR_CONNECTION_UNAVAIL, ERROR_INVALID_WINDOW_HANDLE, ERROR_CANNOT_FIND_WND_CLASS,
          ERROR_WINDOW_OF_OTHER_THREAD, ERROR_CLASS_ALREADY_EXISTS, ERROR_RESOURCE_DATA_NOT_FOUND,
          ERROR_RESOURCE_TYPE_NOT_FOUND, ERROR_RESOURCE_NAME_NOT_FOUND})
        EXPECT_TRUE(sentences.insert(ErrorText(code)).second) << code;
}

TEST(Block, LivesUntilItIsFreed) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 1000);
    EXPECT_EQ(GlobalSize(block), 1000u);
    ASSERT_NE(GlobalLock(block), nullptr);
    EXPECT_EQ(std::memcmp(GlobalLock(block), std::string(1000, '\0').data(), 1000), 0);
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalFree(block));

    const HGLOBAL empty = GlobalAlloc(GMEM_FIXED, 0);  // takes the slot of the block before
    EXPECT_NE(GlobalLock(empty), nullptr);
    EXPECT_EQ(GlobalSize(empty), 0u);
    EXPECT_TRUE(GlobalUnlock(empty));
    EXPECT_TRUE(GlobalUnlock(empty));
    for (const HGLOBAL stale : {block, HGLOBAL(), HGLOBAL(12345, 1)}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GlobalLock(stale), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_EQ(GlobalSize(stale), 0u);
        EXPECT_FALSE(GlobalUnlock(stale));
        EXPECT_EQ(GlobalFree(stale), stale);
    }
    EXPECT_FALSE(GlobalFree(empty));
    EXPECT_FALSE(GlobalAlloc(0, SIZE_MAX));
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
}

TEST(Block, LentBytesCannotBeFreed) {
    const std::string text = "lent";
    const HGLOBAL block = platform::LendGlobal(text.data(), text.size());
    EXPECT_EQ(GlobalLock(block), text.data());
    EXPECT_EQ(GlobalFree(block), block);
    EXPECT_EQ(GlobalSize(block), 4u);
    platform::WithdrawGlobal(block);
    EXPECT_EQ(GlobalLock(block), nullptr);
    const HGLOBAL owned = BlockOf("own");
    platform::WithdrawGlobal(owned);  // withdraws nothing but lent blocks
    EXPECT_EQ(GlobalSize(owned), 3u);
    GlobalFree(owned);
}

TEST(Block, ManyThreadsTakeAndFree) {
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (const char letter : {'a', 'b', 'c', 'd'})
        threads.emplace_back([&wrong, letter] {
            for (std::size_t i = 0; i < 2000; ++i) {
                const std::string text(i % 50 + 1, letter);
                const HGLOBAL block = BlockOf(text);
                if (std::memcmp(GlobalLock(block), text.data(), text.size()) != 0) ++wrong;
                if (GlobalFree(block)) ++wrong;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(Stream, ReadsAndSeeks) {
    const HGLOBAL block = BlockOf("0123456789");
    IStream* stream = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(block, TRUE, &stream), S_OK);
    const auto read = [&](ULONG count) {
        char buffer[32] = {};
        ULONG got = 99;
        const HRESULT result = stream->Read(buffer, count, &got);
        EXPECT_EQ(result, got == count ? S_OK : S_FALSE);
        return std::string(buffer, got);
    };
    std::uint64_t size = 0;
    EXPECT_EQ(stream->Size(&size), S_OK);
    EXPECT_EQ(size, 10u);
    EXPECT_EQ(read(4), "0123");
    EXPECT_EQ(read(0), "");
    EXPECT_EQ(read(20), "456789");
    EXPECT_EQ(read(1), "");

    const struct {
        std::int64_t offset;
        DWORD origin;
        HRESULT result;
        std::uint64_t position;  // after the call
        const char* next;
    } cases[] = {
        {3, STREAM_SEEK_SET, S_OK, 3, "34"},
        {-2, STREAM_SEEK_CUR, S_OK, 3, "34"},
        {-1, STREAM_SEEK_END, S_OK, 9, "9"},
        {5, STREAM_SEEK_END, S_OK, 15, ""},
        {-15, STREAM_SEEK_CUR, S_OK, 0, "01"},
        {-3, STREAM_SEEK_CUR, E_INVALIDARG, 2, "23"},
        {-1, STREAM_SEEK_SET, E_INVALIDARG, 4, "45"},
        {0, 3, E_INVALIDARG, 6, "67"},
        {INT64_MAX, STREAM_SEEK_SET, S_OK, INT64_MAX, ""},
        {1, STREAM_SEEK_CUR, E_INVALIDARG, INT64_MAX, ""},
        {INT64_MAX, STREAM_SEEK_END, E_INVALIDARG, INT64_MAX, ""},
        {INT64_MIN, STREAM_SEEK_CUR, E_INVALIDARG, INT64_MAX, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        EXPECT_EQ(stream->Seek(c.offset, c.origin, nullptr), c.result);
        std::uint64_t position = 0;
        EXPECT_EQ(stream->Seek(0, STREAM_SEEK_CUR, &position), S_OK);
        EXPECT_EQ(position, c.position);
        EXPECT_EQ(read(2), c.next);
    }
    EXPECT_EQ(stream->Read(nullptr, 1, nullptr), E_POINTER);
    EXPECT_EQ(stream->Size(nullptr), E_POINTER);
    EXPECT_EQ(stream->AddRef(), 2u);
    EXPECT_EQ(stream->Release(), 1u);
    EXPECT_EQ(GlobalSize(block), 10u);
    EXPECT_EQ(stream->Release(), 0u);
    EXPECT_EQ(GlobalSize(block), 0u);  // gone with the stream
}

TEST(Stream, SurvivesABlockFreedUnderIt) {
    const HGLOBAL block = BlockOf("abc");
    IStream* stream = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(block, FALSE, &stream), S_OK);
    GlobalFree(block);
    const HGLOBAL next = BlockOf("xyz");  // in the same slot
    char buffer[4] = {};
    ULONG got = 99;
    std::uint64_t value = 0;
    EXPECT_EQ(stream->Read(buffer, 3, &got), E_FAIL);
    EXPECT_EQ(got, 0u);
    EXPECT_EQ(stream->Seek(0, STREAM_SEEK_SET, &value), E_FAIL);
    EXPECT_EQ(stream->Size(&value), E_FAIL);
    stream->Release();
    EXPECT_EQ(GlobalSize(next), 3u);
    GlobalFree(next);

    stream = reinterpret_cast<IStream*>(&value);
    EXPECT_EQ(CreateStreamOnHGlobal(block, TRUE, &stream), E_INVALIDARG);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(CreateStreamOnHGlobal(block, TRUE, nullptr), E_INVALIDARG);
}

}  // namespace
