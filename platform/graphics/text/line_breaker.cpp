// The breaking of a text into lines.
#include <algorithm>
#include <cmath>
#include <string>

#include "platform/graphics/text/text_layout.h"
#include "platform/graphics/text/text_trimmer.h"
#include "platform/graphics/text/utf8_cut.h"

namespace platform {
namespace {

// Lines and texts are cut off beyond this many pixels: far outside every surface, within what the shaping
// library's fixed-point numbers hold.
constexpr int kMostPixels = 700'000;

// A wrapped text is shaped in pieces of so many lines, by the bytes that fill a square of the line. The
// shaping library takes a time for a piece that grows with the square of its lines.
constexpr float kUsualLines = 32;
constexpr float kBytesPerSquare = 3;
constexpr float kLeastLook = 128;
constexpr float kMostUsualLook = 4096;
// Bytes. No surface shows more of a line, and what a line of many directions or tabs costs grows with the
// square: an unwrapped line ends here, a wrapped one is broken. Half of it is looked at to trim a line.
constexpr std::size_t kLongestLine = 8192;
// Of one text, as TextShaper counts it; the text ends with the line that exceeds it. A page has some
// thousands.
constexpr std::uint64_t kMostWork = 2'000'000;
// Marks on one letter; what comes after them is not drawn.
constexpr int kMostMarks = 32;

// The character that starts at a unit; a lone surrogate is itself.
gunichar CharacterAt(std::u16string_view text, std::size_t i) {
    const bool pair =
        (text[i] & 0xFC00U) == 0xD800U && i + 1 < text.size() && (text[i + 1] & 0xFC00U) == 0xDC00U;
    return pair ? 0x10000U + ((text[i] & 0x3FFU) << 10) + (text[i + 1] & 0x3FFU) : text[i];
}

// UTF-8 in which every kind of line end is a line feed, a zero is no character to be seen, and no letter has
// more marks than anybody could read.
std::string Normalise(std::u16string_view text) {
    std::u16string units;
    units.reserve(text.size());
    int marks = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const gunichar character = CharacterAt(text, i);
        const bool mark = character >= 0x300 && g_unichar_ismark(character) != 0;
        marks = mark ? marks + 1 : 0;
        if (marks > kMostMarks) {
            if (character > 0xFFFF) ++i;
            continue;
        }
        if (character > 0xFFFF) {
            units += text.substr(i++, 2);
            continue;
        }
        switch (text[i]) {
            case u'\r':
                if (i + 1 < text.size() && text[i + 1] == u'\n') ++i;
                [[fallthrough]];
            case u'\v':
            case u'\f':
            case u'\u0085':
            case u'\u2028':
            case u'\u2029':
                units += u'\n';
                break;
            case u'\0':
                units += u'\u200B';
                break;
            default:
                units += text[i];
        }
    }
    return ToUtf8(units);
}

}  // namespace

class LineBreaker {
  public:
    LineBreaker(const FontData& font, const TextFormat& format)
        : font_(font),
          format_(format),
          shaper_(TextShaper::OfThread()),
          width_(std::min(format.width, static_cast<float>(kMostPixels))),
          workBefore_(shaper_.Work()) {
        shaper_.Use(font);
        fontReach_ = shaper_.ReachOf(font);
        layout_->rules_ = shaper_.RulesOf(font);
    }

    std::shared_ptr<const TextLayout> Break(std::u16string_view text) {
        const std::string utf8 = Normalise(text);
        std::string_view rest = utf8;
        while (!full_ && !text.empty()) {
            const std::size_t end = rest.find('\n');
            SetParagraph(WithoutTrailingBlanks(rest.substr(0, end)));
            if (end == std::string_view::npos) break;
            rest.remove_prefix(end + 1);
        }
        if (full_) TrimLastLine();
        Place();
        // What the shaping library keeps for a character, a line and a layout.
        layout_->bytes_ =
            sizeof(TextLayout) + utf8.size() * 64 + layout_->lines_.size() * (sizeof(TextLine) + 2048);
        return layout_;
    }

