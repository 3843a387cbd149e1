#include "examples/gallery/live_values.h"

#include <utility>

namespace gallery {
namespace {

constexpr int kMargin = 16;
constexpr int kAbove = 12;
constexpr int kBelow = 12;
constexpr int kTitleHeight = 32;
constexpr int kRowHeight = 25;

}  // namespace

void LiveValues::Open(CQKDialogBase& dialog, CPoint corner, int width) {
    dialog_ = &dialog;
    const CRect title(corner.x + kMargin, corner.y + kAbove, corner.x + width - kMargin,
                      corner.y + kAbove + kTitleHeight);
    place_ = CRect(corner.x, corner.y, corner.x + width, title.bottom + kBelow);
    well_ = &items_.Add<Well>(dialog);
    well_->PlaceAt(place_);
    Dress(items_.Add<QKStaticText>(dialog), TextStyle::Title, title, u"Live values");
}

void LiveValues::Row(LPCWSTR name, Reader read) {
    const int top = place_.bottom - kBelow;
    const CRect row(place_.left + kMargin, top, place_.right - kMargin, top + kRowHeight);
    place_.bottom += kRowHeight;
    well_->PlaceAt(place_);
    Dress(items_.Add<QKStaticText>(*dialog_), TextStyle::Note, row, name);
    QKStaticText& value = items_.Add<QKStaticText>(*dialog_);
    Dress(value, TextStyle::Note, row, CString(), Align::Right);
    value.SetTextColor(Tint(skin::palette::kGold));
    values_.push_back({&value, std::move(read)});
}

void LiveValues::Refresh() {
    for (const Value& value : values_)
        value.text->SetText(value.read());
}

void LiveValues::Close() {
    values_.clear();
    items_.Clear();
}

CString Number(int value) {
    CString text;
    text.Format(u"%d", value);
    return text;
}

CString YesNo(int flag) {
    return flag ? u"yes" : u"no";
}

CString StatusOf(const QKItemBase& item) {
    switch (item.GetStatus()) {
        case QKItemBase::QK_NORMAL:
            return u"normal";
        case QKItemBase::QK_MOUSEON:
            return u"over";
        case QKItemBase::QK_MOUSEDOWN:
            return u"pressed";
    }
    return CString();
}

}  // namespace gallery
