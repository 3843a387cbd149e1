// Files dragged to another client and from it, which answers as the protocol has it, or not at all.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>

#include "platform/window/file_drag.h"
#include "platform/window/file_drop.h"
#include "x11/recorder.h"

namespace {

using namespace platform;
using namespace xtest;

constexpr DROPEFFECT kBoth = DROPEFFECT_COPY | DROPEFFECT_MOVE;

// What the other client does.
struct Manners {
    std::uint32_t version = 5;
    int refusals = 0;                       // before it takes the files; -1: always
    const char* action = "XdndActionCopy";  // null: questions are not answered
    const char* done = "XdndActionCopy";    // null: it never says that it is done
    bool success = true;
    const char* diesAt = "";
    bool proxy = false;  // another window speaks for the one under the pointer
};

class Peer {
  public:
    Peer(xtest::XSession& session, const CRect& place, const Manners& manners)
        : session_(session),
          c_(session.Connection()),
          manners_(manners),
          window_(session.NewWindow(place.left, place.top, place.Width(), place.Height(), 0x204060)),
          speaker_(window_) {
        if (manners.proxy) {
            speaker_ = session.NewWindow(1, 1, 1, 1, 0);
            for (const xcb_window_t one : {window_, speaker_})
                session.Write(one, "XdndProxy", {speaker_}, "ATOM");
        }
        session.Write(speaker_, "XdndAware", {manners.version}, "ATOM");
        xcb_map_window(c_, window_);
        session.Sync();  // before the drag looks for it, by another connection
    }
    ~Peer() { Die(); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void Die() {
        for (const xcb_window_t one : {window_, speaker_})
            xcb_destroy_window(c_, one);
        xcb_flush(c_);
    }
    void Pump() {
        session_.TakeEvents([this](const xcb_generic_event_t& event) {
            const std::uint8_t type = event.response_type & 0x7F;
            if (type == XCB_CLIENT_MESSAGE)
                Receive(reinterpret_cast<const xcb_client_message_event_t&>(event));
            if (type == XCB_SELECTION_NOTIFY) Read();
        });
    }
    // Asks for the list in a form.
    void Fetch(const char* form) {
        fetched.reset();
        xcb_convert_selection(c_, speaker_, session_.Atom("XdndSelection"), session_.Atom(form),
                              session_.Atom("DATA"), XCB_CURRENT_TIME);
        xcb_flush(c_);
    }

    std::string log;  // a letter for each message
    std::array<std::uint32_t, 5> position{};
    std::optional<std::string> fetched;
    xcb_window_t source = 0;

  private:
    void Receive(const xcb_client_message_event_t& message) {
        static constexpr std::array<const char*, 4> kTypes = {"XdndEnter", "XdndPosition", "XdndLeave",
                                                              "XdndDrop"};
        for (const char* type : kTypes) {
            if (message.type != session_.Atom(type)) continue;
            EXPECT_EQ(message.window, window_);
            log += type[4];
            source = message.data.data32[0];
            if (std::string(manners_.diesAt) == type) {
                Die();
                return;
            }
        }
        if (log.ends_with('P')) {
            std::copy(message.data.data32, message.data.data32 + 5, position.begin());
            if (!manners_.action) return;
            const bool takes = manners_.refusals == 0;
            if (manners_.refusals > 0) --manners_.refusals;
            session_.Send(source, source, "XdndStatus",
                          {window_, takes ? 1U : 0U, 0, 0, takes ? session_.Atom(manners_.action) : 0});
        }
        if (log.ends_with('D') && manners_.done) {
            const bool says = manners_.version >= 5;
            session_.Send(
                source, source, "XdndFinished",
                {window_, says && manners_.success ? 1U : 0U, says ? session_.Atom(manners_.done) : 0, 0, 0});
        }
    }
    void Read() {
        xcb_get_property_reply_t* reply =
            xcb_get_property_reply(c_,
                                   xcb_get_property(c_, 1, speaker_, session_.Atom("DATA"),
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, 0x7FFFFFFF / 4),
                                   nullptr);
        if (reply)
            fetched = std::string(static_cast<const char*>(xcb_get_property_value(reply)),
                                  static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        std::free(reply);
    }

    xtest::XSession& session_;
    xcb_connection_t* c_;
    Manners manners_;
    xcb_window_t window_, speaker_;
};

const CRect kPeer(400, 100, 600, 300);

class Drag : public xtest::X11Test {
  protected:
    static FileOffer Offer(std::vector<CString> paths) {
        FileOffer offer;
        offer.paths = std::move(paths);
        offer.allowed = kBoth;
        return offer;
    }
    static DragPoint At(int x, int y, DROPEFFECT wanted = kBoth) {
        DragPoint point;
        point.screen = {x, y};
        point.wanted = wanted;
        return point;
    }
    FileDragger& Dragger() { return *system->FileDrags(); }
    bool Sees(Peer& peer, const std::function<bool()>& condition, int milliseconds = 10000) {
        return Until(
            [&] {
                peer.Pump();
                return condition();
            },
            milliseconds);
    }
    bool PointerIsFree() {
        const bool free = session->GrabPointer();
        session->ReleasePointer();
        return free;
    }
};

TEST_F(Drag, EndsAsTheReceiverSaysOrInTime) {
    const struct {
        const char* what;
        Manners manners;
        DROPEFFECT effect;
        const char* log;            // without repeated questions
        std::uint64_t least, most;  // milliseconds from the release
    } cases[] = {
        {"copy", {}, DROPEFFECT_COPY, "EPD", 0, 1300},
        {"move", {.action = "XdndActionMove", .done = "XdndActionMove"}, DROPEFFECT_MOVE, "EPD", 0, 1300},
        {"announces a copy, and moves", {.done = "XdndActionMove"}, DROPEFFECT_MOVE, "EPD", 0, 1300},
        {"of an older version", {.version = 3, .action = "XdndActionMove"}, DROPEFFECT_MOVE, "EPD", 0, 1300},
        {"too old", {.version = 2}, DROPEFFECT_NONE, "", 0, 1300},
        {"fails", {.done = "XdndActionMove", .success = false}, DROPEFFECT_NONE, "EPD", 0, 1300},
        {"something of its own", {.done = "XdndActionPrivate"}, DROPEFFECT_COPY, "EPD", 0, 1300},
        {"speaks through another", {.proxy = true}, DROPEFFECT_COPY, "EPD", 0, 1300},
        {"takes its time", {.refusals = 3}, DROPEFFECT_COPY, "EPD", 30, 1300},
        {"refuses", {.refusals = -1}, DROPEFFECT_NONE, "EPL", 450, 1300},
        {"mute", {.action = nullptr}, DROPEFFECT_NONE, "EPL", 1400, 4000},
        {"never done", {.done = nullptr}, DROPEFFECT_NONE, "EPD", 4900, 9000},
        {"dies when it is asked", {.diesAt = "XdndPosition"}, DROPEFFECT_NONE, "EP", 0, 1300},
        {"dies with the files", {.diesAt = "XdndDrop"}, DROPEFFECT_NONE, "EPD", 0, 1300},
    };
    Open();
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        Peer peer(*session, kPeer, one.manners);
        ASSERT_TRUE(Dragger().Begin(Offer({u"/tmp/a"}), At(10, 10)));
        EXPECT_FALSE(PointerIsFree());
        Dragger().Follow(At(450, 150));
        // At once, as in a drag of one leap.
        const std::uint64_t released = system->Now();
        Dragger().Drop(At(451, 152));
        EXPECT_TRUE(PointerIsFree());
        EXPECT_TRUE(Sees(peer, [&] { return Dragger().Outcome().has_value(); }));
        const std::uint64_t taken = system->Now() - released;
        EXPECT_EQ(Dragger().Outcome(), one.effect);
        EXPECT_GE(taken, one.least);
        EXPECT_LE(taken, one.most);
        std::string log;
        EXPECT_TRUE(Sees(peer, [&] {
            log = peer.log;
            log.erase(std::unique(log.begin(), log.end()), log.end());
            return log == one.log;
        })) << log;
        if (log == "EPD") {
            EXPECT_EQ(peer.position[2], std::uint32_t{451 << 16 | 152});
        }
        Dragger().Cancel();
        EXPECT_EQ(Dragger().Outcome(), DWORD{DROPEFFECT_NONE});
    }
}

TEST_F(Drag, TheListArrivesWhateverTheNames) {
    Open();
    Peer peer(*session, kPeer, {});
    const std::vector<CString> paths = {u"/tmp/a b",         u"/tmp/100%",       u"/tmp/#1?&",
                                        u"/tmp/line\nend\r", u"/tmp/\u6708.txt", u"/tmp/\U0001F319~-_.A9"};
    ASSERT_TRUE(Dragger().Begin(Offer(paths), At(450, 150)));
    ASSERT_TRUE(Sees(peer, [&] { return peer.log.ends_with('P'); }));
    const std::string list =
        "file:///tmp/a%20b\r\nfile:///tmp/100%25\r\nfile:///tmp/%231%3F%26\r\nfile:///tmp/line%0Aend%0D\r\n"
        "file:///tmp/%E6%9C%88.txt\r\nfile:///tmp/%F0%9F%8C%99~-_.A9\r\n";
    const auto fetch = [&](const char* form) {
        peer.Fetch(form);
        EXPECT_TRUE(Sees(peer, [&] { return peer.fetched.has_value(); }));
        return peer.fetched.value_or("nothing");
    };
    for (const char* form : {"text/uri-list", "text/plain", "UTF8_STRING"})
        EXPECT_EQ(fetch(form), list) << form;
    EXPECT_EQ(fetch("TARGETS").size(), 5 * sizeof(xcb_atom_t));
    EXPECT_EQ(fetch("image/png"), "");

    // More than one request holds.
    const CString longest(u'x', 9'000'000);
    ASSERT_TRUE(Dragger().Begin(Offer({u"/" + longest, u"/" + longest}), At(450, 150)));
    EXPECT_EQ(fetch("text/uri-list").size(), 2 * (9'000'000 + std::size_t{10}));
}

TEST_F(Drag, KeysDecideWhatIsOffered) {
    Open();
    Peer peer(*session, kPeer, {});
    ASSERT_TRUE(Dragger().Begin(Offer({u"/a"}), At(450, 150)));
    const struct {
        DROPEFFECT wanted;
        std::vector<const char*> actions;
    } cases[] = {{DROPEFFECT_MOVE, {"XdndActionMove"}},
                 {kBoth, {"XdndActionCopy", "XdndActionMove"}},
                 {DROPEFFECT_COPY, {"XdndActionCopy"}}};
    for (const auto& one : cases) {
        std::vector<std::uint32_t> atoms;
        for (const char* name : one.actions)
            atoms.push_back(session->Atom(name));
        Dragger().Follow(At(450, 150, one.wanted));
        EXPECT_TRUE(Sees(peer, [&] { return peer.log.ends_with('P') && peer.position[4] == atoms[0]; }));
        EXPECT_EQ(session->Property(peer.source, "XdndActionList"), atoms);
    }
}

TEST_F(Drag, ThePictureFollowsAndHidesNobody) {
    for (const bool compositor : {false, true}) {
        SCOPED_TRACE(compositor);
        Open({.windowManager = true, .compositor = compositor});
        Peer peer(*session, kPeer, {});
        FileOffer offer = Offer({u"/a"});
        auto picture = Surface::Create(20, 20);
        FillRect(*picture, CRect(0, 0, 20, 10), 0xFFC00000);
        offer.picture = picture;
        offer.hot = {5, 5};
        ASSERT_TRUE(Dragger().Begin(offer, At(450, 150)));
        EXPECT_TRUE(ScreenShows(447, 147, 0xC00000));
        EXPECT_TRUE(ScreenShows(447, 157, 0x204060));
        EXPECT_TRUE(Sees(peer, [&] { return peer.log == "EP"; })) << peer.log;
        Dragger().Follow(At(500, 250));
        EXPECT_TRUE(ScreenShows(497, 247, 0xC00000));
        EXPECT_TRUE(ScreenShows(447, 147, 0x204060));
        EXPECT_TRUE(Sees(peer, [&] { return peer.log == "EPP"; })) << peer.log;
        Dragger().Cancel();
        EXPECT_TRUE(ScreenShows(497, 247, 0x204060));
        system.reset();
    }
}

TEST_F(Drag, TheReceiverThatLiesBehindTheOneThatDiesIsNext) {
    Open();
    Peer behind(*session, kPeer, {});
    Peer before(*session, kPeer, {});
    ASSERT_TRUE(Dragger().Begin(Offer({u"/a"}), At(450, 150)));
    ASSERT_TRUE(Sees(before, [&] { return before.log == "EP"; }));
    before.Die();
    EXPECT_TRUE(Sees(behind, [&] { return behind.log == "EP"; }));
    EXPECT_FALSE(Dragger().Outcome());
}

TEST_F(Drag, WithoutAPointerOrAServerThereIsNone) {
    Open({.windowManager = true});
    ASSERT_TRUE(session->GrabPointer());
    EXPECT_FALSE(Dragger().Begin(Offer({u"/a"}), At(450, 150)));
    session->ReleasePointer();
    Idle(20);
    Peer peer(*session, kPeer, {});
    ASSERT_TRUE(Dragger().Begin(Offer({u"/a"}), At(450, 150)));
    ASSERT_TRUE(Sees(peer, [&] { return peer.log == "EP"; }));
    // A window manager that goes, and another one that comes, are no part of it.
    ASSERT_TRUE(session->StopWindowManager());
    ASSERT_TRUE(session->StartWindowManager());
    Dragger().Follow(At(460, 150));
    EXPECT_TRUE(Sees(peer, [&] { return peer.log == "EPP"; }));
    session->KillServer();
    Dragger().Follow(At(470, 150));
    Dragger().Drop(At(470, 150));
    EXPECT_FALSE(Until([&] { return false; }, 200));
    EXPECT_FALSE(system->IsAlive());
    Dragger().Cancel();
    EXPECT_FALSE(Dragger().Begin(Offer({u"/a"}), At(450, 150)));
}

// A client that drags files onto a window of ours, and gives the list in its own way.
class Source {
  public:
    struct Manners {
        const char* list = "file:///tmp/a%20b\r\nfile:///tmp/c\r\n";
        const char* type = "text/uri-list";
        bool manyTypes = false;
        std::uint32_t version = 5;
        std::size_t piece = 0;  // bytes at a time; 0: all at once
        int answers = 100;      // to questions and deletions, before it falls silent
        bool refuses = false;
        const char* action = "XdndActionMove";
    };
    Source(xtest::XSession& session, const Manners& manners)
        : session_(session),
          c_(session.Connection()),
          manners_(manners),
          window_(session.NewWindow(0, 0, 1, 1, 0)) {
        xcb_set_selection_owner(c_, window_, session.Atom("XdndSelection"), XCB_CURRENT_TIME);
        session.Write(window_, "XdndTypeList", {1, 2, 3, 4, session.Atom(manners.type)}, "ATOM");
    }
    ~Source() { xcb_destroy_window(c_, window_); }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    void DropOn(xcb_window_t target) {
        target_ = target;
        Send("XdndEnter", manners_.version << 24 | (manners_.manyTypes ? 1 : 0),
             manners_.manyTypes ? 1 : session_.Atom(manners_.type));
        Send("XdndPosition", 0, 110 << 16 | 120, XCB_CURRENT_TIME, session_.Atom(manners_.action));
        Send("XdndDrop", 0, XCB_CURRENT_TIME);
    }
    void Pump() {
        session_.TakeEvents([this](const xcb_generic_event_t& event) {
            const std::uint8_t type = event.response_type & 0x7F;
            if (type == XCB_CLIENT_MESSAGE)
                Receive(reinterpret_cast<const xcb_client_message_event_t&>(event));
            if (type == XCB_SELECTION_REQUEST)
                Give(reinterpret_cast<const xcb_selection_request_event_t&>(event));
            if (type == XCB_PROPERTY_NOTIFY &&
                reinterpret_cast<const xcb_property_notify_event_t&>(event).state == XCB_PROPERTY_DELETE)
                GivePiece();
        });
    }
    std::optional<std::array<std::uint32_t, 5>> status, finished;

