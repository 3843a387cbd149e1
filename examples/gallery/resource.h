// Numbers of the gallery's resources. Read by the resource compiler too: nothing but #define lines.
#pragma once

#define IDD_SHELL 101
#define IDD_DEMO 102
#define IDD_QUESTION 103

// Placeholders of IDD_SHELL.
#define IDC_TITLE 1001
#define IDC_CLOSE 1002
#define IDC_MINIMISE 1003
#define IDC_FIRST_TAB 1004
#define IDC_SECOND_TAB 1005
// Placeholders of IDD_QUESTION.
#define IDC_QUESTION_TITLE 1101
#define IDC_QUESTION_TEXT 1102
#define IDC_QUESTION_YES 1103
#define IDC_QUESTION_NO 1104

// Pictures of the type "PNG".
#define IDP_CLOSE 201
#define IDP_MINIMISE 202
#define IDP_WIDE 203
#define IDP_PLAY 204
#define IDP_PREVIOUS 205
#define IDP_NEXT 206
#define IDP_TAB_LAYERS 211
#define IDP_TAB_BACKGROUND 212
#define IDP_TAB_SHAPE 213
#define IDP_TAB_BUTTONS 214
#define IDP_TAB_STATES 215
#define IDP_TAB_AREAS 216
#define IDP_TAB_REQUESTS 217
#define IDP_TAB_TEXTS 231
#define IDP_TAB_CHOICES 232
#define IDP_TAB_IMAGES 233
#define IDP_TAB_PROGRESS 234
#define IDP_TAB_SCROLLING 235
#define IDP_TAB_FRAMES 236
#define IDP_TAB_LIST 237
#define IDP_TAB_WEB 238
#define IDP_TAB_FILES 239
// The vertical strips of one to five frames.
#define IDP_STRIP_1 221
#define IDP_STRIP_2 222
#define IDP_STRIP_3 223
#define IDP_STRIP_4 224
#define IDP_STRIP_5 225
