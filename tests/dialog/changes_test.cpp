// Whatever a host changes of a dialog that shows is seen with the next frame, as if it had always been so.
#include "support/test_dialog.h"

namespace {

using kit::Solid;
using kit::Strip;

struct Scene : kit::TestDialog {
    explicit Scene(int style) : caches(style == LAY_OPAQUE) {
        text.SetText(u"a text that is cut off");
        text.SetRect(10, 10, 70, 60);
        text.GetFormat().SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap);
        text.SetTextColor(Gdiplus::Color(0xFF0000FF));
        image.SetImage(Strip("changes_image", {0xFF00FF00, 0xFFFF0000, 0xFF0000FF}, 7, 20, false));
        image.SetMargins(2, 2, 2, 2);
        image.SetRect(100, 10, 60, 60);
        bar.SetBarImage(Solid("changes_back", 0xFF404040, 4, 4), Solid("changes_bar", 0xFFC0C0C0, 4, 4));
        bar.SetRect(10, 100, 100, 20);
        for (QKItemBase* item : {static_cast<QKItemBase*>(&text), static_cast<QKItemBase*>(&image),
                                 static_cast<QKItemBase*>(&bar)})
            AddQKItem(item);
        SetBack(Solid("changes_yellow", 0xFFFFFF00, 8, 8), 0, caches);
        Create(kit::kDialogTemplate);
        SetWindowPos(HWND(), 0, 0, kit::kDialogWidth, kit::kDialogHeight, SWP_NOZORDER);
        if (style == LAY_OPAQUE) Set_OPAQUEDlg(255);
    }
    Headless::Picture Shown() {
        Show();
        Refresh();
        return Headless::Capture(m_hWnd);
    }
    const int caches;  // the background: so it is seen in the per-pixel style only
    QKStaticText text;
    QKImage image;
    QKProgress bar;
};

const struct {
    const char* what;
    void (*make)(Scene&);
} kChanges[] = {
    {"another font", [](Scene& scene) { scene.text.SetFont(Gdiplus::Font(u"DejaVu Serif", 20)); }},
    {"another colour", [](Scene& scene) { scene.text.SetTextColor(Gdiplus::Color(0xFFFF0000)); }},
    {"another alignment", [](Scene& scene) { scene.text.SetTextFormat(Gdiplus::StringAlignmentFar); }},
    {"another line alignment",
     [](Scene& scene) { scene.text.GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter); }},
    {"trimmed",
     [](Scene& scene) { scene.text.GetFormat().SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter); }},
    {"wrapped", [](Scene& scene) { scene.text.GetFormat().SetFormatFlags(0); }},
    {"other margins", [](Scene& scene) { scene.image.SetMargins(9, 5, 1, 5); }},
    {"further along", [](Scene& scene) { scene.bar.SetPos(100); }},
    {"another background",
     [](Scene& scene) { scene.SetBack(Solid("changes_red", 0xFFFF0000, 8, 8), 0, scene.caches); }},
    {"a background of margins", [](Scene& scene) {
         scene.SetBack(Strip("changes_image", {0xFF00FF00, 0xFFFF0000}, 7, 20, false), 0, scene.caches);
         scene.SetBackMargins(3, 3, 3, 3);
     }}};

class Changes : public kit::HeadlessTest {};

TEST_F(Changes, ShowAsIfTheyHadAlwaysBeen) {
    for (const int style : {LAY_NONE, LAY_OPAQUE})
        for (const auto& change : kChanges) {
            SCOPED_TRACE(testing::Message() << change.what << " in style " << style);
            Scene changed(style), fresh(style);
            const Headless::Picture before = changed.Shown();
            change.make(changed);
            change.make(fresh);
            const Headless::Picture shown = changed.Shown();
            EXPECT_GT(Headless::Compare(before, shown).pixels, 0);
            kit::ExpectSame(shown, fresh.Shown());
        }
}

}  // namespace
