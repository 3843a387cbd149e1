// Specimens: one state of one item each, on a small window of its own, as the pages of docs/items show them.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QKUILib.h>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace gallery {

// The window that a specimen is shown on, and the user in front of it. Needs the headless window system.
// Coordinates are client pixels.
class SpecimenWindow {
  public:
    explicit SpecimenWindow(CSize size);

    // False with the last error.
    bool Open();

    // A new item, registered with the window and kept as long as it.
    template <class Item>
    Item& Add(const CRect& place) {
        const auto item = std::make_shared<Item>();
        item->SetRect(&place);
        items_.push_back(item);
        window_.AddQKItem(item.get());
        return *item;
    }
    // What the window draws above its items.
    void Draw(std::function<void(Ink&)> draw);
    // For what items and drawings want of their dialog.
    DemoWindow& Dialog() { return window_; }

    // The user.
    void PointAt(int x, int y);
    void PressAt(int x, int y);
    void ClickAt(int x, int y);

    // The screen where the window is, what lies above it too, in place of the window alone.
    void ShowScreen() { screen_ = true; }
    Headless::Picture Capture();

  private:
    std::vector<std::shared_ptr<void>> items_;  // outlive the window
    DemoWindow window_;
    bool screen_ = false;
};

struct Specimen {
    const char* name;  // of its file, without the ending
    CSize size;        // of its window
    // Fills the window and acts on it.
    std::function<void(SpecimenWindow&)> show;
};

// The specimens of each page, in the page's order.
std::vector<Specimen> ButtonSpecimens();
std::vector<Specimen> TextSpecimens();
std::vector<Specimen> ChoiceSpecimens();
std::vector<Specimen> ImageSpecimens();
std::vector<Specimen> ProgressSpecimens();
std::vector<Specimen> ScrollSpecimens();
std::vector<Specimen> FrameSpecimens();
std::vector<Specimen> ListSpecimens();
std::vector<Specimen> KeyboardSpecimens();

std::vector<Specimen> AllSpecimens();

// Where the pointer is in the end: on the middle of an item's rectangle, or not.
enum class Pose { Away, Over, Pressed };
void Strike(SpecimenWindow& window, Pose pose, const QKItemBase& item);

// A picture's place on a window that leaves the same margin around it, and that window's size.
CRect SpecimenPlace(skin::PictureSize size);
CSize SpecimenRoom(skin::PictureSize size);

// What specimens write with.
const Gdiplus::Font& SpecimenFont();

}  // namespace gallery
