#include "dialog/recorder.h"

#include <bit>
#include <cstdint>
#include <utility>

namespace qkui {

void Recorder::Add(const ImageOperation& piece) {
    OperationBounds::Add(piece);
    inputs_.Add(piece.image->GetRevision());
    Add(piece.destination);
    Add(piece.source);
    inputs_.Add(static_cast<std::uint64_t>(piece.wrap));
}

void Recorder::Add(const TextOperation& piece) {
    if (!piece.text) return;
    OperationBounds::Add(piece);
    Add(std::u16string_view(piece.text, static_cast<std::size_t>(piece.length)));
    inputs_.Add(piece.font ? piece.font->GetRevision() : 0);
    Add(piece.layout);
    const Gdiplus::StringFormat& format = *piece.format;
    inputs_.Add(static_cast<std::uint64_t>(format.GetFormatFlags()));
    inputs_.Add(static_cast<std::uint64_t>(format.GetAlignment()));
    inputs_.Add(static_cast<std::uint64_t>(format.GetLineAlignment()));
    inputs_.Add(static_cast<std::uint64_t>(format.GetTrimming()));
    inputs_.Add(piece.color.GetValue());
}

void Recorder::Add(const Gdiplus::RectF& rect) {
    for (const float value : {rect.X, rect.Y, rect.Width, rect.Height})
        inputs_.Add(std::bit_cast<std::uint32_t>(value));
}

// Four units to a number.
void Recorder::Add(std::u16string_view text) {
    inputs_.Add(text.size());
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        number = number << 16U | text[i];
        if (i % 4 == 3 || i + 1 == text.size()) inputs_.Add(std::exchange(number, 0));
    }
}

}  // namespace qkui
