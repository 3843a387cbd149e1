// CString: what changes a text, and what parts of one are made of.
#include <algorithm>
#include <utility>

#include <platform/text.h>

#include "platform/base/ascii.h"

namespace {

using platform::LowerAscii;
using platform::UpperAscii;

// A position of the interface inside a text of `length` units, at its ends where it lies outside.
std::size_t Inside(int position, std::size_t length) {
    return position < 0 ? 0 : std::min(static_cast<std::size_t>(position), length);
}

}  // namespace

CString CString::SpanIncluding(const CString& set) const {
    return CString(View().substr(0, text_.find_first_not_of(set.text_)));
}

CString CString::SpanExcluding(const CString& set) const {
    return CString(View().substr(0, text_.find_first_of(set.text_)));
}

CString CString::Tokenize(const CString& separators, int& from) const {
    const std::size_t begin = from < 0
                                  ? std::u16string::npos
                                  : text_.find_first_not_of(separators.text_, static_cast<std::size_t>(from));
    if (begin == std::u16string::npos) {
        from = -1;
        return CString();
    }
    const std::size_t end = std::min(text_.find_first_of(separators.text_, begin), text_.size());
    from = static_cast<int>(std::min(end + 1, text_.size()));
    return CString(View().substr(begin, end - begin));
}

int CString::FindOneOf(const CString& set) const {
    const std::size_t found = text_.find_first_of(set.text_);
    return found == std::u16string::npos ? -1 : static_cast<int>(found);
}

int CString::Replace(const CString& what, const CString& with) {
    if (what.IsEmpty()) return 0;
    // A new text, not edits in place: linear however many places there are, and either argument may be
    // this string itself.
    std::u16string out;
    int places = 0;
    std::size_t from = 0;
    for (std::size_t at = text_.find(what.text_); at != std::u16string::npos;
         at = text_.find(what.text_, from)) {
        out.append(text_, from, at - from).append(with.text_);
        from = at + what.text_.size();
        ++places;
    }
    if (places == 0) return 0;
    out.append(text_, from);
    text_ = std::move(out);
    return places;
}

int CString::Replace(WCHAR what, WCHAR with) {
    if (what == with) return 0;
    const auto places = std::count(text_.begin(), text_.end(), what);
    std::replace(text_.begin(), text_.end(), what, with);
    return static_cast<int>(places);
}

int CString::Insert(int position, const CString& text) {
    text_.insert(Inside(position, text_.size()), text.text_);
    return GetLength();
}

int CString::Delete(int position, int count) {
    if (count > 0) text_.erase(Inside(position, text_.size()), static_cast<std::size_t>(count));
    return GetLength();
}

int CString::Remove(WCHAR unit) {
    return static_cast<int>(std::erase(text_, unit));
}

void CString::Truncate(int length) {
    text_.resize(Inside(length, text_.size()));
}

CString& CString::MakeLower() {
    std::transform(text_.begin(), text_.end(), text_.begin(), LowerAscii);
    return *this;
}

CString& CString::MakeUpper() {
    std::transform(text_.begin(), text_.end(), text_.begin(), UpperAscii);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    return *this;
}

CString& CString::TrimLeft(const CString& set) {
    text_.erase(0, text_.find_first_not_of(set.text_));
    return *this;
}

CString& CString::TrimRight(const CString& set) {
    text_.erase(text_.find_last_not_of(set.text_) + 1);
    return *this;
}
