#include "platform/graphics/text/text_trimmer.h"

#include <algorithm>
#include <vector>

#include "platform/graphics/text/utf8_cut.h"

namespace platform {
namespace {

constexpr std::string_view kEllipsis = "\xE2\x80\xA6";

class Trimmer {
  public:
    Trimmer(std::string_view text, TextShaper& shaper, const FontData& font, const TrimRequest& request)
        : text_(text),
          request_(request),
          shaper_(shaper),
          font_(font),
          layout_(shaper.MakeLayout(font, request.rightToLeft)) {}

    std::string Trim() {
        // Only as much of a very long text is looked at as can matter.
        for (std::size_t look = 512;; look *= 4) {
            const std::string_view part = StartOf(text_, std::min(look, request_.mostBytes));
            const bool whole = part.size() == text_.size();
            const bool all = whole || look >= request_.mostBytes;
            if (all || Measure(part) > request_.width) return Cut(part, whole);
        }
    }

  private:
    int Measure(std::string_view text) {
        shaper_.SetText(layout_.get(), text, font_);
        PangoRectangle logical;
        PangoLayoutLine* line = pango_layout_get_line_readonly(layout_.get(), 0);
        pango_layout_line_get_pixel_extents(line, nullptr, &logical);
        shaper_.CountWork(line);
        return logical.width;
    }

    std::string Ended(std::string_view start) const {
        std::string text(WithoutTrailingBlanks(start));
        if (request_.ellipsis) text += kEllipsis;
        return text;
    }

    std::string Cut(std::string_view part, bool whole) {
        if (whole && !request_.ellipsisEvenIfFits) {
            std::string all(part);
            if (Measure(all) <= request_.width) return all;
        }
        FindStops(part);
        if (request_.atWords) {
            const std::size_t length = Longest(words_, part);
            if (length > 0) return Ended(part.substr(0, length));
        }
        std::size_t length = Longest(characters_, part);
        if (length == 0 && !request_.ellipsis && !characters_.empty()) length = characters_.front();
        return Ended(part.substr(0, length));
    }

    // Where the text may be cut, as byte counts above zero, in order.
    void FindStops(std::string_view part) {
        shaper_.SetText(layout_.get(), part, font_);
        gint count = 0;
        const PangoLogAttr* attributes = pango_layout_get_log_attrs_readonly(layout_.get(), &count);
        std::size_t at = 0;
        for (gint i = 1; i < count && at < part.size(); ++i) {
            do {
                ++at;
            } while (at < part.size() && ContinuesCharacter(part[at]));
            if (attributes[i].is_cursor_position != 0) characters_.push_back(at);
            if (attributes[i].is_line_break != 0 || at == part.size()) words_.push_back(at);
        }
    }

    // The last stop whose text fits, 0 for none.
    std::size_t Longest(const std::vector<std::size_t>& stops, std::string_view part) {
        const auto fits = [&](std::size_t stop) {
            return Measure(Ended(part.substr(0, stop))) <= request_.width;
        };
        const auto end = std::partition_point(stops.begin(), stops.end(), fits);
        return end == stops.begin() ? 0 : *std::prev(end);
    }

    std::string_view text_;
    TrimRequest request_;
    TextShaper& shaper_;
    const FontData& font_;
    ObjectPtr<PangoLayout> layout_;
    std::vector<std::size_t> characters_;
    std::vector<std::size_t> words_;
};

}  // namespace

std::string TrimText(std::string_view text, TextShaper& shaper, const FontData& font,
                     const TrimRequest& request) {
    return Trimmer(text, shaper, font, request).Trim();
}

}  // namespace platform
