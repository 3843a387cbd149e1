/// @file
/// For sources that include it by this name.
#pragma once

#include "windows.h"
