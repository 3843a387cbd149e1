/// @file
/// For sources that include it by this name.
#pragma once

#include "windows.h"

#ifndef RC_INVOKED
#include <platform/shell.h>
#endif