  private:
    using LayoutPtr = std::shared_ptr<PangoLayout>;

    // Where the last line stands in its paragraph.
    struct LineSource {
        std::string_view paragraph;
        std::size_t start = 0;
        bool endsParagraph = false;
    };

    LayoutPtr Shape(std::string_view text, bool wrapped) const {
        LayoutPtr layout = shaper_.MakeLayout(font_, format_.RightToLeft());
        if (wrapped) {
            pango_layout_set_width(layout.get(), static_cast<int>(width_ * PANGO_SCALE));
            pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
        }
        shaper_.SetText(layout.get(), text, font_);
        return layout;
    }

    std::string Trimmed(std::string_view text, bool moreFollows) const {
        const int width = width_ > 0 ? static_cast<int>(width_) : kMostPixels;
        return TrimText(text, shaper_, font_,
                        TrimRequest{width, kLongestLine / 2, format_.TrimsAtWords(), format_.HasEllipsis(),
                                    moreFollows, format_.RightToLeft()});
    }

    void SetParagraph(std::string_view paragraph) {
        if (format_.Wraps()) {
            SetWrapped(paragraph);
        } else {
            SetUnwrapped(paragraph);
        }
    }

    // In pieces: of a text that the box will not hold, little more than what it holds is shaped, and the
    // shaping library's numbers hold the width of a piece. Each piece starts with the line that the end of
    // the piece before it broke off.
    void SetWrapped(std::string_view paragraph) {
        const float pixels = std::max(font_.pixels, 1.0F);
        const auto most =
            std::min(kLongestLine, static_cast<std::size_t>(std::max(kMostPixels / pixels, 64.0F)));
        const auto usual = static_cast<std::size_t>(
            std::clamp(kBytesPerSquare * kUsualLines * width_ / pixels, kLeastLook, kMostUsualLook));
        std::size_t look = std::min(usual, most);
        for (std::size_t start = 0; !full_;) {
            const std::string_view rest = paragraph.substr(start);
            const std::string_view piece = StartOf(rest, look);
            const bool whole = piece.size() == rest.size();
            const LayoutPtr layout = Shape(piece, true);
            const GSList* at = pango_layout_get_lines_readonly(layout.get());
            if (!whole && at->next == nullptr && look < most) {
                look = std::min(look * 4, most);
                continue;
            }
            std::size_t next = start + piece.size();
            std::size_t brokenLines = 0;
            for (bool first = true; at != nullptr && !full_; at = at->next, first = false) {
                auto* line = static_cast<PangoLayoutLine*>(at->data);
                const auto from = start + static_cast<std::size_t>(line->start_index);
                if (!first && !IsBlank(paragraph[from - 1])) ++brokenLines;
                if (!whole && !first && at->next == nullptr) {
                    next = from;
                } else {
                    AddLine(layout, line, {paragraph, from, whole && at->next == nullptr});
                }
            }
            if (brokenLines > 0) shaper_.CountBreaks(piece.size());
            if (whole) return;
            start = next;
            look = LookAfter(piece.size(), brokenLines, std::min(usual, most));
        }
    }

    // Where a line breaks within a word, what follows in the piece is shaped again: a word of many lines is
    // cut into pieces of few.
    static std::size_t LookAfter(std::size_t pieceSize, std::size_t brokenLines, std::size_t usual) {
        constexpr std::size_t kFewLines = 2;
        if (brokenLines < kFewLines) return usual;
        return std::clamp(kFewLines * pieceSize / brokenLines, std::min(usual, std::size_t{64}), usual);
    }
    static bool IsBlank(char byte) { return byte == ' ' || byte == '\t' || byte == '-'; }

