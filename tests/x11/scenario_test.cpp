// The same scenario on a real screen and in memory: the same states, callbacks, bounds and pixels.
#include <gtest/gtest.h>

#include <QKUILib.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/skin.h"
#include "window/headless_driver.h"

namespace {

constexpr int kScreenWidth = 1280, kScreenHeight = 800;

struct Log {
    std::string text;
    std::vector<std::string> titles;  // of the pictures
    std::vector<Headless::Picture> pictures;
};

class Dialog : public CQKDialogBase {
  public:
    explicit Dialog(CWnd* parent = nullptr) : CQKDialogBase(101, parent) {}
    void Open(LPCWSTR title, const CRect& place) {
        Create(101);
        SetWindowText(title);
        SetWindowPos(HWND(), place.left, place.top, place.Width(), place.Height(), SWP_NOZORDER);
    }
    void Show(windowtest::Driver& user) {
        ShowWindow(SW_SHOW);
        UpdateView();
        user.Settle();
    }
};

// A button with a strip of solid frames, which counts its clicks.
class Button : public QKButton {
  public:
    Button(Dialog& dialog, const char* name, const CRect& place) : name_(name) {
        SetImage(kit::Strip("scenario", {kit::kNormal, kit::kOver, kit::kPressed}, place.Width(),
                            place.Height(), true),
                 QKBT_IMGS_3, QKBT_VERTICAL);
        SetRect(&place);
        const QKCallbacks callbacks = {[](LPVOID button) { ++static_cast<Button*>(button)->clicks_; }, this};
        SetCallBack(&callbacks);
        dialog.AddQKItem(this);
    }
    std::string State() const {
        return name_ + "=" + std::to_string(GetStatus()) + "/" + std::to_string(clicks_) + " ";
    }

  private:
    std::string name_;
    int clicks_ = 0;
};

// Dialogs of every kind, acted upon step by step.
class Scenario {
  public:
    explicit Scenario(windowtest::Driver& user) : user_(user) {}

    Log Play() {
        Open();
        Buttons();
        PassingThrough();
        return std::move(log_);
    }

  private:
    void Open() {
        backdrop_.Open(u"backdrop", CRect(0, 0, kScreenWidth, kScreenHeight));
        backdrop_.SetBackColor(Gdiplus::Color(0xFF305070), 1);
        backdrop_.SetNoMove(1);
        backdrop_.Show(user_);

        plain_.Open(u"plain", CRect(100, 100, 400, 300));
        plain_.SetMinMaxStyle();
        plain_.SetBack(kit::Strip("scenario_back", {0xFF602020, 0xFF206020, 0xFF202060}, 50, 40, false), 0,
                       0);
        plain_.Show(user_);

        rounded_.Open(u"rounded", CRect(450, 100, 650, 250));
        rounded_.SetBackColor(Gdiplus::Color(0xFFA0A020), 1);
        rounded_.SetRngDlg(60, 60);
        rounded_.Show(user_);

        glass_.Open(u"glass", CRect(450, 300, 750, 500));
        glass_.Set_OPAQUEDlg(255);
        glass_.SetBack(kit::Solid("scenario_glass", 0x80004000, 40, 40), 0, 0);
        clear_.SetRect(10, 10, 60, 60);
        glass_.AddQKItem(&clear_);
        glass_.Show(user_);

        holes_.Open(u"holes", CRect(800, 100, 1000, 250));
        holes_.Set_OPAQUEDlg(255);
        catching_.SetRect(20, 20, 60, 60);
        catching_.SetTranMouseOver(0);
        holes_.AddQKItem(&catching_);
        holes_.Show(user_);

        keyed_.Open(u"keyed", CRect(800, 300, 1000, 450));
        keyed_.Set_COLORKEYDlg(RGB(255, 0, 255));
        keyed_.Show(user_);

        faint_.Open(u"faint", CRect(800, 500, 1000, 650));
        faint_.SetBackColor(Gdiplus::Color(0xFFFFFFFF), 1);
        faint_.Set_ALPHADlg(128);
        faint_.Show(user_);
        Picture("every kind of window");
    }

