#include "platform/graphics/text/font_configuration.h"

#include <fontconfig/fontconfig.h>

namespace platform {
namespace {

// What only our patterns have.
constexpr char kMark[] = "qkuirendering";

// Applied to a face that was chosen, after every rule of the system.
constexpr char kRendering[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="font">
    <test target="pattern" name="qkuirendering"><bool>true</bool></test>
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hinting" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintslight</const></edit>
    <edit name="autohint" mode="assign"><bool>false</bool></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
    <edit name="embeddedbitmap" mode="assign"><bool>false</bool></edit>
  </match>
</fontconfig>
)";

// A configuration of our own would be the same files read once more: the shaping library reads them for the
// process whatever it is given.
FcConfig* Load() {
    FcConfig* const config = FcConfigReference(nullptr);
    FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(kRendering), FcTrue);
    return config;
}

}  // namespace

FcConfig* FontConfiguration() {
    // Never destroyed: a host's static objects draw until the process ends.
    static FcConfig* const config = Load();
    return config;
}

void RenderAlike(FcPattern* wanted) {
    FcPatternAddBool(wanted, kMark, FcTrue);
}

}  // namespace platform
