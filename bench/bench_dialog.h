// The dialog that the frames are measured on: a picture background and sixty image buttons of 96 by 36, and,
// when it is furnished, check boxes, texts of several scripts, progress bars and stretched images.
#pragma once

#include <QKUILib.h>

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "bench/paired.h"

namespace bench {

constexpr UINT kTemplate = 101;
constexpr int kButtons = 60;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 36;

inline CString SavePicture(const char* name, int width, int height, std::uint32_t (*pixel)(int x, int y)) {
    Headless::Picture picture;
    picture.width = width;
    picture.height = height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.argb.push_back(pixel(x, y));
    const CString path((std::string(QKUI_BENCH_OUTPUT) + "/" + name).c_str());
    picture.SavePng(path);
    return path;
}

// Opaque, of no size that a window has.
inline CString BackgroundPicture() {
    return SavePicture("background.png", 1600, 900, [](int x, int y) {
        return 0xFF000000U | (static_cast<std::uint32_t>(x * 255 / 1600) << 16) |
               (static_cast<std::uint32_t>(y * 255 / 900) << 8) | static_cast<std::uint32_t>((x ^ y) & 0xFF);
    });
}

// Pills: opaque inside, soft edges, transparent corners. Premultiplied.
inline CString ButtonPicture() {
    return SavePicture("button.png", kButtonWidth, kButtonHeight * 4, [](int x, int y) {
        const int row = y % kButtonHeight;
        const double dx = std::max({0.0, 18.0 - x, x - (kButtonWidth - 19.0)});
        const double distance = std::hypot(dx, row - 17.5);
        const double cover = std::clamp(18.0 - distance, 0.0, 1.0);
        const auto alpha = static_cast<std::uint32_t>(cover * 255);
        const std::uint32_t light = alpha * static_cast<std::uint32_t>(90 + 40 * (y / kButtonHeight)) / 255;
        return (alpha << 24) | (light << 16) | (light << 8) | light;
    });
}

class BenchDialog : public CQKDialogBase {
  public:
    BenchDialog() : CQKDialogBase(kTemplate) {}

    bool Open(int width, int height, bool perPixel) {
        if (!Create(kTemplate)) return false;
        SetWindowPos(HWND(), 0, 0, width, height, SWP_NOZORDER);
        SetBack(BackgroundPicture(), 1, perPixel);
        backPicture = new Gdiplus::Bitmap(BackgroundPicture());
        m_pBackImage.reset(backPicture);
        const CString strip = ButtonPicture();
        for (int i = 0; i < kButtons; ++i) {
            buttons.push_back(std::make_unique<QKButton>());
            QKButton& button = *buttons.back();
            button.SetImage(strip, QKButton::QKBT_IMGS_4, QKButton::QKBT_VERTICAL);
            button.SetRect(20 + i % 10 * (width - 40) / 10, 20 + i / 10 * (height - 40) / 6, kButtonWidth,
                           kButtonHeight);
            AddQKItem(&button);
        }
        if (perPixel) Set_OPAQUEDlg(255);
        ShowWindow(SW_SHOW);
        UpdateView();
        Settle();
        return true;
    }
    void Furnish(int width, int height) {
        const CString strip = ButtonPicture(), background = BackgroundPicture();
        const auto add = [&](auto& owner, int index, int row, auto make) {
            auto& item = *owner.emplace_back(
                std::make_unique<
                    typename std::remove_reference_t<decltype(owner)>::value_type::element_type>());
            make(item);
            item.SetRect(10 + index % 10 * (width - 20) / 10, row + index / 10 * 30, width / 10 - 8, 26);
            AddQKItem(&item);
        };
        for (int i = 0; i < 20; ++i)
            add(boxes, i, height / 6, [&](QKCheckBox& box) {
                box.SetImage(strip, strip, QKButton::QKBT_IMGS_4, QKButton::QKBT_VERTICAL);
                box.SetText(i % 2 ? u"记住 the password" : u"Show hidden files");
                box.SetCheck(i % 3 == 0);
            });
        const LPCWSTR words[] = {u"下载速度 1.4 MB/s", u"The quick brown fox", u"שלום world 123",
                                 u"éàü Žluťoučký"};
        for (int i = 0; i < 20; ++i)
            add(texts, i, height / 2, [&](QKStaticText& text) { text.SetText(words[i % 4]); });
        for (int i = 0; i < 5; ++i)
            add(bars, i, height * 3 / 4, [&](QKProgress& bar) {
                bar.SetBarImage(background, strip);
                bar.SetPos(static_cast<unsigned>(20 * i + 10));
            });
        for (int i = 0; i < 4; ++i)
            add(images, i, height * 7 / 8, [&](QKImage& image) { image.SetImage(background); });
        UpdateView();
        Settle();
    }
    // Paints what waits.
    void Settle() { UpdateWindow(m_hWnd); }
    void Toggle(int index) {
        QKButton& button = *buttons[static_cast<std::size_t>(index)];
        button.SetStatus(button.GetStatus() == QKItemBase::QK_NORMAL ? QKItemBase::QK_MOUSEON
                                                                     : QKItemBase::QK_NORMAL);
    }
    void DrawSurface(HDC dc, int width, int height, int buffer) override {
        CQKDialogBase::DrawSurface(dc, width, height, buffer);
        composed = Clock::now();
    }

    Gdiplus::Bitmap* backPicture = nullptr;  // the dialog's own
    std::vector<std::unique_ptr<QKButton>> buttons;
    std::vector<std::unique_ptr<QKCheckBox>> boxes;
    std::vector<std::unique_ptr<QKStaticText>> texts;
    std::vector<std::unique_ptr<QKProgress>> bars;
    std::vector<std::unique_ptr<QKImage>> images;
    Clock::time_point composed;  // when the last frame was complete, before it was shown
};

}  // namespace bench