    void Buttons() {
        Move("over both", 140, 130);
        Move("over the lower", 115, 115);
        Press("press the lower");
        Move("drag it outside", 300, 280);
        Picture("pressed while outside");
        Release("release outside");
        Move("over the upper", 150, 140);
        Press("press");
        Picture("pressed");
        Release("click");
        Press("press again");
        Move("to another button", 240, 130);
        Release("release on another");
        Move("off the window", 60, 60);
        Press("press the backdrop");
        Release("release the backdrop");
        Move("over", 240, 130);
        user_.Press(3);
        user_.Release(3);
        Note("right click");
        Picture("after the clicks");
    }

    void PassingThrough() {
        Click("alpha 0 reaches the window behind", 950, 150);
        Click("alpha 1 does not", 830, 130);
        Click("the key colour passes", 950, 400);
        Click("what is not of the key colour does not", 830, 330);
        Click("half transparent glass catches", 700, 450);
    }

    void Move(const char* what, int x, int y) {
        user_.Move(x, y);
        Note(what);
    }
    void Press(const char* what) {
        user_.Pass(600);  // two presses are never a double click here
        user_.Press();
        Note(what);
    }
    void Release(const char* what) {
        user_.Release();
        Note(what);
    }
    void Click(const char* what, int x, int y) {
        user_.Move(x, y);
        user_.Pass(600);
        user_.Press();
        user_.Release();
        Note(what);
    }
    void Note(const char* what) {
        user_.Settle();
        log_.text += std::string(what) + ": ";
        for (const Button* button : {&lower_, &upper_, &other_, &behind_, &passing_})
            log_.text += button->State();
        for (Dialog* dialog : {&plain_, &rounded_, &glass_, &holes_}) {
            CRect place;
            dialog->GetWindowRect(place);
            log_.text += std::to_string(place.left) + "," + std::to_string(place.top) + " ";
        }
        log_.text += GetCapture() ? "captured" : "free";
        log_.text += "\n";
    }
    void Picture(const char* title) {
        user_.Settle();
        log_.titles.push_back(title);
        log_.pictures.push_back(user_.Screen());
    }

    windowtest::Driver& user_;
    Log log_;
    Dialog backdrop_;
    Dialog plain_{&backdrop_}, rounded_{&backdrop_}, glass_{&backdrop_}, holes_{&backdrop_},
        keyed_{&backdrop_}, faint_{&backdrop_};
    Button lower_{plain_, "lower", CRect(10, 10, 60, 50)};
    Button upper_{plain_, "upper", CRect(30, 20, 80, 60)};
    Button other_{plain_, "other", CRect(120, 20, 170, 60)};
    Button behind_{backdrop_, "behind", CRect(780, 80, 1020, 470)};
    Button passing_{keyed_, "keyed", CRect(20, 20, 70, 60)};
    QKItemBase clear_{QKUI_RESERVED7};
    QKItemBase catching_{QKUI_RESERVED7};
};

int Distance(std::uint32_t a, std::uint32_t b) {
    int most = 0;
    for (int shift = 0; shift < 24; shift += 8)
        most = std::max(
            most, std::abs(static_cast<int>((a >> shift) & 255) - static_cast<int>((b >> shift) & 255)));
    return most;
}

TEST(Scenario, IsTheSameOnARealScreenAndInMemory) {
    auto user = windowtest::MakeDriver();
    ASSERT_TRUE(user);
    const Log real = Scenario(*user).Play();
    user.reset();
    ASSERT_TRUE(Headless::Use(kScreenWidth, kScreenHeight));
    windowtest::HeadlessDriver inMemory;
    const Log memory = Scenario(inMemory).Play();

    EXPECT_EQ(real.text, memory.text);
    ASSERT_EQ(real.pictures.size(), memory.pictures.size());
    for (std::size_t i = 0; i < real.pictures.size(); ++i) {
        const Headless::Picture &shown = real.pictures[i], &wanted = memory.pictures[i];
        ASSERT_EQ(shown.argb.size(), wanted.argb.size());
        int differing = 0;
        for (int y = 0; y < wanted.height; ++y)
            for (int x = 0; x < wanted.width; ++x)
                // A compositor may round a blend the other way.
                if (Distance(shown.At(x, y), wanted.At(x, y)) > 1 && differing++ == 0)
                    ADD_FAILURE() << real.titles[i] << ": first at " << x << ", " << y << std::hex
                                  << ", shown " << shown.At(x, y) << ", wanted " << wanted.At(x, y);
        EXPECT_EQ(differing, 0) << real.titles[i];
    }
}

}  // namespace
