#include "platform/graphics/image_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string>

namespace platform {
namespace {

// A stream is read in pieces that grow with what came, as most pictures are small.
constexpr std::size_t kLeastChunk = std::size_t{16} << 10;
constexpr std::size_t kMostChunk = std::size_t{1} << 20;

class File {
  public:
    // Without waiting, so that a pipe in the place of a picture does not hold the caller up.
    explicit File(const std::string& path)
        : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~File() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsRegular(struct stat& status) const {
        return descriptor_ >= 0 && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
    }
    // How many bytes came; fewer than asked for at the end only. -1 on an error.
    ssize_t Read(std::uint8_t* to, std::size_t size) const {
        std::size_t done = 0;
        while (done < size) {
            const ssize_t count = read(descriptor_, to + done, size - done);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return -1;
            if (count == 0) break;
            done += static_cast<std::size_t>(count);
        }
        return static_cast<ssize_t>(done);
    }

  private:
    int descriptor_;
};

FileState StateOf(const struct stat& status) {
    return {{static_cast<std::int64_t>(status.st_dev), static_cast<std::int64_t>(status.st_ino),
             status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
             status.st_ctim.tv_nsec}};
}

// Two writes within one step of a file system's clock leave the same times.
bool IsSettled(const struct stat& status) {
    constexpr std::int64_t kCoarsestStep = 2;  // seconds
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return std::max(status.st_mtim.tv_sec, status.st_ctim.tv_sec) + kCoarsestStep < now.tv_sec;
}

// The stream's answers are not trusted: what is read counts, not what it says its size is.
Gdiplus::Status ReadAll(IStream& stream, std::vector<std::uint8_t>& bytes) {
    if (FAILED(stream.Seek(0, STREAM_SEEK_SET, nullptr))) return Gdiplus::GenericError;
    for (;;) {
        const std::size_t had = bytes.size();
        if (had > kMaxEncodedBytes) return Gdiplus::OutOfMemory;
        const std::size_t chunk = std::clamp(had, kLeastChunk, kMostChunk);
        bytes.resize(had + chunk);
        ULONG count = 0;
        const HRESULT result = stream.Read(bytes.data() + had, static_cast<ULONG>(chunk), &count);
        if (FAILED(result)) return Gdiplus::GenericError;
        bytes.resize(had + std::min<std::size_t>(count, chunk));
        if (count == 0 || result == S_FALSE) break;
    }
    bytes.shrink_to_fit();
    return Gdiplus::Ok;
}

}  // namespace

FileState StateOfFile(LPCWSTR path) try {
    struct stat status {};
    if (!path || stat(ToUtf8(std::u16string_view(path)).c_str(), &status) != 0) return {};
    return StateOf(status);
} catch (const std::bad_alloc&) {
    return {};
}

Gdiplus::Status ReadFileBytes(LPCWSTR path, std::vector<std::uint8_t>& bytes, FileState* state) try {
    if (!path) return Gdiplus::InvalidParameter;
    const File file(ToUtf8(std::u16string_view(path)));
    struct stat status {};
    if (!file.IsRegular(status)) return Gdiplus::FileNotFound;
    if (state) *state = IsSettled(status) ? StateOf(status) : FileState();
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > kMaxEncodedBytes) return Gdiplus::OutOfMemory;
    bytes.resize(size);
    const ssize_t count = file.Read(bytes.data(), size);
    if (count < 0) return Gdiplus::GenericError;
    bytes.resize(static_cast<std::size_t>(count));
    return Gdiplus::Ok;
} catch (const std::bad_alloc&) {
    return Gdiplus::OutOfMemory;
}

Gdiplus::Status ReadStreamBytes(IStream* stream, std::vector<std::uint8_t>& bytes) try {
    return stream ? ReadAll(*stream, bytes) : Gdiplus::InvalidParameter;
} catch (const std::bad_alloc&) {
    return Gdiplus::OutOfMemory;
}

}  // namespace platform
