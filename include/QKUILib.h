// The whole interface of the library: dialogs that draw themselves, and the items that fill them.
#pragma once

#include <platform/application.h>
#include <platform/calendar.h>
#include <platform/clipboard.h>
#include <platform/diagnostics.h>
#include <platform/foreign.h>
#include <platform/framework.h>
#include <platform/gdiplus.h>
#include <platform/hash_map.h>
#include <platform/headless.h>
#include <platform/internet.h>
#include <platform/registry.h>
#include <platform/resources.h>
#include <platform/shell.h>
#include <platform/text.h>
#include <platform/unsuffixed.h>

#include <qkui/dialog/dialog_base.h>
#include <qkui/items/button.h>
#include <qkui/items/check_box.h>
#include <qkui/items/gif_image.h>
#include <qkui/items/image.h>
#include <qkui/items/item_base.h>
#include <qkui/items/nine_parts.h>
#include <qkui/items/progress.h>
#include <qkui/items/resource_image.h>
#include <qkui/items/scroll_bar.h>
#include <qkui/items/static_text.h>
#include <qkui/items/text_button.h>
#include <qkui/list/list_ctrl.h>
#include <qkui/list/list_item.h>
#include <qkui/shell/desk_list_dialog.h>
#include <qkui/shell/shell_functions.h>
#include <qkui/shell/win_key_mask.h>
#include <qkui/web/base_functions.h>
#include <qkui/web/html_ctrls.h>