    void SetUnwrapped(std::string_view paragraph) {
        constexpr std::size_t kShort = 512;
        const bool trims = width_ > 0 && format_.trimming != Gdiplus::StringTrimmingNone;
        const auto most = std::min(
            kLongestLine,
            static_cast<std::size_t>(4 * static_cast<float>(kMostPixels) / std::max(font_.pixels, 1.0F)));
        LayoutPtr layout;
        if (!trims || paragraph.size() <= kShort) layout = Shape(StartOf(paragraph, most), false);
        if (trims && (!layout || WidthOf(layout.get()) > width_))
            layout = Shape(Trimmed(paragraph, false), false);
        AddLine(layout, pango_layout_get_line_readonly(layout.get(), 0), {paragraph, 0, true});
    }

    static float WidthOf(PangoLayout* layout) {
        PangoRectangle logical;
        pango_layout_line_get_pixel_extents(pango_layout_get_line_readonly(layout, 0), nullptr, &logical);
        return static_cast<float>(logical.width);
    }

    // Half lines are shown, unless the format says otherwise or an ellipsis would be what is cut in half.
    bool HasRoomFor(const LineReach& reach) const {
        if (height_ >= kMostPixels) return false;
        if (shaper_.Work() - workBefore_ > kMostWork && !layout_->lines_.empty()) return false;
        if (!format_.LimitsHeight()) return true;
        const auto used = static_cast<float>(height_);
        if (format_.WholeLines()) return used + static_cast<float>(reach.Height()) <= format_.height;
        if (layout_->lines_.empty()) return true;
        if (format_.HasEllipsis()) return used + static_cast<float>(reach.Height()) <= format_.height;
        return used < format_.height;
    }

    void AddLine(const LayoutPtr& layout, PangoLayoutLine* line, const LineSource& source) {
        const TextLine measured = Measure(layout, line);
        if (!HasRoomFor(measured.reach)) {
            full_ = true;
            return;
        }
        last_ = source;
        height_ += measured.reach.Height();
        layout_->lines_.push_back(measured);
    }

    const LineReach& ReachOf(PangoFont* face) {
        std::vector<TextFace>& faces = layout_->faces_;
        const auto found = std::find_if(faces.begin(), faces.end(),
                                        [face](const TextFace& known) { return known.font.get() == face; });
        if (found != faces.end()) return found->reach;
        ObjectPtr<PangoFont> font(static_cast<PangoFont*>(g_object_ref(face)));
        return faces.emplace_back(TextFace{std::move(font), TextShaper::ReachOfFace(face, font_)}).reach;
    }

    TextLine Measure(const LayoutPtr& layout, PangoLayoutLine* line) {
        TextLine measured;
        measured.layout = layout;
        measured.line = line;
        PangoRectangle ink;
        PangoRectangle logical;
        pango_layout_line_get_pixel_extents(line, &ink, &logical);
        shaper_.CountWork(line);
        measured.reach = fontReach_;
        bool faceless = false;  // on a system without any: its height is left to chance
        for (const GSList* at = line->runs; at != nullptr; at = at->next) {
            const auto* run = static_cast<const PangoLayoutRun*>(at->data);
            PangoFont* const face = run->item->analysis.font;
            if (face) measured.reach.Include(ReachOf(face));
            faceless |= face == nullptr;
        }
        const bool hasInk = !faceless && ink.width > 0 && ink.height > 0;
        if (hasInk) {
            // Letters that are higher than their face's line was held to, as far as the face itself allows,
            // and the pixel that rounding can add.
            measured.reach.Include({std::min(-ink.y, 1 - logical.y),
                                    std::min(ink.y + ink.height, logical.y + logical.height + 1)});
            measured.indent = std::max(0, -ink.x);
            measured.ink = CRect(ink.x - 1, ink.y - 1, ink.x + ink.width + 1, ink.y + ink.height + 1);
        }
        measured.ruled = logical.width;
        for (const TextRule& rule : {layout_->rules_.under, layout_->rules_.through}) {
            if (rule.thickness == 0 || measured.ruled == 0) continue;
            measured.reach.Include({-rule.top, rule.top + rule.thickness});
            measured.ink.UnionRect(measured.ink,
                                   CRect(0, rule.top, measured.ruled, rule.top + rule.thickness));
        }
        const int right = hasInk ? std::max(logical.width, ink.x + ink.width) : logical.width;
        measured.width = measured.indent + right;
        return measured;
    }

