#include "dialog/recorder.h"

#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>

namespace qkui {

namespace {

// The kinds of operations, in the upper half of the first number of each.
constexpr std::uint64_t kImage = 1ULL << 32U;
constexpr std::uint64_t kText = 2ULL << 32U;
constexpr std::uint64_t kCatch = 3ULL << 32U;

std::uint64_t Pair(float a, float b) {
    return std::uint64_t{std::bit_cast<std::uint32_t>(a)} << 32U | std::bit_cast<std::uint32_t>(b);
}

// Four units to a number.
void AddText(std::u16string_view text, DisplayList& list) {
    list.Add(text.size());
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        number = number << 16U | text[i];
        if (i % 4 == 3 || i + 1 == text.size()) list.Add(std::exchange(number, 0));
    }
}

}  // namespace

void Recorder::Add(const ImageOperation& operation) {
    OperationBounds::Add(operation);
    const auto& [image, to, from, wrap] = operation;
    list_.Add(std::to_array<std::uint64_t>({kImage | static_cast<std::uint64_t>(wrap), image->GetRevision(),
                                            Pair(to.X, to.Y), Pair(to.Width, to.Height), Pair(from.X, from.Y),
                                            Pair(from.Width, from.Height)}));
    list_.Draw(operation);
}

void Recorder::Add(const TextOperation& operation) {
    const auto& [text, length, font, layout, format, color] = operation;
    if (!text) return;
    OperationBounds::Add(operation);
    list_.Add(std::to_array<std::uint64_t>({kText | color.GetValue(), font ? font->GetRevision() : 0,
                                            Pair(layout.X, layout.Y), Pair(layout.Width, layout.Height),
                                            static_cast<std::uint64_t>(format->GetFormatFlags()),
                                            static_cast<std::uint64_t>(format->GetAlignment()),
                                            static_cast<std::uint64_t>(format->GetLineAlignment()),
                                            static_cast<std::uint64_t>(format->GetTrimming())}));
    AddText(std::u16string_view(text, static_cast<std::size_t>(length)), list_);
    list_.Draw(operation);
}

void Recorder::Add(const CatchOperation& operation) {
    const Gdiplus::Rect& area = operation.area;
    const CRect rect(CPoint(area.X, area.Y), CSize(area.Width, area.Height));
    Include(rect);
    list_.Add(kCatch);
    list_.Add(rect);
    list_.Draw(operation);
}

}  // namespace qkui
