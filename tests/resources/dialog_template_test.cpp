// Dialog templates: what the resource compiler packed comes out again; what lies is refused.
#include <gtest/gtest.h>

#include <vector>

#include <platform/window.h>

#include "platform/resources/dialog_template.h"
#include "resource.h"
#include "resource_kit.h"

namespace {

using kit::ByteWriter;
using kit::PutOrdinal;
using platform::DialogControl;
using platform::DialogUnits;
using platform::ParseDialogTemplate;

void ExpectControl(const DialogControl& control, DWORD id, DWORD style, const DialogUnits& place,
                   std::u16string_view className, std::u16string_view title) {
    EXPECT_EQ(control.id, id);
    EXPECT_EQ(control.style & style, style);
    EXPECT_EQ(control.place, place);
    EXPECT_EQ(control.className, className);
    EXPECT_EQ(control.title, title);
}

TEST(DialogTemplate, WhatTheScriptSaysComesOut) {
    const auto dialog = ParseDialogTemplate(Embedded(MAKEINTRESOURCE(IDD_SETTINGS), RT_DIALOG));
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->style, WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_SETFONT | DS_MODALFRAME);
    EXPECT_EQ(dialog->exStyle, WS_EX_LAYERED | WS_EX_TOOLWINDOW);
    EXPECT_EQ(dialog->place, (DialogUnits{10, 20, 200, 120}));
    EXPECT_EQ(dialog->title, u"设置 – \"linux\"");
    ASSERT_TRUE(dialog->font);
    EXPECT_EQ(dialog->font->face, u"Noto Sans CJK SC");
    EXPECT_EQ(dialog->font->pointSize, 9);
    EXPECT_EQ(dialog->font->weight, 700);
    EXPECT_TRUE(dialog->font->italic);
    ASSERT_EQ(dialog->controls.size(), 4u);
    ExpectControl(dialog->controls[0], IDC_NAME, WS_BORDER, {5, -6, 50, 10}, u"STATIC", u"标签");
    EXPECT_EQ(dialog->controls[0].exStyle, WS_EX_TRANSPARENT);
    ExpectControl(dialog->controls[1], 0xFFFFFFFF, WS_CHILD | WS_DISABLED, {1, 2, 3, 4}, u"Static", u"");
    ExpectControl(dialog->controls[2], 1003, WS_CHILD, {32767, -32768, 0, 7}, u"MyClass", u"");
    ExpectControl(dialog->controls[3], IDOK, WS_CHILD, {140, 100, 50, 14}, u"BUTTON", u"OK");

    const auto classic = ParseDialogTemplate(Embedded(MAKEINTRESOURCE(IDD_PLAIN), RT_DIALOG));
    ASSERT_TRUE(classic);
    EXPECT_EQ(classic->place, (DialogUnits{1, 2, 3, 4}));
    EXPECT_EQ(classic->title, u"plain");
    EXPECT_FALSE(classic->font);
    ASSERT_EQ(classic->controls.size(), 2u);
    ExpectControl(classic->controls[0], 1001, WS_CHILD, {5, 6, 7, 8}, u"STATIC", u"one");
    ExpectControl(classic->controls[1], IDC_NAME, WS_CHILD, {9, 10, 11, 12}, u"EDIT", u"");
}

// A template without font, up to the number of controls and after it.
ByteWriter Head(bool extended, unsigned count) {
    ByteWriter writer;
    if (extended) writer.Word(1).Word(0xFFFF).Long(0);
    writer.Fill(8, 0).Word(count).Fill(8, 0);
    return writer;
}

// The same with no names, and as many controls as the test puts behind it.
ByteWriter NamelessHead(bool extended, unsigned count) {
    return Head(extended, count).Fill(6, 0);
}

TEST(DialogTemplate, NamesByNumberAndCreationDataInBothKinds) {
    for (const bool extended : {false, true}) {
        SCOPED_TRACE(extended);
        ByteWriter writer = Head(extended, 2);
        PutOrdinal(writer, 9).Wide(u"Host").Wide(u"t");
        for (const unsigned atom : {0x85U, 0x86U}) {
            writer.Align().Fill(extended ? 20 : 16, 0).Word(5).Fill(extended ? 2 : 0, 0);
            PutOrdinal(PutOrdinal(writer, atom), 321);
            // The classic size counts its own word.
            writer.Word(extended ? 3 : 5).Fill(3, 0xEE);
        }
        const auto dialog = ParseDialogTemplate(Tight(ViewOf(writer.Take())).View());
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->title, u"t");
        ASSERT_EQ(dialog->controls.size(), 2u);
        ExpectControl(dialog->controls[0], 5, 0, {}, u"COMBOBOX", u"");
        ExpectControl(dialog->controls[1], 5, 0, {}, u"", u"");
    }
}

TEST(DialogTemplate, CutAnywhereIsRefused) {
    for (const int id : {IDD_SETTINGS, IDD_PLAIN}) {
        const auto bytes = Embedded(MAKEINTRESOURCE(id), RT_DIALOG);
        for (std::size_t length = 0; length < bytes.size(); ++length)
            ASSERT_FALSE(ParseDialogTemplate(Tight(bytes.first(length)).View()))
                << id << " cut at " << length;
        // At an odd address, with others' bytes behind it: the same answer.
        const kit::Bytes moved = ByteWriter().Byte(0).Text(Characters(bytes)).Fill(7, 0xFF).Take();
        const auto again = ParseDialogTemplate(ViewOf(moved).subspan(1));
        ASSERT_TRUE(again);
        EXPECT_EQ(again->controls.size(), ParseDialogTemplate(bytes)->controls.size());
    }
}

TEST(DialogTemplate, LiesAreRefused) {
    const auto control = [](bool extended, unsigned creationData) {
        ByteWriter writer = NamelessHead(extended, 1).Align().Fill(extended ? 24 : 18, 0);
        return PutOrdinal(writer, 0x82).Wide(u"").Word(creationData).Take();
    };
    const struct {
        const char* what;
        kit::Bytes bytes;
        bool accepted;
    } cases[] = {
        {"no controls", NamelessHead(true, 0).Take(), true},
        {"a control announced", NamelessHead(true, 1).Take(), false},
        {"as many as can be said", NamelessHead(true, 0xFFFF).Fill(400, 0).Take(), false},
        {"classic, as many as can be said", NamelessHead(false, 0xFFFF).Fill(400, 0).Take(), false},
        {"another version", ByteWriter().Word(2).Word(0xFFFF).Fill(40, 0).Take(), false},
        {"a title without end", Head(true, 0).Long(0).Fill(16, 0xFF).Take(), false},
        {"creation data beyond the end", control(true, 0xFFFF), false},
        {"classic creation data shorter than its size", control(false, 1), true},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_EQ(ParseDialogTemplate(Tight(ViewOf(one.bytes)).View()).has_value(), one.accepted);
    }
}

}  // namespace
