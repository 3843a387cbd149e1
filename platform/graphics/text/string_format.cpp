#include <platform/gdiplus.h>

#include <new>

namespace Gdiplus {
namespace {

bool IsAlignment(StringAlignment alignment) {
    return alignment >= StringAlignmentNear && alignment <= StringAlignmentFar;
}

}  // namespace

StringFormat::StringFormat(INT flags, WORD) : flags_(flags) {}

StringFormat::StringFormat(const StringFormat* other) {
    if (other != nullptr) *this = *other;
}

StringFormat* StringFormat::Clone() const {
    return new (std::nothrow) StringFormat(this);
}

Status StringFormat::SetAlignment(StringAlignment alignment) {
    if (!IsAlignment(alignment)) return InvalidParameter;
    alignment_ = alignment;
    return Ok;
}

Status StringFormat::SetLineAlignment(StringAlignment alignment) {
    if (!IsAlignment(alignment)) return InvalidParameter;
    lineAlignment_ = alignment;
    return Ok;
}

Status StringFormat::SetFormatFlags(INT flags) {
    flags_ = flags;
    return Ok;
}

Status StringFormat::SetTrimming(StringTrimming trimming) {
    if (trimming < StringTrimmingNone || trimming > StringTrimmingEllipsisWord) return InvalidParameter;
    trimming_ = trimming;
    return Ok;
}

}  // namespace Gdiplus
