// Sizes of the skin's pictures, in pixels. The gallery places its items by these, the generator draws by
// them.
//
// clang-format off
//   file                             frames  layout      one frame   look
//   shell.png                        -       -         1104 x 744    the gallery's window, with its shadow
//   background_wide.png              -       -         1600 x 900    dusk over a lake, moon right of centre
//   background_tall.png              -       -          700 x 1100   the same place, upright
//   background.jpg                   -       -         1280 x 800    northern lights
//   background_tile.bmp              -       -           64 x 64     seamless weave
//   panel_alpha.png                  -       -          560 x 380    glass, per-pixel alpha, its own shadow
//   panel_key.png                    -       -          340 x 400    medal on solid 255,0,255; hard edge
//   btn1_v.png ... btn5_v.png        1 ... 5 vertical   120 x 36     pill; 4 and 5 frames have an indicator
//   btn1_h.png ... btn5_h.png        1 ... 5 horizontal 120 x 36     the same
//   btn_wide_v.png                   4       vertical    96 x 36     pill without indicator
//   btn_close_v.png, btn_min_v.png   3       vertical    32 x 28     window buttons
//   btn_play_v.png                   4       vertical    72 x 72     round; the active frame pauses
//   btn_prev_v.png, btn_next_v.png   3       vertical    48 x 48     round
//   tab_layers.png ... tab_web.png   4       vertical   132 x 40     tab, glyph left, text room right
//   check_box_v.png, radio_v.png     5       vertical    20 x 20     sunken box or dish, free for its mark
//   check_box_h.png                  5       horizontal  20 x 20     the same box
//   check_mark.png, radio_mark.png   -       -           20 x 20     marks, centred
//   progress_back.png, ..._bar.png   -       -          400 x 18     dusk: ember to gold
//   progress_cool_back.png, ..._bar.png -    -          400 x 10     northern lights, slimmer
//   scroll_top_v.png, scroll_middle_v.png, scroll_bottom_v.png
//                                    3       vertical    14 x 10     parts of one thumb
//   scroll_track.png                 -       -           18 x 400    its channel
//   frame_hover_0.png ... 8.png      -       -        6 x 6, 8 x 8   nine parts of a frame, row by row
//   frame_press_*, frame_focus_*     -       -           the same
//   picture.png                      -       -          240 x 160    dusk over the lake, small
//   spinner.gif                      12      -           64 x 64     a ring of lamps, its own pace
//   comet.gif                        24      -          160 x 120    a comet around a moon
//   icon_*.png                       -       -           64 x 64     entries of a list
//   app_icon_64.png                  -       -           64 x 64     application icon
//   app_icon.ico                     -       -          16 24 32 48 (bitmaps) 64 256 (PNG)
// clang-format on
//
// Frames come in the order normal, pointer over, pressed, active, disabled.
#pragma once

namespace skin {

struct PictureSize {
    int width;
    int height;
};

inline constexpr PictureSize kShell{1104, 744};
// What lies outside the body is shadow or nothing.
inline constexpr int kShellBodyLeft = 32;
inline constexpr int kShellBodyTop = 28;
inline constexpr int kShellBodyWidth = 1040;
inline constexpr int kShellBodyHeight = 680;
inline constexpr int kShellTitleHeight = 56;
inline constexpr int kShellSidebarWidth = 164;
inline constexpr int kShellPaneLeft = 196;  // the frosted pane that a page fills
inline constexpr int kShellPaneTop = 92;
inline constexpr int kShellPaneWidth = 860;
inline constexpr int kShellPaneHeight = 600;

inline constexpr PictureSize kBackgroundWide{1600, 900};
inline constexpr PictureSize kBackgroundTall{700, 1100};
inline constexpr PictureSize kBackgroundJpeg{1280, 800};
inline constexpr PictureSize kBackgroundTile{64, 64};

inline constexpr PictureSize kPanelAlpha{560, 380};
// The glass body inside panel_alpha.png; what lies outside is shadow, the medallion's bulge or nothing.
inline constexpr int kPanelAlphaBodyLeft = 44;
inline constexpr int kPanelAlphaBodyTop = 48;
inline constexpr int kPanelAlphaBodyWidth = 480;
inline constexpr int kPanelAlphaBodyHeight = 288;
inline constexpr int kPanelAlphaTitleHeight = 44;   // opaque strip at the top of the body
inline constexpr int kPanelAlphaFooterHeight = 52;  // opaque strip at the bottom of the body
inline constexpr int kPanelAlphaMedallionX = 88;    // centre of the opaque disc
inline constexpr int kPanelAlphaMedallionY = 82;
inline constexpr int kPanelAlphaMedallionRadius = 44;

inline constexpr PictureSize kPanelKey{340, 400};
inline constexpr int kPanelKeyCentreX = 170;  // centre of the medal
inline constexpr int kPanelKeyCentreY = 168;
inline constexpr int kPanelKeyFieldRadius = 116;  // the plain field inside its ring, free for items

inline constexpr PictureSize kPillButton{120, 36};
inline constexpr PictureSize kWideButton{96, 36};
inline constexpr PictureSize kWindowButton{32, 28};
inline constexpr PictureSize kPlayButton{72, 72};
inline constexpr PictureSize kSkipButton{48, 48};
inline constexpr PictureSize kTab{132, 40};
inline constexpr int kTabTextLeft = 42;  // room for a caption starts here
inline constexpr int kTabTextRight = 124;

inline constexpr PictureSize kChoice{20, 20};
inline constexpr PictureSize kProgress{400, 18};
inline constexpr PictureSize kProgressCool{400, 10};
inline constexpr PictureSize kScrollPart{14, 10};
inline constexpr PictureSize kScrollTrack{18, 400};
inline constexpr int kFrameCorner = 6;
inline constexpr int kFrameMiddle = 8;  // length of the edges, side of the centre
inline constexpr PictureSize kPicture{240, 160};
inline constexpr PictureSize kSpinner{64, 64};
inline constexpr PictureSize kComet{160, 120};
inline constexpr int kListIcon = 64;

inline constexpr int kAppIcon = 64;

}  // namespace skin
