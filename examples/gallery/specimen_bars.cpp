// Progress bars and scroll bars.
#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

constexpr skin::PictureSize kProgressSize = skin::kProgress;

Specimen Progress(const char* name, unsigned int position, int border = 1) {
    const auto show = [position, border](SpecimenWindow& window) {
        auto& progress = window.Add<QKProgress>(SpecimenPlace(kProgressSize));
        progress.SetBarImage(SkinFile("progress_back.png"), SkinFile("progress_bar.png"));
        progress.SetBackBordThick(border);
        progress.SetPos(position);
    };
    return {name, SpecimenRoom(kProgressSize), show};
}

constexpr skin::PictureSize kScrollSize = {18, 160};

struct ScrollState {
    int total = 300;  // of content; 100 are visible
    int position = 0;
    Pose pose = Pose::Away;
    bool track = true;
};

Specimen Scroll(const char* name, const ScrollState& state) {
    const auto show = [state](SpecimenWindow& window) {
        const CRect place = SpecimenPlace(kScrollSize);
        auto& bar = window.Add<QKVScrollBar>(place);
        bar.SetBarImage(SkinFile("scroll_top_v.png"), SkinFile("scroll_middle_v.png"),
                        SkinFile("scroll_bottom_v.png"));
        if (state.track) bar.SetTrackImage(SkinFile("scroll_track.png"));
        bar.SetBarLength(100, state.total);
        bar.SetBarPos(state.position);
        const int middle = place.left + place.Width() / 2;
        if (state.pose == Pose::Over) window.PointAt(middle, place.bottom - 4);
        if (state.pose != Pose::Pressed) return;
        // Drawn down by a third of the bar.
        window.PressAt(middle, place.top + 12);
        window.PointAt(middle, place.top + 12 + kScrollSize.height / 3);
    };
    return {name, SpecimenRoom(kScrollSize), show};
}

}  // namespace

std::vector<Specimen> ProgressSpecimens() {
    return {
        Progress("progress-empty", 0),      Progress("progress-third", 33),
        Progress("progress-half", 50),      Progress("progress-full", 100),
        Progress("progress-beyond", 101),   Progress("progress-border-none", 50, 0),
        Progress("progress-border", 50, 5),
    };
}

std::vector<Specimen> ScrollSpecimens() {
    return {
        Scroll("scroll-normal", {}),
        Scroll("scroll-over", {300, 0, Pose::Over}),
        Scroll("scroll-dragged", {300, 0, Pose::Pressed}),
        Scroll("scroll-end", {300, 10000}),
        Scroll("scroll-long", {1000, 40}),
        Scroll("scroll-all-visible", {100, 0}),
        Scroll("scroll-without-track", {300, 40, Pose::Away, false}),
    };
}

}  // namespace gallery
