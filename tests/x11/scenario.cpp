#include "x11/scenario.h"

#include <fstream>
#include <memory>

#include "support/skin.h"

namespace scenario {

namespace {

class Dialog : public CQKDialogBase {
  public:
    explicit Dialog(CWnd* parent = nullptr) : CQKDialogBase(101, parent) {}
    void Open(LPCWSTR title, const CRect& place) {
        Create(101);
        SetWindowText(title);
        SetWindowPos(HWND(), place.left, place.top, place.Width(), place.Height(), SWP_NOZORDER);
    }
    void Show() {
        ShowWindow(SW_SHOW);
        UpdateView();
    }
};

// A button with a strip of solid frames, which counts its clicks and may do something.
class Button : public QKButton {
  public:
    Button(Dialog& dialog, const char* name, const CRect& place, void (*act)(Button&) = nullptr)
        : owner(dialog), name_(name), act_(act) {
        SetImage(kit::Strip("scenario", {kit::kNormal, kit::kOver, kit::kPressed}, place.Width(),
                            place.Height(), true),
                 QKBT_IMGS_3, QKBT_VERTICAL);
        SetRect(&place);
        const QKCallbacks callbacks = {[](LPVOID argument) {
                                           auto& button = *static_cast<Button*>(argument);
                                           ++button.clicks_;
                                           if (button.act_) button.act_(button);
                                       },
                                       this};
        SetCallBack(&callbacks);
        dialog.AddQKItem(this);
    }
    std::string State() const {
        return name_ + "=" + std::to_string(GetStatus()) + "/" + std::to_string(clicks_) + " ";
    }
    Dialog& owner;

  private:
    std::string name_;
    void (*act_)(Button&);
    int clicks_ = 0;
};

class Story {
  public:
    explicit Story(Stage& stage) : stage_(stage) {}

    Told Play() {
        Open();
        Buttons();
        Moving();
        PassingThrough();
        Keys();
        Minimising();
        Closing();
        return std::move(told_);
    }

  private:
    void Open() {
        backdrop_.Open(u"backdrop", CRect(0, 0, kScreenWidth, kScreenHeight));
        backdrop_.SetBackColor(Gdiplus::Color(0xFF305070), 1);
        backdrop_.SetNoMove(1);
        backdrop_.Show();
        stage_.Settle();

        plain_.Open(u"plain", CRect(100, 100, 400, 300));
        plain_.SetMinMaxStyle();
        plain_.SetBack(kit::Strip("scenario_back", {0xFF602020, 0xFF206020, 0xFF202060}, 50, 40, false), 0,
                       0);
        plain_.Show();
        stage_.Settle();

        rounded_.Open(u"rounded", CRect(450, 100, 650, 250));
        rounded_.SetBackColor(Gdiplus::Color(0xFFA0A020), 1);
        rounded_.SetRngDlg(60, 60);
        rounded_.Show();
        stage_.Settle();

        glass_.Open(u"glass", CRect(450, 300, 750, 500));
        glass_.Set_OPAQUEDlg(255);
        glass_.SetBack(kit::Solid("scenario_glass", 0x80004000, 40, 40), 0, 0);
        clear_.SetRect(10, 10, 60, 60);
        glass_.AddQKItem(&clear_);
        glass_.Show();
        stage_.Settle();

        holes_.Open(u"holes", CRect(800, 100, 1000, 250));
        holes_.Set_OPAQUEDlg(255);
        catching_.SetRect(20, 20, 60, 60);
        catching_.SetTranMouseOver(0);
        holes_.AddQKItem(&catching_);
        holes_.Show();
        stage_.Settle();

        keyed_.Open(u"keyed", CRect(800, 300, 1000, 450));
        keyed_.Set_COLORKEYDlg(RGB(255, 0, 255));
        keyed_.Show();
        stage_.Settle();

        faint_.Open(u"faint", CRect(800, 500, 1000, 650));
        faint_.SetBackColor(Gdiplus::Color(0xFFFFFFFF), 1);
        faint_.Set_ALPHADlg(128);
        faint_.Show();
        stage_.Settle();
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
        stage_.Button(3, true);
        stage_.Button(3, false);
        Log("right click");
        Picture("after the clicks");
    }

    void Moving() {
        Drag("drag by empty space", CPoint(150, 250), CPoint(181, 263));
        plain_.SetNoMove(1);
        Drag("not any more", CPoint(231, 263), CPoint(260, 290));
        Drag("through a corner that is cut away", CPoint(451, 101), CPoint(490, 140));
        Drag("the rounded one", CPoint(550, 150), CPoint(560, 170));
        Picture("moved");
    }

    void PassingThrough() {
        Click("alpha 0 reaches the window behind", 950, 150);
        Click("alpha 1 does not", 830, 130);
        Click("the key colour passes", 950, 400);
        Click("what is not of the key colour does not", 830, 330);
        Click("half transparent glass catches", 700, 450);
    }

