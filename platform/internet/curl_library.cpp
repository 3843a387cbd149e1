#include "platform/internet/curl_library.h"

#include <dlfcn.h>

#include <optional>

#include "platform/base/log.h"

namespace platform {
namespace {

// One library, built over either TLS library.
constexpr const char* kNames[] = {"libcurl.so.4", "libcurl-gnutls.so.4"};

template <class Function>
bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

std::optional<CurlLibrary> LoadFrom(const char* name) {
    void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (!library) return std::nullopt;
    CurlLibrary curl{};
    const bool whole = Find(library, "curl_global_init", curl.globalInit) &&
                       Find(library, "curl_easy_init", curl.easyInit) &&
                       Find(library, "curl_easy_setopt", curl.easySetopt) &&
                       Find(library, "curl_easy_getinfo", curl.easyGetinfo) &&
                       Find(library, "curl_easy_pause", curl.easyPause) &&
                       Find(library, "curl_easy_cleanup", curl.easyCleanup) &&
                       Find(library, "curl_multi_init", curl.multiInit) &&
                       Find(library, "curl_multi_add_handle", curl.multiAddHandle) &&
                       Find(library, "curl_multi_remove_handle", curl.multiRemoveHandle) &&
                       Find(library, "curl_multi_perform", curl.multiPerform) &&
                       Find(library, "curl_multi_poll", curl.multiPoll) &&
                       Find(library, "curl_multi_info_read", curl.multiInfoRead) &&
                       Find(library, "curl_multi_cleanup", curl.multiCleanup) &&
                       Find(library, "curl_slist_append", curl.slistAppend) &&
                       Find(library, "curl_slist_free_all", curl.slistFreeAll);
    if (whole && curl.globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK) return curl;
    dlclose(library);
    return std::nullopt;
}

std::optional<CurlLibrary> Load() {
    for (const char* name : kNames)
        if (auto curl = LoadFrom(name)) return curl;
    LogMissing("library", kNames[0], "not installed, so there are no requests");
    return std::nullopt;
}

}  // namespace

const CurlLibrary* CurlLibrary::Get() {
    static const std::optional<CurlLibrary> curl = Load();
    return curl ? &*curl : nullptr;
}

}  // namespace platform
