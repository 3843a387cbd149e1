// The component that hosts speak to about the wallpaper.
#include <platform/shell.h>
#include <platform/text.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "platform/ole/components.h"
#include "platform/shell/gobject.h"
#include "platform/shell/wallpaper.h"

IActiveDesktop::~IActiveDesktop() = default;

namespace platform {
namespace {

constexpr auto kPatience = std::chrono::seconds(8);

// Desktops are other programs, and some answer late or never: the work is done on a thread of its own, which
// is left to itself then. Empty when that happens, and without memory.
template <class Work>
auto InTime(Work work) -> std::optional<decltype(work())> try {
    std::packaged_task<decltype(work())()> task(std::move(work));
    auto answer = task.get_future();
    std::thread(std::move(task)).detach();
    if (answer.wait_for(kPatience) != std::future_status::ready) return std::nullopt;
    return answer.get();
} catch (const std::exception&) {
    return std::nullopt;
}

bool IsPicture(const std::string& path) {
    if (!g_path_is_absolute(path.c_str()) || !g_file_test(path.c_str(), G_FILE_TEST_IS_REGULAR)) return false;
    const GRef<GFile> file(g_file_new_for_path(path.c_str()));
    const GRef<GFileInputStream> stream(g_file_read(file.get(), nullptr, nullptr));
    guchar start[4096];
    const gssize length =
        stream ? g_input_stream_read(G_INPUT_STREAM(stream.get()), start, sizeof start, nullptr, nullptr) : 0;
    if (length <= 0) return false;
    const GText type(g_content_type_guess(nullptr, start, static_cast<gsize>(length), nullptr));
    return g_content_type_is_mime_type(type.get(), "image/*") != FALSE;
}

class ActiveDesktop final : public IActiveDesktop {
  public:
    ULONG AddRef() override { return ++holders_; }
    ULONG Release() override {
        const ULONG left = --holders_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT ApplyChanges(DWORD flags) override {
        constexpr DWORD kKnown = AD_APPLY_SAVE | AD_APPLY_HTMLGEN | AD_APPLY_REFRESH | AD_APPLY_FORCE;
        if (flags == 0 || (flags & ~kKnown) != 0) return E_INVALIDARG;
        if (!pending_) return S_FALSE;
        const auto set = InTime([path = *std::exchange(pending_, std::nullopt)] {
            const std::unique_ptr<Wallpaper> wallpaper = ChooseWallpaper();
            return wallpaper && wallpaper->Set(path);
        });
        return set.value_or(false) ? S_OK : E_FAIL;
    }

    HRESULT GetWallpaper(LPWSTR wallpaper, UINT size, DWORD flags) override {
        if (!wallpaper || size == 0) return E_POINTER;
        *wallpaper = 0;
        if (flags != AD_GETWP_LAST_APPLIED) return E_INVALIDARG;
        const auto path = InTime([]() -> std::optional<std::string> {
            const std::unique_ptr<Wallpaper> now = ChooseWallpaper();
            return now ? now->Get() : std::nullopt;
        });
        if (!path || !*path) return E_FAIL;
        const CString text = FromUtf8(**path);
        const std::u16string_view units = text.View().substr(0, size - 1);
        std::copy(units.begin(), units.end(), wallpaper);
        wallpaper[units.size()] = 0;
        return S_OK;
    }

    HRESULT SetWallpaper(LPCWSTR wallpaper, DWORD reserved) override {
        if (!wallpaper || reserved != 0) return E_INVALIDARG;
        const std::string path = ToUtf8(wallpaper);
        const auto good = InTime([path] { return IsPicture(path); });
        if (!good.value_or(false)) return E_INVALIDARG;
        pending_ = path;
        return S_OK;
    }

    HRESULT SetDesktopItemOptions(const COMPONENTSOPT* options, DWORD reserved) override {
        return options && options->dwSize == sizeof(COMPONENTSOPT) && reserved == 0 ? S_OK : E_INVALIDARG;
    }

  private:
    ~ActiveDesktop() override = default;

    std::atomic<ULONG> holders_ = 1;
    std::optional<std::string> pending_;
};

HRESULT MakeActiveDesktop(const GUID& interfaceId, void** object) {
    if (!(interfaceId == IID_IActiveDesktop)) return E_NOINTERFACE;
    IActiveDesktop* made = new (std::nothrow) ActiveDesktop;
    *object = made;
    return made ? S_OK : E_OUTOFMEMORY;
}

const ComponentClass activeDesktopClass(CLSID_ActiveDesktop, MakeActiveDesktop);

}  // namespace
}  // namespace platform
