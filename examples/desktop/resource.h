// Numbers of the program's resources. Read by the resource compiler too: nothing but #define lines.
#pragma once

#define IDD_DESKTOP 101
#define IDD_MENU 102

// Pictures of the type "PNG". Those of nine parts count on from the first.
#define IDP_WALLPAPER 201
#define IDP_FILE 202
#define IDP_FOLDER 203
#define IDP_MENU_ROW 204
#define IDP_MENU_DIVIDER 205
#define IDP_SCROLL_CAP 206
#define IDP_SCROLL_MIDDLE 207
#define IDP_SCROLL_TRACK 208
#define IDP_HOVER 300
#define IDP_PRESS 310
#define IDP_FOCUS 320
#define IDP_MENU_PANE 330
