/// @file
/// For sources that include it by this name.
#pragma once

#ifdef RC_INVOKED
#include <platform/resource_names.h>
#else
#include <platform/application.h>
#include <platform/calendar.h>
#include <platform/collections.h>
#include <platform/diagnostics.h>
#include <platform/framework.h>
#include <platform/hash_map.h>
#include <platform/linked_list.h>
#include <platform/unsuffixed.h>
#endif
