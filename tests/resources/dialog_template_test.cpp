// Dialog templates: what the resource compiler packed comes out again; what lies is refused.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <platform/window.h>

#include "platform/resources/dialog_template.h"
#include "resource.h"
#include "resource_kit.h"

namespace {

using platform::DialogControl;
using platform::DialogUnits;
using platform::ParseDialogTemplate;

TEST(DialogTemplate, ExtendedTemplateComesOutWhole) {
    const auto dialog = ParseDialogTemplate(Embedded(MAKEINTRESOURCE(IDD_SETTINGS), RT_DIALOG));
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->extended);
    EXPECT_EQ(dialog->helpId, 77u);
    EXPECT_EQ(dialog->style, WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_SETFONT | DS_MODALFRAME);
    EXPECT_EQ(dialog->exStyle, WS_EX_LAYERED | WS_EX_TOOLWINDOW);
    EXPECT_EQ(dialog->place, (DialogUnits{10, 20, 200, 120}));
    EXPECT_EQ(dialog->title, u"设置 – \"linux\"");
    EXPECT_EQ(dialog->menu, platform::ResourceName());
    EXPECT_EQ(dialog->windowClass, platform::ResourceName());
    ASSERT_TRUE(dialog->font);
    EXPECT_EQ(dialog->font->face, u"Noto Sans CJK SC");
    EXPECT_EQ(dialog->font->pointSize, 9);
    EXPECT_EQ(dialog->font->weight, 700);
    EXPECT_TRUE(dialog->font->italic);
    EXPECT_EQ(dialog->font->characterSet, 0x86);

    ASSERT_EQ(dialog->controls.size(), 4u);
    const DialogControl& label = dialog->controls[0];
    EXPECT_EQ(label.id, DWORD{IDC_NAME});
    EXPECT_EQ(label.helpId, 78u);
    EXPECT_EQ(label.place, (DialogUnits{5, -6, 50, 10}));
    EXPECT_EQ(label.style & WS_BORDER, WS_BORDER);
    EXPECT_EQ(label.exStyle, WS_EX_TRANSPARENT);
    EXPECT_EQ(label.windowClass.Number(), static_cast<WORD>(platform::ControlAtom::Static));
    EXPECT_EQ(label.ClassName(), u"STATIC");
    EXPECT_EQ(label.title.Text(), u"标签");
    const DialogControl& named = dialog->controls[1];
    EXPECT_EQ(named.id, 0xFFFFFFFF);
    EXPECT_EQ(named.ClassName(), u"Static");
    EXPECT_EQ(named.style, WS_CHILD | WS_VISIBLE | WS_DISABLED);
    const DialogControl& own = dialog->controls[2];
    EXPECT_EQ(own.ClassName(), u"MyClass");
    EXPECT_EQ(own.title.Number(), IDB_CLOSE);
    EXPECT_EQ(own.place, (DialogUnits{32767, -32768, 0, 7}));
    EXPECT_EQ(dialog->controls[3].ClassName(), u"BUTTON");
}

TEST(DialogTemplate, ClassicTemplateComesOutWhole) {
    const auto dialog = ParseDialogTemplate(Embedded(MAKEINTRESOURCE(IDD_PLAIN), RT_DIALOG));
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(dialog->extended);
    EXPECT_EQ(dialog->place, (DialogUnits{1, 2, 3, 4}));
    EXPECT_EQ(dialog->title, u"plain");
    EXPECT_FALSE(dialog->font);
    ASSERT_EQ(dialog->controls.size(), 2u);
    EXPECT_EQ(dialog->controls[0].title.Text(), u"one");
    EXPECT_EQ(dialog->controls[0].place, (DialogUnits{5, 6, 7, 8}));
    EXPECT_EQ(dialog->controls[1].ClassName(), u"EDIT");
    EXPECT_EQ(dialog->controls[1].id, DWORD{IDC_NAME});
}

