// The name of a resource, of a resource type, or of a control's window class: a number or a text.
#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <variant>

#include <platform/types.h>

namespace platform {

class ByteReader;

class ResourceName {
  public:
    ResourceName() = default;  // the number 0
    explicit ResourceName(WORD number) : value_(number) {}
    explicit ResourceName(std::u16string text) : value_(std::move(text)) {}

    bool IsNumber() const { return std::holds_alternative<WORD>(value_); }
    // 0 for a text.
    WORD Number() const { return IsNumber() ? std::get<WORD>(value_) : WORD{0}; }
    // Empty for a number.
    std::u16string_view Text() const {
        return IsNumber() ? std::u16string_view() : std::u16string_view(std::get<std::u16string>(value_));
    }
    // Exact: letters compare with their case.
    friend auto operator<=>(const ResourceName&, const ResourceName&) = default;

  private:
    std::variant<WORD, std::u16string> value_;
};

// For messages: the number, or the text in quotation marks.
[[nodiscard]] std::string ShownName(const ResourceName& name);

// The mark 0xFFFF and a number, or a terminated text.
ResourceName ReadName(ByteReader& reader);

}  // namespace platform
