#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <platform/framework.h>
#include <platform/headless.h>

namespace {

constexpr UINT MessageOfBoth = WM_APP;
constexpr UINT MessageOfBase = WM_APP + 1;
constexpr UINT MessageTwice = WM_APP + 2;
constexpr UINT MessageChained = WM_APP + 3;
constexpr UINT MessageOfNobody = WM_APP + 4;

// Writes down which handler ran with what.
class Base : public CWnd {
  public:
    std::string log;

  protected:
    void Note(const std::string& text) { log += text + ";"; }
    static std::string Numbers(std::vector<std::int64_t> values) {
        std::string text = "(";
        for (const std::int64_t value : values)
            text += (text.size() > 1 ? "," : "") + std::to_string(value);
        return text + ")";
    }
    LRESULT OnBoth(WPARAM, LPARAM) { return Note("base both"), 1; }
    LRESULT OnBase(WPARAM w, LPARAM l) {
        Note("base" + Numbers({static_cast<std::int64_t>(w), l}));
        return -5;
    }
    LRESULT OnChained(WPARAM, LPARAM) { return Note("base chained"), 10; }
    void OnTimer(UINT_PTR id) { Note("base timer" + Numbers({static_cast<std::int64_t>(id)})); }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message >= WM_APP) Note("default" + Numbers({message - WM_APP}));
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Base, CWnd)
ON_MESSAGE(MessageOfBoth, OnBoth)
ON_MESSAGE(MessageOfBase, OnBase)
ON_MESSAGE(MessageChained, OnChained)
ON_WM_TIMER()
END_MESSAGE_MAP()

class WithoutMap : public Base {};

// Its handlers are private: the map is a member and reaches them.
class Derived : public WithoutMap {
    void OnMove(int x, int y) { Note("move" + Numbers({x, y})); }
    void OnSize(UINT type, int width, int height) { Note("size" + Numbers({type, width, height})); }
    void OnActivate(UINT state, HWND other, BOOL minimised) {
        Note("activate" + Numbers({state, other == GetSafeHwnd(), minimised}));
    }
    void OnMouseMove(UINT flags, CPoint point) { Note("mouse" + Numbers({flags, point.x, point.y})); }
    void OnLButtonDblClk(UINT flags, CPoint point) { Note("double" + Numbers({flags, point.x, point.y})); }
    void OnMouseLeave() { Note("leave"); }
    void OnKeyDown(UINT key) { Note("key" + Numbers({key})); }
    BOOL OnEraseBkgnd(HDC context) {
        Note("erase" + Numbers({context.Index(), context.Generation()}));
        return TRUE;
    }
    LRESULT OnBoth(WPARAM, LPARAM) { return Note("derived both"), 2; }
    LRESULT OnFirst(WPARAM, LPARAM) { return Note("first line"), 3; }
    LRESULT OnSecond(WPARAM, LPARAM) { return Note("second line"), 4; }
    LRESULT OnChained(WPARAM w, LPARAM l) { return Note("derived chained"), Base::OnChained(w, l) + 1; }
    LRESULT OnNull(WPARAM, LPARAM) { return Note("null"), 6; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Derived, WithoutMap)
ON_MESSAGE(MessageOfBoth, OnBoth)
ON_MESSAGE(WM_NULL, OnNull)
ON_MESSAGE(MessageTwice, OnFirst)
ON_MESSAGE(MessageTwice, OnSecond)
ON_MESSAGE(MessageChained, OnChained)
ON_WM_MOVE()
ON_WM_SIZE()
ON_WM_ACTIVATE()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONDBLCLK()
ON_WM_MOUSELEAVE()
ON_WM_KEYDOWN()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

class MessageMap : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(Headless::Use()); }
};

TEST_F(MessageMap, RoutesToTheMostDerivedHandlerWithItsParameters) {
    Derived window;
    ASSERT_TRUE(window.CreateEx(0, u"routes", WS_POPUP, CRect(10, 10, 60, 60), nullptr, 0));
    const LPARAM self = static_cast<LPARAM>(window.m_hWnd.ToParam());
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT result;
        const char* log;
    } cases[] = {
        {MessageOfBoth, 0, 0, 2, "derived both;"},
        {MessageOfBase, 7, -8, -5, "base(7,-8);"},
        {MessageTwice, 0, 0, 3, "first line;"},
        {MessageChained, 0, 0, 11, "derived chained;base chained;"},
        {MessageOfNobody, 0, 0, 0, "default(4);"},
        {WM_NULL, 0, 0, 6, "null;"},
        {WM_TIMER, 12, 0, 0, "base timer(12);"},
        {WM_MOVE, 0, MAKELPARAM(-3, -40), 0, "move(-3,-40);"},
        {WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(40000, 3), 0, "size(1,40000,3);"},
        {WM_ACTIVATE, 0x10002, self, 0, "activate(2,1,1);"},
        {WM_ACTIVATE, WA_INACTIVE, 0, 0, "activate(0,0,0);"},
        {WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(-1, 32767), 0, "mouse(5,-1,32767);"},
        {WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(4, -32768), 0, "double(1,4,-32768);"},
        {WM_MOUSELEAVE, 9, 9, 0, "leave;"},
        {WM_KEYDOWN, VK_F4, 0, 0, "key(115);"},
        {WM_ERASEBKGND, static_cast<WPARAM>(HDC(3, 9).ToParam()), 0, TRUE, "erase(3,9);"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(testing::Message() << "message " << one.message);
        window.log.clear();
        EXPECT_EQ(window.SendMessage(one.message, one.wParam, one.lParam), one.result);
        EXPECT_EQ(window.log, one.log);
    }
}