    void Keys() {
        Click("activate", 240 + 31, 130 + 13);
        stage_.Key(VK_RETURN, "Return");
        Log("Enter");
        stage_.Key(VK_ESCAPE, "Escape");
        Log("Escape");
    }

    void Minimising() {
        Click("minimise", 350 + 31, 115 + 13);
        Log("minimised");
        Picture("minimised");
        plain_.ShowWindow(SW_RESTORE);
        stage_.Settle();
        Log("restored");
        Picture("restored");
    }

    void Closing() {
        Click("a callback that closes", 350 + 31, 165 + 13);
        Picture("closed");
    }

    void Move(const char* what, int x, int y) {
        stage_.MovePointer(x, y);
        Log(what);
    }
    void Press(const char* what) {
        stage_.Button(1, true);
        Log(what);
    }
    void Release(const char* what) {
        stage_.Button(1, false);
        Log(what);
    }
    void Click(const char* what, int x, int y) {
        stage_.MovePointer(x, y);
        stage_.Button(1, true);
        stage_.Button(1, false);
        Log(what);
    }
    void Drag(const char* what, CPoint from, CPoint to) {
        stage_.MovePointer(from.x, from.y);
        stage_.Button(1, true);
        stage_.MovePointer((from.x + to.x) / 2, (from.y + to.y) / 2);
        stage_.MovePointer(to.x, to.y);
        stage_.Button(1, false);
        Log(what);
    }

    void Log(const char* what) {
        stage_.Settle();
        told_.log += std::string(what) + ": ";
        for (const Button* button : {&lower_, &upper_, &other_, &minimise_, &close_, &behind_, &passing_})
            told_.log += button->State();
        for (Dialog* dialog : {&plain_, &rounded_, &glass_, &holes_}) {
            CRect place;
            dialog->GetWindowRect(place);
            const bool minimised = IsIconic(dialog->m_hWnd);
            told_.log += !IsWindow(dialog->m_hWnd) ? "gone "
                         : minimised               ? "minimised "
                                     : std::to_string(place.left) + "," + std::to_string(place.top) + " ";
        }
        told_.log += GetCapture() ? "captured" : "free";
        told_.log += "\n";
    }
    void Picture(const char* title) {
        stage_.Settle();
        told_.titles.push_back(title);
        told_.pictures.push_back(stage_.Screen());
    }

    Stage& stage_;
    Told told_;
    Dialog backdrop_;
    Dialog plain_{&backdrop_}, rounded_{&backdrop_}, glass_{&backdrop_}, holes_{&backdrop_},
        keyed_{&backdrop_}, faint_{&backdrop_};
    Button lower_{plain_, "lower", CRect(10, 10, 60, 50)};
    Button upper_{plain_, "upper", CRect(30, 20, 80, 60)};
    Button other_{plain_, "other", CRect(120, 20, 170, 60)};
    Button minimise_{plain_, "minimise", CRect(240, 10, 280, 40),
                     [](Button& button) { button.owner.MinQKDlg(); }};
    Button close_{plain_, "close", CRect(240, 60, 280, 90),
                  [](Button& button) { button.owner.CloseQKDlg(); }};
    Button behind_{backdrop_, "behind", CRect(780, 80, 1020, 470)};
    Button passing_{keyed_, "keyed", CRect(20, 20, 70, 60)};
    QKItemBase clear_{QKUI_RESERVED7};
    QKItemBase catching_{QKUI_RESERVED7};
};

}  // namespace

Told Play(Stage& stage) {
    return Story(stage).Play();
}

bool Save(const Told& told, const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    const auto number = [&](std::size_t value) {
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto text = [&](const std::string& value) {
        number(value.size());
        file.write(value.data(), static_cast<std::streamsize>(value.size()));
    };
    text(told.log);
    number(told.pictures.size());
    for (std::size_t i = 0; i < told.pictures.size(); ++i) {
        text(told.titles[i]);
        number(told.pictures[i].size());
        file.write(reinterpret_cast<const char*>(told.pictures[i].data()),
                   static_cast<std::streamsize>(told.pictures[i].size() * sizeof(std::uint32_t)));
    }
    return file.good();
}

bool Load(Told& told, const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const auto number = [&] {
        std::size_t value = 0;
        file.read(reinterpret_cast<char*>(&value), sizeof value);
        return file ? value : 0;
    };
    const auto text = [&] {
        std::string value(number(), '\0');
        file.read(value.data(), static_cast<std::streamsize>(value.size()));
        return value;
    };
    told.log = text();
    told.pictures.resize(number());
    for (std::vector<std::uint32_t>& picture : told.pictures) {
        told.titles.push_back(text());
        picture.resize(number());
        file.read(reinterpret_cast<char*>(picture.data()),
                  static_cast<std::streamsize>(picture.size() * sizeof(std::uint32_t)));
    }
    return file.good();
}

}  // namespace scenario