  private:
    void Send(const char* type, std::uint32_t a = 0, std::uint32_t b = 0, std::uint32_t c = 0,
              std::uint32_t d = 0) {
        session_.Send(target_, target_, type, {window_, a, b, c, d});
    }
    void Receive(const xcb_client_message_event_t& message) {
        auto& kept = message.type == session_.Atom("XdndStatus") ? status : finished;
        std::copy(message.data.data32, message.data.data32 + 5, kept.emplace().begin());
    }
    void Give(const xcb_selection_request_event_t& request) {
        if (manners_.answers-- <= 0) return;
        requestor_ = request.requestor;
        property_ = request.property;
        if (manners_.piece != 0) {
            session_.Listen(requestor_, XCB_EVENT_MASK_PROPERTY_CHANGE);
            const std::uint32_t size = 1;
            xcb_change_property(c_, XCB_PROP_MODE_REPLACE, requestor_, property_, session_.Atom("INCR"), 32,
                                1, &size);
        } else {
            Write(manners_.list);
        }
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = requestor_;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = manners_.refuses ? xcb_atom_t{XCB_ATOM_NONE} : property_;
        xcb_send_event(c_, 0, requestor_, 0, reinterpret_cast<const char*>(&notice));
        xcb_flush(c_);
    }
    void GivePiece() {
        if (manners_.piece == 0 || manners_.answers-- <= 0) return;
        const std::string_view rest = std::string_view(manners_.list).substr(given_);
        Write(rest.substr(0, manners_.piece));
        given_ += std::min(manners_.piece, rest.size());
        xcb_flush(c_);
    }
    void Write(std::string_view bytes) {
        xcb_change_property(c_, XCB_PROP_MODE_REPLACE, requestor_, property_, session_.Atom("text/uri-list"),
                            8, static_cast<std::uint32_t>(bytes.size()), bytes.data());
    }

