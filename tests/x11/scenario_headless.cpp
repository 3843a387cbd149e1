// Plays a story in memory and leaves what it told in the file named on the command line: the first, or that
// of the items with the style whose number follows, or that of the list for "list".
#include "x11/scenario.h"

#include <cstdlib>

namespace {

class HeadlessStage final : public scenario::Stage {
  public:
    void MovePointer(int x, int y) override { Headless::MovePointer(x, y); }
    void Button(int button, bool down) override {
        if (down)
            Headless::ButtonDown(button);
        else
            Headless::ButtonUp(button);
        Headless::Advance(600);  // two presses are never a double click here
    }
    void DoubleClick() override {
        for (int i = 0; i < 2; ++i) {
            Headless::ButtonDown();
            Headless::ButtonUp();
        }
        Headless::Advance(600);
    }
    void Key(UINT virtualKey, const std::string&) override {
        Headless::KeyDown(virtualKey);
        Headless::KeyUp(virtualKey);
    }
    void Settle() override { Headless::RunPending(); }
    std::vector<std::uint32_t> Screen() override {
        std::vector<std::uint32_t> pixels = Headless::CaptureScreen().argb;
        for (std::uint32_t& pixel : pixels)
            pixel &= 0xFFFFFF;
        return pixels;
    }
    std::vector<std::uint32_t> Window(HWND window, const std::string&) override {
        return Headless::Capture(window).argb;
    }
};

}  // namespace

int main(int count, char** arguments) {
    if (count < 2 || !Headless::Use(scenario::kScreenWidth, scenario::kScreenHeight)) return 2;
    HeadlessStage stage;
    const std::string story = count > 2 ? arguments[2] : "";
    const scenario::Told told =
        story.empty()     ? scenario::Play(stage)
        : story == "list" ? scenario::PlayList(stage)
                          : scenario::PlayItems(stage, static_cast<QKLayStyle>(std::atoi(story.c_str())));
    return scenario::Save(told, arguments[1]) ? 0 : 1;
}
