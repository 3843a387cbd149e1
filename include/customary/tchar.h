/// @file
/// For sources that include it by this name.
#pragma once

#ifdef RC_INVOKED
#include <platform/resource_names.h>
#else
#include <platform/text.h>
#endif