    xtest::XSession& session_;
    xcb_connection_t* c_;
    Manners manners_;
    xcb_window_t window_, target_ = 0, requestor_ = 0;
    xcb_atom_t property_ = 0;
    std::size_t given_ = 0;
};

TEST_F(Drag, FilesComeInFromSourcesOfAllManners) {
    const struct {
        const char* what;
        Source::Manners manners;
        std::size_t files;
        std::uint64_t least = 0;  // milliseconds to the end
    } cases[] = {
        {"all at once", {}, 2},
        {"in pieces", {.piece = 7}, 2},
        {"among many types", {.manyTypes = true}, 2},
        {"of an old version", {.version = 3}, 2},
        {"nothing but a comment and files elsewhere", {.list = "#a\r\nfile://moon/a\nhttp://b/c\n/d"}, 0},
        {"a name that is no text, and one that is", {.list = "file:///tmp/%FF\nfile:///%E6%9C%88%0A%23"}, 1},
        {"refuses", {.refuses = true}, 0},
        {"silent", {.answers = 0}, 0, 4900},
        {"silent after some pieces", {.piece = 7, .answers = 3}, 0, 4900},
        {"is gone", {.version = 2}, 0},
        {"no files", {.type = "image/png"}, 0},
    };
    Open();
    WindowTraits traits = Titled(u"receiver");
    traits.takesFiles = true;
    const HWND window = NewWindow(CRect(100, 100, 300, 200), traits);
    system->Show(window, Visibility::Shown);
    ASSERT_TRUE(Until([&] { return session->FindByTitle("receiver") != 0; }));
    const xcb_window_t target = session->FindByTitle("receiver");
    EXPECT_EQ(session->Property(target, "XdndAware"), std::vector<std::uint32_t>{5});
    seen.accepts = kBoth;
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        seen.drops.clear();
        Source source(*session, one.manners);
        const std::uint64_t start = system->Now();
        source.DropOn(target);
        const bool ends = one.manners.version >= 3;
        EXPECT_EQ(Until(
                      [&] {
                          source.Pump();
                          for (const FileDrop& drop : seen.drops)
                              system->FileDrops()->Finish(drop.id, DROPEFFECT_MOVE);
                          return source.finished.has_value();
                      },
                      ends ? 9000 : 300),
                  ends);
        EXPECT_GE(system->Now() - start, one.least);
        ASSERT_EQ(seen.drops.size(), one.files == 0 ? 0U : 1U);
        if (!ends) continue;
        const bool says = one.files != 0 && one.manners.version >= 5;
        EXPECT_EQ((*source.finished)[1], says ? 1U : 0U);
        EXPECT_EQ((*source.finished)[2], says ? session->Atom("XdndActionMove") : 0U);
        if (one.files == 0) continue;
        EXPECT_EQ(seen.drops[0].paths.size(), one.files);
        EXPECT_EQ(seen.drops[0].paths[0], one.files == 1 ? u"/\u6708\n#" : u"/tmp/a b");
        EXPECT_EQ(CPoint(seen.drops[0].screen), CPoint(110, 120));
        EXPECT_EQ(seen.drops[0].wanted, DWORD{DROPEFFECT_MOVE});
    }

    // From a window of our own to another one.
    seen.drops.clear();
    ASSERT_TRUE(Dragger().Begin(Offer({u"/tmp/mine"}), At(10, 10)));
    Dragger().Drop(At(150, 150, DROPEFFECT_COPY));
    ASSERT_TRUE(Until([&] { return !seen.drops.empty(); }));
    EXPECT_EQ(seen.drops[0].paths, std::vector<CString>{u"/tmp/mine"});
    EXPECT_FALSE(Dragger().Outcome());
    system->FileDrops()->Finish(seen.drops[0].id, DROPEFFECT_COPY);
    EXPECT_TRUE(Until([&] { return Dragger().Outcome() == DWORD{DROPEFFECT_COPY}; }));

    traits.takesFiles = false;
    system->SetTraits(window, traits);
    EXPECT_TRUE(Until([&] { return session->Property(target, "XdndAware").empty(); }));
}

}  // namespace
