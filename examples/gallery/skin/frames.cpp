#include "examples/gallery/skin/frames.h"

#include "examples/gallery/skin/skin_sizes.h"

namespace skin {
namespace {

struct FrameColours {
    Colour fill;
    Colour line;
    Colour inner;  // a second line within the first
};

FrameColours ColoursOf(FrameLook look) {
    using namespace palette;
    switch (look) {
        case FrameLook::Hover:
            return {WithAlpha(kPeriwinkle, 0.22), WithAlpha(kMist, 0.62), WithAlpha(kWhite, 0.12)};
        case FrameLook::Press:
            return {WithAlpha(kInk, 0.50), WithAlpha(kPeriwinkle, 0.75), WithAlpha(kInk, 0.45)};
        case FrameLook::Focus:
            break;
    }
    return {WithAlpha(kAmber, 0.20), WithAlpha(kGold, 0.90), WithAlpha(kAmber, 0.40)};
}

// The smallest frame there is: corners, and edges of one part.
Canvas WholeFrame(FrameLook look) {
    constexpr int kSide = 2 * kFrameCorner + kFrameMiddle;
    const FrameColours colours = ColoursOf(look);
    Canvas frame(kSide, kSide);
    const Box box{0, 0, kSide, kSide};
    RoundedBox(box, kFrameCorner)(frame.Cairo());
    Fill(frame.Cairo(), colours.fill);
    RoundedBox(box.Inset(1.5), kFrameCorner - 1.5)(frame.Cairo());
    Stroke(frame.Cairo(), colours.inner, 1);
    RoundedBox(box.Inset(0.5), kFrameCorner - 0.5)(frame.Cairo());
    Stroke(frame.Cairo(), colours.line, 1);
    return frame;
}

Canvas CutOut(const Canvas& whole, int column, int row) {
    const auto start = [](int part) {
        return part == 0 ? 0 : part == 1 ? kFrameCorner : kFrameCorner + kFrameMiddle;
    };
    const auto length = [](int part) { return part == 1 ? kFrameMiddle : kFrameCorner; };
    Canvas part(length(column), length(row));
    part.Draw(whole, -start(column), -start(row));
    return part;
}

}  // namespace

std::array<Canvas, 9> FrameParts(FrameLook look) {
    const Canvas whole = WholeFrame(look);
    return {CutOut(whole, 0, 0), CutOut(whole, 1, 0), CutOut(whole, 2, 0),
            CutOut(whole, 0, 1), CutOut(whole, 1, 1), CutOut(whole, 2, 1),
            CutOut(whole, 0, 2), CutOut(whole, 1, 2), CutOut(whole, 2, 2)};
}

}  // namespace skin
