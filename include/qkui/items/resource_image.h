/// @file
/// Pictures out of the host's resources.
#pragma once

#include <memory>

#include <platform/gdiplus.h>
#include <platform/text.h>
#include <platform/types.h>

///@{
/// The picture with this number and type (of the host's own: u"PNG") in the current resource module. Null
/// where there is none; data that cannot be decoded makes a picture of size 0, with an error status.
PLATFORM_API std::unique_ptr<Gdiplus::Image> QKLoadImage(UINT id, LPCWSTR type);
inline std::unique_ptr<Gdiplus::Image> QKLoadImage(UINT id, const platform::Utf8& type) {
    return QKLoadImage(id, type.Utf16());
}
///@}