// Default() belongs to the message that its own object is handling, however deep others nest in it.
class Nesting : public CWnd {
  public:
    struct Seen {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        bool operator==(const Seen&) const = default;
    };
    std::vector<Seen> defaults;
    Nesting* other = nullptr;
    LRESULT CallDefault() { return Default(); }

  protected:
    LRESULT OnOuter(WPARAM depth, LPARAM) {
        if (depth > 0) SendMessage(WM_APP, depth - 1, 100);
        if (other) other->SendMessage(WM_APP + 1, 77, 78);
        if (other) other->CallDefault();  // it handles nothing now
        return Default();
    }
    LRESULT OnInner(WPARAM, LPARAM) { return Default() + 1; }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message < WM_APP) return CWnd::DefWindowProc(message, wParam, lParam);
        defaults.push_back({message, wParam, lParam});
        return 40;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Nesting, CWnd)
ON_MESSAGE(WM_APP, OnOuter)
ON_MESSAGE(WM_APP + 1, OnInner)
END_MESSAGE_MAP()

TEST_F(MessageMap, DefaultRunsForTheMessageOfItsOwnObject) {
    Nesting a, b;
    ASSERT_TRUE(a.CreateEx(0, u"a", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    ASSERT_TRUE(b.CreateEx(0, u"b", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    a.other = &b;
    EXPECT_EQ(a.SendMessage(WM_APP, 2, 55), 40);
    const std::vector<Nesting::Seen> ofA = {{WM_APP, 0, 100}, {WM_APP, 1, 100}, {WM_APP, 2, 55}};
    EXPECT_EQ(a.defaults, ofA);
    const std::vector<Nesting::Seen> ofB(3, Nesting::Seen{WM_APP + 1, 77, 78});
    EXPECT_EQ(b.defaults, ofB);
    EXPECT_EQ(b.SendMessage(WM_APP + 1, 0, 0), 41);
    EXPECT_EQ(a.CallDefault(), 0);
    EXPECT_EQ(a.defaults.size(), 3u);
}

// The filter of each window up to the top-level sees a message; an owner's does not.
class Filter : public CWnd {
  public:
    int seen = 0;
    bool takes = false;
    bool destroys = false;
    BOOL PreTranslateMessage(MSG*) override {
        ++seen;
        if (destroys) DestroyWindow();
        return takes;
    }
};

TEST_F(MessageMap, FiltersAreAskedFromTheWindowUpToItsTopLevel) {
    const struct {
        const char* name;
        bool childTakes, childDestroys, topTakes;
        int child, top;
        BOOL taken;
    } cases[] = {
        {"passes", false, false, false, 1, 1, FALSE},
        {"child takes", true, false, false, 1, 0, TRUE},
        {"top-level takes", false, false, true, 1, 1, TRUE},
        {"child goes away", false, true, true, 1, 0, FALSE},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        Filter owner, top, child;
        ASSERT_TRUE(owner.CreateEx(0, u"owner", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
        ASSERT_TRUE(top.CreateEx(0, u"top", WS_POPUP, CRect(0, 0, 50, 50), &owner, 0));
        ASSERT_TRUE(child.CreateEx(0, u"child", WS_CHILD, CRect(0, 0, 5, 5), &top, 8));
        child.takes = one.childTakes;
        child.destroys = one.childDestroys;
        top.takes = one.topTakes;
        MSG message{};
        message.hwnd = child.m_hWnd;
        message.message = WM_KEYDOWN;
        EXPECT_EQ(CWnd::WalkPreTranslateTree(&message), one.taken);
        EXPECT_EQ(child.seen, one.child);
        EXPECT_EQ(top.seen, one.top);
        EXPECT_EQ(owner.seen, 0);
    }
    MSG message{};
    EXPECT_FALSE(CWnd::WalkPreTranslateTree(&message));
}

}  // namespace