    void TrimLastLine() {
        if (layout_->lines_.empty() || format_.trimming == Gdiplus::StringTrimmingNone) return;
        const bool atCharacters = format_.trimming == Gdiplus::StringTrimmingCharacter && format_.Wraps();
        // A line that was wrapped ends at a word already, and one that was not is already trimmed.
        if (!format_.HasEllipsis() && !(atCharacters && !last_.endsParagraph)) return;
        const std::string text = Trimmed(last_.paragraph.substr(last_.start), format_.HasEllipsis());
        const LayoutPtr layout = Shape(text, false);
        height_ -= layout_->lines_.back().reach.Height();
        layout_->lines_.back() = Measure(layout, pango_layout_get_line_readonly(layout.get(), 0));
        height_ += layout_->lines_.back().reach.Height();
    }

    // How far something of `size` stands from the start of a space; the space may be smaller, or nothing.
    static int Offset(Gdiplus::StringAlignment alignment, float space, int size) {
        const float rest = space - static_cast<float>(size);
        switch (alignment) {
            case Gdiplus::StringAlignmentCenter:
                return static_cast<int>(std::floor(rest / 2));
            case Gdiplus::StringAlignmentFar:
                return static_cast<int>(std::floor(rest));
            default:
                return 0;
        }
    }

    void Place() {
        Gdiplus::StringAlignment alignment = format_.alignment;
        if (format_.RightToLeft() && alignment != Gdiplus::StringAlignmentCenter) {
            alignment = alignment == Gdiplus::StringAlignmentNear ? Gdiplus::StringAlignmentFar
                                                                  : Gdiplus::StringAlignmentNear;
        }
        const int top =
            Offset(format_.lineAlignment, std::min(format_.height, static_cast<float>(kMostPixels)), height_);
        int y = top;
        int left = kMostPixels;
        int right = -kMostPixels;
        for (TextLine& line : layout_->lines_) {
            line.left = Offset(alignment, width_, line.width);
            line.baseline = y + line.reach.ascent;
            y += line.reach.Height();
            left = std::min(left, line.left);
            right = std::max(right, line.left + line.width);
            if (line.ink.IsRectEmpty()) continue;
            line.ink.OffsetRect(line.left + line.indent, line.baseline);
            layout_->above_ = std::max(layout_->above_, line.baseline - line.ink.top);
            layout_->below_ = std::max(layout_->below_, line.ink.bottom - line.baseline);
            layout_->ink_.UnionRect(layout_->ink_, line.ink);
        }
        if (!layout_->lines_.empty()) SetBox(CRect(left, top, right, y));
    }

    void SetBox(const CRect& lines) {
        auto left = static_cast<float>(lines.left);
        auto top = static_cast<float>(lines.top);
        auto right = static_cast<float>(lines.right);
        auto bottom = static_cast<float>(lines.bottom);
        if (format_.Clips() && format_.width > 0) {
            left = std::clamp(left, 0.0F, format_.width);
            right = std::clamp(right, 0.0F, format_.width);
        }
        if (format_.Clips() && format_.height > 0) {
            top = std::clamp(top, 0.0F, format_.height);
            bottom = std::clamp(bottom, 0.0F, format_.height);
        }
        layout_->box_ = Gdiplus::RectF(left, top, right - left, bottom - top);
    }

    const FontData& font_;
    const TextFormat& format_;
    TextShaper& shaper_;
    LineReach fontReach_;
    float width_;  // of the box, 0 for none
    const std::uint64_t workBefore_;
    int height_ = 0;     // of the lines so far
    bool full_ = false;  // there is text for which the box has no room
    LineSource last_;
    std::shared_ptr<TextLayout> layout_ = std::shared_ptr<TextLayout>(new TextLayout);
};

std::shared_ptr<const TextLayout> TextLayout::LayOut(std::u16string_view text, const FontData& font,
                                                     const TextFormat& format) {
    return LineBreaker(font, format).Break(text);
}

}  // namespace platform
