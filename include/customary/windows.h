/// @file
/// For sources that include it by this name.
#pragma once

#ifdef RC_INVOKED
#include <platform/resource_names.h>
#else
#include <platform/calendar.h>
#include <platform/clipboard.h>
#include <platform/diagnostics.h>
#include <platform/gdi.h>
#include <platform/resources.h>
#include <platform/text.h>
#include <platform/unsuffixed.h>
#include <platform/window.h>
#endif
