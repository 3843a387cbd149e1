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

#include "dialog/dialog_base.h"
#include "items/button.h"
#include "items/check_box.h"
#include "items/gif_image.h"
#include "items/image.h"
#include "items/item_base.h"
#include "items/nine_parts.h"
#include "items/progress.h"
#include "items/resource_image.h"
#include "items/scroll_bar.h"
#include "items/static_text.h"
#include "items/text_button.h"
#include "list/list_ctrl.h"
#include "list/list_item.h"
#include "shell/desk_list_dialog.h"
#include "shell/shell_functions.h"
#include "shell/win_key_mask.h"
#include "web/base_functions.h"
#include "web/html_ctrls.h"
