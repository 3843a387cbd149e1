// Items by themselves: defaults, rectangles, loading, and which frame of a strip a state shows.
#include "items/sprite_strip.h"
#include "support/test_dialog.h"

namespace {

using kit::Line;
using kit::Strip;

constexpr auto kNormal = QKItemBase::QK_NORMAL;
constexpr auto kOver = QKItemBase::QK_MOUSEON;
constexpr auto kDown = QKItemBase::QK_MOUSEDOWN;

template <class Item>
std::string RectOf(const Item& item) {
    CRect rect(9, 9, 9, 9);
    item.GetRect(&rect);
    return Line(rect);
}
std::string HitRectOf(QKButton& button) {
    CRect rect;
    button.GetButtonRect(rect);
    return Line(rect);
}

TEST(Item, StartsShownEnabledAndTransparentToThePointer) {
    const QKItemBase item(QKUI_RESERVED7);
    EXPECT_EQ(RectOf(item), "0 0 0 0");
    EXPECT_EQ(item.GetType(), QKUI_RESERVED7);
    EXPECT_EQ(item.GetStatus(), kNormal);
    EXPECT_TRUE(item.IsShow() && item.GetEnable() && item.GetTranMouseOver());
    EXPECT_FALSE(item.GetCaptrue() || item.GetActive() || item.GetMouseMoveHand() || item.GetItemData());
}

TEST(Item, OnlyTheRectangleFormOfSetRectResetsTheStatus) {
    QKItemBase item(QKUI_IMAGE);
    item.SetStatus(kDown);
    item.SetRect(10, 20, 30, 40);
    EXPECT_EQ(item.GetStatus(), kDown);
    EXPECT_EQ(RectOf(item), "10 20 40 60");
    Gdiplus::RectF exact;
    item.GetRect(&exact);
    EXPECT_EQ(exact.Width, 30.0F);
    const CRect rect(1, 2, 3, 4);
    item.SetRect(&rect);
    EXPECT_EQ(RectOf(item), "1 2 3 4");
    EXPECT_EQ(item.GetStatus(), kNormal);

    item.SetStatus(kOver);
    item.SetShow(0);
    EXPECT_EQ(item.GetStatus(), kOver);
    item.SetEnable(1);
    EXPECT_EQ(item.GetStatus(), kNormal);
}

TEST(SpriteStrip, OffsetOfEveryState) {
    const struct {
        int length, count;
        bool vertical;
        int status;
        bool active, enabled;
        int offset;
    } cases[] = {
        {160, 4, true, kNormal, false, true, 0},  {160, 4, true, kOver, false, true, 40},
        {160, 4, true, kDown, false, true, 80},   {160, 4, true, kNormal, true, true, 120},
        {160, 4, true, kOver, true, true, 120},   {160, 4, true, kDown, true, true, 80},
        {160, 4, false, kOver, true, true, 40},   {160, 4, false, kNormal, true, true, 120},
        {160, 4, true, kNormal, false, false, 0}, {160, 4, true, kNormal, true, false, 120},
        {101, 3, true, kOver, false, true, 33},   {101, 3, true, kDown, false, true, 66},
        {50, 5, true, kDown, false, false, 40},   {50, 5, false, kNormal, true, false, 40},
        {50, 5, true, kNormal, true, true, 0},    {50, 5, true, kDown, true, true, 20},
        {52, 5, true, kNormal, false, false, 41}, {80, 2, true, kDown, false, true, 40},
        {80, 2, false, kOver, true, true, 40},    {77, 1, true, kOver, true, true, 0},
        {77, 1, false, kDown, false, false, 0},   {103, 4, true, kNormal, true, true, 77},
    };
    for (const auto& c : cases) {
        const qkui::SpriteStrip strip = {c.vertical ? 9 : c.length, c.vertical ? c.length : 9, c.count,
                                         c.vertical};
        EXPECT_EQ(qkui::SpriteOffset(strip, {c.status, c.active, c.enabled}), c.offset) << &c - cases;
    }
}

TEST(Button, HitRectangleIsOneFrameWhateverTheDrawnHeight) {
    QKButton button;
    button.SetRect(5, 6, 70, 80);
    EXPECT_EQ(HitRectOf(button), "5 6 75 86");
    button.SetStatus(kOver);
    EXPECT_EQ(button.SetImage(Strip("hit", {1, 2, 3}, 21, 10, false), QKButton::QKBT_IMGS_3,
                              QKButton::QKBT_HORIZONTAL),
              1);
    EXPECT_EQ(button.GetStatus(), kNormal);
    button.SetButtonHeight(4);
    EXPECT_EQ(HitRectOf(button), "5 6 26 16");
    EXPECT_EQ(qkui::SpriteOf(button).source, CRect(0, 0, 21, 4));
    EXPECT_EQ(button.SetImage(u"/nowhere/at/all.png", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 1);
    EXPECT_EQ(HitRectOf(button), "5 6 5 6");
    EXPECT_TRUE(qkui::SpriteOf(button).source.IsRectEmpty());
}

TEST(Button, LoadsFromResourcesAndRefusesWhatIsNotThere) {
    QKButton button;
    const struct {
        UINT id;
        LPCWSTR type;
        int frames, loaded;
        UINT width;  // of the picture afterwards
    } loads[] = {
        {201, u"PNG", 1, 1, 8}, {201, u"PNG", 0, 0, 8}, {202, u"PNG", 1, 0, 0}, {201, u"NO", 1, 0, 0}};
    for (const auto& [id, type, frames, loaded, width] : loads) {
        const auto count = static_cast<QKButton::QKBT_IMGS>(frames);
        EXPECT_EQ(button.SetImage(id, type, count, QKButton::QKBT_VERTICAL), loaded);
        EXPECT_EQ(button.GetImage() ? button.GetImage()->GetWidth() : 0, width);
    }
}

template <class... Items>
constexpr bool kAllCopied = ((std::is_copy_assignable_v<Items> && std::is_copy_constructible_v<Items>)&&...);

class ItemCopies : public kit::HeadlessTest {};

TEST_F(ItemCopies, AreMadeOfEveryClass) {
    static_assert(kAllCopied<QKItemBase, QKStaticText, QKImage, QKGifImage, QKButton, QKTextButton,
                             QKCheckBox, QKRadio, QKProgress, QKVScrollBar, QKListCtrl>);
    auto box = std::make_unique<QKRadio>();
    box->SetImage(Strip("box", {0xFF0000FF}, 3, 3, true), Strip("mark", {0xFFFF0000}, 2, 2, true),
                  QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL);
    box->SetText(u"text");
    box->SetTextFormat(Gdiplus::StringAlignmentFar);
    box->SetGroupID(7);
    box->SetCheck(1);
    QKRadio copy;
    copy = *box;
    EXPECT_EQ(copy.GetFont(), box->GetFont());
    EXPECT_EQ(copy.GetImage(), box->GetImage());
    box->SetImageNull();
    box.reset();
    EXPECT_EQ(CString(copy.GetText()), u"text");
    EXPECT_EQ(Line(copy.GetFont()->GetSize(), copy.GetFormat().GetAlignment(), copy.GetGroupID()), "12 2 7");
    copy.ReleaseBuf();
    kit::TestDialog dialog({&copy});
    dialog.Open();
    dialog.ExpectPixels({{0, 0, 0xFFFF0000}, {2, 2, 0xFF0000FF}});  // the mark lives, and the box
}

TEST(Item, TextBoundsAreThoseOfTheInk) {
    const QKItemBase item(QKUI_STATICTEXT);
    const Gdiplus::Font font(u"DejaVu Sans", 20, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    const Gdiplus::SizeF none = item.GetTextBounds(font, CString());
    EXPECT_EQ(Line(none.Width, none.Height), "0 0");
    const Gdiplus::SizeF one = item.GetTextBounds(font, u"x");
    const Gdiplus::SizeF two = item.GetTextBounds(font, u"xx");
    EXPECT_GT(two.Width, 1.8F * one.Width);
    EXPECT_NEAR(two.Height, one.Height, 0.5F);
    EXPECT_NEAR(one.Height, 11.0F, 3.0F);  // the ink of an x, not the height of a line
}

}  // namespace