// The head of a template without font, up to the number of controls and after it.
ResourceWriter Head(bool extended, WORD count) {
    ResourceWriter writer;
    if (extended) writer.Little(1, 2).Little(0xFFFF, 2).Little(0, 4);
    writer.Little(0, 8).Little(count, 2).Little(0, 8);
    return writer;
}

TEST(DialogTemplate, NamesAndCreationDataInBothKinds) {
    for (const bool extended : {false, true}) {
        SCOPED_TRACE(extended);
        ResourceWriter writer = Head(extended, 2).Number(9).Text(u"Host").Text(u"t");
        for (int i = 0; i < 2; ++i) {
            writer.Align().Little(0, extended ? 12 : 8).Little(0, 8).Little(5, extended ? 4 : 2);
            writer.Number(0x0085).Number(321);
            // The classic size counts its own word.
            writer.Little(extended ? 3 : 5, 2).Little(0x030201, 3);
        }
        const auto dialog = ParseDialogTemplate(Tight(writer.bytes).View());
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->menu.Number(), 9);
        EXPECT_EQ(dialog->windowClass.Text(), u"Host");
        ASSERT_EQ(dialog->controls.size(), 2u);
        for (const DialogControl& control : dialog->controls) {
            EXPECT_EQ(control.id, 5u);
            EXPECT_EQ(control.ClassName(), u"COMBOBOX");
            EXPECT_EQ(control.title.Number(), 321);
            EXPECT_EQ(control.creationData, (std::vector<BYTE>{1, 2, 3}));
        }
    }
    DialogControl unknown;
    unknown.windowClass = platform::ResourceName(WORD{0x0086});
    EXPECT_EQ(unknown.ClassName(), u"");
}

TEST(DialogTemplate, CutAnywhereIsRefused) {
    for (const int id : {IDD_SETTINGS, IDD_PLAIN}) {
        const auto bytes = Embedded(MAKEINTRESOURCE(id), RT_DIALOG);
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const Tight cut(bytes.first(length));
            ASSERT_FALSE(ParseDialogTemplate(cut.View())) << id << " cut at " << length;
        }
        // At an odd address, with others' bytes behind it: the same answer.
        Bytes moved(1);
        moved.insert(moved.end(), bytes.begin(), bytes.end());
        moved.resize(moved.size() + 7, std::byte{0xFF});
        const auto again = ParseDialogTemplate(std::span(moved).subspan(1));
        ASSERT_TRUE(again);
        EXPECT_EQ(again->controls.size(), ParseDialogTemplate(bytes)->controls.size());
    }
}

TEST(DialogTemplate, LiesAreRefused) {
    struct Case {
        const char* what;
        Bytes bytes;
        bool accepted;
    };
    const std::vector<Case> cases = {
        {"no controls", Head(true, 0).Little(0, 6).bytes, true},
        {"a control announced", Head(true, 1).Little(0, 6).bytes, false},
        {"as many as can be said", Head(true, 0xFFFF).Little(0, 6).Little(0, 400).bytes, false},
        {"classic, as many as can be said", Head(false, 0xFFFF).Little(0, 6).Little(0, 400).bytes, false},
        {"another version", ResourceWriter().Little(2, 2).Little(0xFFFF, 2).Little(0, 40).bytes, false},
        {"a title without end", Head(true, 0).Little(0, 4).Little(~0ull, 8).Little(~0ull, 8).bytes, false},
        {"creation data beyond the end",
         Head(true, 1).Little(0, 6).Align().Little(0, 24).Number(0x82).Text(u"").Little(0xFFFF, 2).bytes,
         false},
        {"classic creation data shorter than its size",
         Head(false, 1).Little(0, 6).Align().Little(0, 18).Number(0x82).Text(u"").Little(1, 2).bytes, true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_EQ(ParseDialogTemplate(Tight(one.bytes).View()).has_value(), one.accepted);
    }
}

}  // namespace
