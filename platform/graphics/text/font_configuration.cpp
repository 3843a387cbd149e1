#include "platform/graphics/text/font_configuration.h"

#include <fontconfig/fontconfig.h>

#include <memory>

namespace platform {
namespace {

struct Destroy {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
using ConfigPtr = std::unique_ptr<FcConfig, Destroy>;

// Applied to a face that was chosen, after every rule of the system.
constexpr char kRendering[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hinting" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintslight</const></edit>
    <edit name="autohint" mode="assign"><bool>false</bool></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
    <edit name="embeddedbitmap" mode="assign"><bool>false</bool></edit>
  </match>
</fontconfig>
)";

ConfigPtr Load() {
    ConfigPtr config(FcConfigCreate());
    const auto* rendering = reinterpret_cast<const FcChar8*>(kRendering);
    if (config && FcConfigParseAndLoad(config.get(), nullptr, FcTrue) &&
        FcConfigParseAndLoadFromMemory(config.get(), rendering, FcTrue) && FcConfigBuildFonts(config.get())) {
        return config;
    }
    // A broken configuration still has the faces that the library finds by itself.
    return ConfigPtr(FcConfigReference(nullptr));
}

}  // namespace

FcConfig* FontConfiguration() {
    // Never destroyed: a host's static objects draw until the process ends.
    static FcConfig* const config = Load().release();
    return config;
}

}  // namespace platform
