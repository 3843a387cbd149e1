// Accents that a face has but cannot put over every letter.
#pragma once

#include <pango/pango.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "platform/graphics/text/font_data.h"

namespace platform {

// Faces for ideographs draw an accent beside its letter, unless they hold the two as one character. Such
// letters are taken from a face that can put marks where they belong, if one is installed.
class MarkFallback {
  public:
    // The context outlives this object.
    explicit MarkFallback(PangoContext* context) : context_(context) {}
    // Adds to `attributes` what a layout of `text` (UTF-8) needs.
    void Apply(PangoAttrList* attributes, std::string_view text, const FontData& font);
    void Forget() { placed_.clear(); }

  private:
    bool Places(const std::string& family, int style);
    bool PlacesAnew(const std::string& family, int style) const;
    const char* Substitute(int style);

    PangoContext* context_;
    std::map<std::pair<std::string, int>, bool> placed_;  // by family and style
};

}  // namespace platform
