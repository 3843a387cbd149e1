#include "platform/html/plugin.h"

#include <dlfcn.h>

#include <filesystem>

#include <platform/html.h>

#include "platform/base/log.h"
#include "platform/html/resource_page.h"
#include "platform/resources/loaded_object.h"

namespace platform::html {

namespace {

class Resources final : public PageSources {
  public:
    std::optional<ResourceAnswer> FindResource(const std::string& url) override {
        return FindResourcePage(url);
    }
};

// Beside what this code was loaded from, the library in the build as in an installed copy.
std::string PluginFile() {
    static const char here = 0;
    const std::optional<LoadedObject> object = LoadedObjectOf(&here);
    if (!object || object->path.empty()) return {};
    std::error_code failure;
    const std::filesystem::path real = std::filesystem::canonical(object->path, failure);
    return failure ? std::string() : (real.parent_path() / PLATFORM_BROWSER_PLUGIN).string();
}

PageMaker* Open(const std::string& file) {
    static Resources resources;
    // Never unloaded: the libraries below it leave handlers and threads in the process.
    void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const entry = library ? dlsym(library, kOpenBrowserName) : nullptr;
    if (!entry) {
        const char* const error = dlerror();
        LogMissing("library", file, error ? error : "not found");
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    PageMaker* const maker = reinterpret_cast<OpenBrowserFunction>(entry)(&resources);
    if (!maker) SetLastError(ERROR_CONNECTION_UNAVAIL);
    return maker;
}

}  // namespace

const BrowserPlugin* LoadBrowserPlugin() {
    static BrowserPlugin plugin;
    if (plugin.maker) return &plugin;
    const std::string file = PluginFile();
    plugin.maker = Open(file);
    plugin.file = FromUtf8(file);
    return plugin.maker ? &plugin : nullptr;
}

}  // namespace platform::html
