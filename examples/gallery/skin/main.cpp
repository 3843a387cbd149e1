// gallery-skin OUTDIR: draws every picture of the gallery into OUTDIR. The list of files also stands in
// CMakeLists.txt, for the build to know them; sizes and frame counts stand in skin_sizes.h.
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "examples/gallery/skin/bars.h"
#include "examples/gallery/skin/buttons.h"
#include "examples/gallery/skin/choices.h"
#include "examples/gallery/skin/emblem.h"
#include "examples/gallery/skin/frames.h"
#include "examples/gallery/skin/gif_writer.h"
#include "examples/gallery/skin/icons.h"
#include "examples/gallery/skin/landscape.h"
#include "examples/gallery/skin/panels.h"
#include "examples/gallery/skin/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/skin/strips.h"
#include "examples/gallery/skin/writers.h"

namespace {

using namespace skin;

void WriteBackgrounds(const std::filesystem::path& folder) {
    WritePng(DuskOverTheLake(kBackgroundWide), folder / "background_wide.png");
    WritePng(DuskOverTheLake(kBackgroundTall), folder / "background_tall.png");
    WriteJpeg(NorthernLights(kBackgroundJpeg), folder / "background.jpg", 92);
    WriteBmp(WeaveTile(kBackgroundTile), folder / "background_tile.bmp");
}

void WritePanels(const std::filesystem::path& folder) {
    WritePng(ShellWindow(), folder / "shell.png");
    WritePng(GlassPanel(), folder / "panel_alpha.png");
    WritePng(KeyedMedal(), folder / "panel_key.png");
}

// "name@2x.png" beside "name.png" for the screens that have twice the pixels.
void WriteDense(const Canvas& picture, const std::filesystem::path& folder,
                const std::filesystem::path& name) {
    const std::string ending = Canvas::Density() > 1 ? "@" + std::to_string(Canvas::Density()) + "x" : "";
    WritePng(picture, folder / (name.stem().string() + ending + ".png"));
}

void WriteButtons(const std::filesystem::path& folder) {
    for (int frames = 1; frames <= 5; ++frames) {
        const FramePainter pill = PillButton(frames >= 4 ? Lamp::Left : Lamp::None);
        const std::string name = "btn" + std::to_string(frames);
        WriteDense(MakeStrip(kPillButton, frames, Layout::Vertical, pill), folder, (name + "_v.png"));
        WriteDense(MakeStrip(kPillButton, frames, Layout::Horizontal, pill), folder, (name + "_h.png"));
    }
    const auto vertical = [&folder](const char* name, PictureSize size, int frames,
                                    const FramePainter& paint) {
        WriteDense(MakeStrip(size, frames, Layout::Vertical, paint), folder, name);
    };
    vertical("btn_wide_v.png", kWideButton, 4, PillButton(Lamp::None));
    vertical("btn_close_v.png", kWindowButton, 3, WindowButton(Glyph::Close));
    vertical("btn_min_v.png", kWindowButton, 3, WindowButton(Glyph::Minimise));
    vertical("btn_play_v.png", kPlayButton, 4, PlayButton());
    vertical("btn_prev_v.png", kSkipButton, 3, RoundButton(Glyph::Previous));
    vertical("btn_next_v.png", kSkipButton, 3, RoundButton(Glyph::Next));
    constexpr std::array<std::pair<const char*, Glyph>, 16> kTabs = {
        {{"tab_layers.png", Glyph::Layers},
         {"tab_background.png", Glyph::Background},
         {"tab_shape.png", Glyph::Shape},
         {"tab_buttons.png", Glyph::Buttons},
         {"tab_states.png", Glyph::States},
         {"tab_areas.png", Glyph::Areas},
         {"tab_texts.png", Glyph::Texts},
         {"tab_choices.png", Glyph::Choices},
         {"tab_images.png", Glyph::Images},
         {"tab_progress.png", Glyph::Progress},
         {"tab_requests.png", Glyph::Requests},
         {"tab_scrolling.png", Glyph::Scrolling},
         {"tab_frames.png", Glyph::Frames},
         {"tab_list.png", Glyph::List},
         {"tab_files.png", Glyph::Files},
         {"tab_web.png", Glyph::Web}}};
    for (const auto& [name, glyph] : kTabs)
        vertical(name, kTab, 4, Tab(glyph));
}

void WriteChoices(const std::filesystem::path& folder) {
    constexpr int kFrames = 5;
    WriteDense(MakeStrip(kChoice, kFrames, Layout::Vertical, CheckBox()), folder, "check_box_v.png");
    WriteDense(MakeStrip(kChoice, kFrames, Layout::Horizontal, CheckBox()), folder, "check_box_h.png");
    WriteDense(MakeStrip(kChoice, kFrames, Layout::Vertical, RadioDish()), folder, "radio_v.png");
    WriteDense(CheckMark(), folder, "check_mark.png");
    WriteDense(RadioMark(), folder, "radio_mark.png");
}

void WriteBars(const std::filesystem::path& folder) {
    WriteDense(ProgressBack(kProgress), folder, "progress_back.png");
    WriteDense(ProgressBar(kProgress, ProgressLook::Dusk), folder, "progress_bar.png");
    WriteDense(ProgressBack(kProgressCool), folder, "progress_cool_back.png");
    WriteDense(ProgressBar(kProgressCool, ProgressLook::Cool), folder, "progress_cool_bar.png");
    const auto thumb = [&folder](const char* name, ThumbPart part) {
        WriteDense(MakeStrip(kScrollPart, 3, Layout::Vertical, Thumb(part)), folder, name);
    };
    thumb("scroll_top_v.png", ThumbPart::Top);
    thumb("scroll_middle_v.png", ThumbPart::Middle);
    thumb("scroll_bottom_v.png", ThumbPart::Bottom);
    WriteDense(ScrollTrack(), folder, "scroll_track.png");
}

void WriteFrames(const std::filesystem::path& folder) {
    constexpr std::array<std::pair<const char*, FrameLook>, 3> kLooks = {
        {{"hover", FrameLook::Hover}, {"press", FrameLook::Press}, {"focus", FrameLook::Focus}}};
    for (const auto& [name, look] : kLooks) {
        int number = 0;
        for (const Canvas& part : FrameParts(look))
            WriteDense(part, folder,
                       (std::string("frame_") + name + "_" + std::to_string(number++) + ".png"));
    }
}

void WriteSamples(const std::filesystem::path& folder) {
    // Drawn large and taken down: the scenery is made for large pictures.
    constexpr int kLarger = 4;
    const Canvas large = DuskOverTheLake({kPicture.width * kLarger, kPicture.height * kLarger});
    Canvas picture(kPicture.width, kPicture.height);
    cairo_scale(picture.Cairo(), 1.0 / kLarger, 1.0 / kLarger);
    cairo_set_source_surface(picture.Cairo(), cairo_get_target(large.Cairo()), 0, 0);
    cairo_pattern_set_extend(cairo_get_source(picture.Cairo()), CAIRO_EXTEND_PAD);
    cairo_paint(picture.Cairo());
    WritePng(picture, folder / "picture.png");
    WriteGif(Spinner(), kPaneColour, folder / "spinner.gif");
    WriteGif(Comet(), kPaneColour, folder / "comet.gif");
}

void WriteListIcons(const std::filesystem::path& folder) {
    for (const ListIcon& icon : kListIcons)
        WriteDense(DrawListIcon(icon), folder, (std::string("icon_") + icon.name + ".png"));
}

void WriteIcons(const std::filesystem::path& folder) {
    WritePng(AppIcon(kAppIcon), folder / "app_icon_64.png");
    std::vector<Canvas> sizes;
    for (const int side : {16, 24, 32, 48, 64, 256})
        sizes.push_back(AppIcon(side));
    WriteIco(sizes, folder / "app_icon.ico");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: gallery-skin OUTDIR\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        std::filesystem::create_directories(folder);
        WriteBackgrounds(folder);
        WritePanels(folder);
        WriteSamples(folder);
        WriteIcons(folder);
        for (const int density : {1, 2}) {
            Canvas::SetDensity(density);
            WriteButtons(folder);
            WriteChoices(folder);
            WriteBars(folder);
            WriteFrames(folder);
            WriteListIcons(folder);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "gallery-skin: %s\n", error.what());
        return 1;
    }
    return 0;
}
