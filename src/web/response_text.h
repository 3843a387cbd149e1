// How the bytes of an answer become text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <platform/text.h>

namespace qkui {

// Takes a body piece by piece, and decodes each when it comes: only the text is held, not the bytes. It ends
// at the first zero character.
class ResponseText {
  public:
    // 0: the system's own character set, which is UTF-8. The text is its own printf format: %% is one percent
    // sign, and what would be any other directive stands as it is. 2: UTF-8. Any other: UTF-16LE.
    explicit ResponseText(int charset) : charset_(charset) {}

    // How many bytes will come, if that is known: a long text is not moved while it grows.
    void Expect(std::size_t bytes);
    void Append(std::string_view bytes);
    // Bytes so far.
    std::size_t Size() const { return size_; }
    // All that came. Half a UTF-16 unit at the end is a whole one whose other half is zero.
    CString Take();

  private:
    enum : int { kAnsi = 0, kUtf8 = 2 };
    bool IsWide() const { return charset_ != kAnsi && charset_ != kUtf8; }
    void AddFormat(std::string_view bytes);
    std::size_t WholeCharacters() const;
    void Decode(std::size_t count);

    int charset_;
    std::size_t size_ = 0;
    std::string undecoded_;
    bool afterPercent_ = false;  // the next percent sign is the second of a pair
    bool ended_ = false;         // with a zero character, or for want of memory
    std::u16string text_;
};

}  // namespace qkui
