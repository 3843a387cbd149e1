#include <gtest/gtest.h>

#include <memory>

#include <platform/framework.h>

namespace {

class Plain : public CDialog {
    DECLARE_DYNAMIC(Plain)
};
IMPLEMENT_DYNAMIC(Plain, CDialog)

class Unnamed : public Plain {};  // declares nothing: counts as its base

class Creatable : public CObject {
    DECLARE_DYNCREATE(Creatable)
};
IMPLEMENT_DYNCREATE(Creatable, CObject)

TEST(RunTimeClass, ObjectsKnowTheirClassAndItsBases) {
    Plain plain;
    Unnamed unnamed;
    Creatable creatable;
    CDialog dialog;
    CWnd window;
    const CRuntimeClass* const classes[] = {RUNTIME_CLASS(CObject), RUNTIME_CLASS(CCmdTarget),
                                            RUNTIME_CLASS(CWnd),    RUNTIME_CLASS(CDialog),
                                            RUNTIME_CLASS(Plain),   RUNTIME_CLASS(Creatable)};
    const struct {
        const CObject* object;
        const char* name;
        bool kindOf[6];
    } cases[] = {
        {&window, "CWnd", {true, true, true, false, false, false}},
        {&dialog, "CDialog", {true, true, true, true, false, false}},
        {&plain, "Plain", {true, true, true, true, true, false}},
        {&unnamed, "Plain", {true, true, true, true, true, false}},
        {&creatable, "Creatable", {true, false, false, false, false, true}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        EXPECT_STREQ(one.object->GetRuntimeClass()->m_lpszClassName, one.name);
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(one.object->IsKindOf(classes[i]), one.kindOf[i]) << classes[i]->m_lpszClassName;
    }
    EXPECT_FALSE(window.IsKindOf(nullptr));
}

TEST(RunTimeClass, OnlyCreatableClassesCreate) {
    EXPECT_EQ(RUNTIME_CLASS(Plain)->CreateObject(), nullptr);
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Creatable)->CreateObject());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->GetRuntimeClass(), RUNTIME_CLASS(Creatable));
}

}  // namespace
