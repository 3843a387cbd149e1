// Items by themselves: defaults, rectangles, loading, and which frame of a strip a state shows.
#include "items/sprite_strip.h"
#include "support/test_dialog.h"

namespace {

using kit::Strip;

TEST(Item, StartsShownEnabledAndTransparentToThePointer) {
    const QKItemBase item(QKUI_RESERVED7);
    CRect rect(1, 2, 3, 4);
    item.GetRect(&rect);
    EXPECT_EQ(rect, CRect(0, 0, 0, 0));
    EXPECT_EQ(item.GetType(), QKUI_RESERVED7);
    EXPECT_EQ(item.GetStatus(), QKItemBase::QK_NORMAL);
    EXPECT_TRUE(item.IsShow() && item.GetEnable() && item.GetTranMouseOver());
    EXPECT_FALSE(item.GetCaptrue() || item.GetActive() || item.GetMouseMoveHand() || item.GetItemData());
}

TEST(Item, OnlyTheRectangleFormOfSetRectResetsTheStatus) {
    QKItemBase item(QKUI_IMAGE);
    item.SetStatus(QKItemBase::QK_MOUSEDOWN);
    item.SetRect(10, 20, 30, 40);
    EXPECT_EQ(item.GetStatus(), QKItemBase::QK_MOUSEDOWN);
    CRect rect;
    item.GetRect(&rect);
    EXPECT_EQ(rect, CRect(10, 20, 40, 60));
    Gdiplus::RectF exact;
    item.GetRect(&exact);
    EXPECT_EQ(exact.Width, 30.0F);
    item.SetRect(&rect);
    EXPECT_EQ(item.GetStatus(), QKItemBase::QK_NORMAL);

    item.SetStatus(QKItemBase::QK_MOUSEON);
    item.SetShow(0);
    EXPECT_EQ(item.GetStatus(), QKItemBase::QK_MOUSEON);
    item.SetEnable(1);
    EXPECT_EQ(item.GetStatus(), QKItemBase::QK_NORMAL);
}

TEST(SpriteStrip, OffsetOfEveryState) {
    constexpr int kNormal = QKItemBase::QK_NORMAL;
    constexpr int kOver = QKItemBase::QK_MOUSEON;
    constexpr int kDown = QKItemBase::QK_MOUSEDOWN;
    struct Case {
        int length, count;
        bool vertical;
        int status;
        bool active, enabled;
        int offset;
    };
    const Case cases[] = {
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
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.count << " frames of " << c.length << ", vertical " << c.vertical << ", status "
                     << c.status << ", active " << c.active << ", enabled " << c.enabled);
        const qkui::SpriteStrip strip = {c.vertical ? 9 : c.length, c.vertical ? c.length : 9, c.count,
                                         c.vertical};
        EXPECT_EQ(qkui::SpriteOffset(strip, {c.status, c.active, c.enabled}), c.offset);
    }
}

TEST(Button, HitRectangleIsOneFrameWhateverTheDrawnHeight) {
    QKButton button;
    button.SetRect(5, 6, 70, 80);
    CRect rect;
    button.GetButtonRect(rect);
    EXPECT_EQ(rect, CRect(5, 6, 75, 86));

    button.SetStatus(QKItemBase::QK_MOUSEON);
    EXPECT_EQ(button.SetImage(Strip("hit", {1, 2, 3}, 21, 10, false), QKButton::QKBT_IMGS_3,
                              QKButton::QKBT_HORIZONTAL),
              1);
    EXPECT_EQ(button.GetStatus(), QKItemBase::QK_NORMAL);
    button.SetButtonHeight(4);
    button.GetButtonRect(rect);
    EXPECT_EQ(rect, CRect(5, 6, 26, 16));
    EXPECT_EQ(qkui::SpriteOf(button).source, CRect(0, 0, 21, 4));

    EXPECT_EQ(button.SetImage(u"/nowhere/at/all.png", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 1);
    button.GetButtonRect(rect);
    EXPECT_EQ(rect, CRect(5, 6, 5, 6));
    EXPECT_TRUE(qkui::SpriteOf(button).source.IsRectEmpty());
}

TEST(Button, LoadsFromResourcesAndRefusesWhatIsNotThere) {
    QKButton button;
    EXPECT_EQ(button.SetImage(201, u"PNG", QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL), 1);
    ASSERT_NE(button.GetImage(), nullptr);
    EXPECT_EQ(button.GetImage()->GetWidth(), 8U);
    EXPECT_EQ(button.SetImage(201, u"PNG", static_cast<QKButton::QKBT_IMGS>(0), QKButton::QKBT_VERTICAL), 0);
    EXPECT_NE(button.GetImage(), nullptr);
    EXPECT_EQ(button.SetImage(202, u"PNG", QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL), 0);
    EXPECT_EQ(button.GetImage(), nullptr);
    EXPECT_EQ(button.SetImage(201, u"NOSUCH", QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL), 0);
}

TEST(Button, CopiesShareThePictureUntilOneLetsGo) {
    QKButton button;
    ASSERT_EQ(button.SetImage(Strip("copy", {1}, 3, 3, true), QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL),
              1);
    QKButton copy;
    copy = button;
    EXPECT_EQ(copy.GetImage(), button.GetImage());
    copy.SetImageNull();
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
    box->SetImageNull();
    box.reset();
    EXPECT_EQ(CString(copy.GetText()), u"text");
    EXPECT_EQ(copy.GetFont()->GetSize(), 12.0F);
    EXPECT_EQ(copy.GetFormat().GetAlignment(), Gdiplus::StringAlignmentFar);
    EXPECT_EQ(copy.GetGroupID(), 7U);
    copy.ReleaseBuf();
    kit::TestDialog dialog;
    dialog.AddQKItem(&copy);
    dialog.Open();
    EXPECT_EQ(dialog.Pixel(0, 0), 0xFFFF0000U);  // the mark lives
    EXPECT_EQ(dialog.Pixel(2, 2), 0xFF0000FFU);
}

TEST(Item, TextBoundsAreThoseOfTheInk) {
    const QKItemBase item(QKUI_STATICTEXT);
    const Gdiplus::Font font(u"DejaVu Sans", 20, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    const Gdiplus::SizeF none = item.GetTextBounds(font, CString());
    EXPECT_EQ(none.Width, 0.0F);
    EXPECT_EQ(none.Height, 0.0F);
    const Gdiplus::SizeF one = item.GetTextBounds(font, u"x");
    const Gdiplus::SizeF two = item.GetTextBounds(font, u"xx");
    EXPECT_GT(two.Width, 1.8F * one.Width);
    EXPECT_NEAR(two.Height, one.Height, 0.5F);
    EXPECT_GT(one.Height, 8.0F);
    EXPECT_LT(one.Height, 14.0F);  // the ink of an x, not the height of a line
}

}  // namespace
