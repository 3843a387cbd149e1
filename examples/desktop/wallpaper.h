// Which picture lies behind the icons.
#pragma once

#include <string>

#include <QKUILib.h>

namespace desktop {

class Wallpaper {
  public:
    // `file` keeps the choice; empty: it is not kept.
    explicit Wallpaper(std::string file) : file_(std::move(file)) {}

    // The path of the picture: the running desktop's own, else the one that was chosen here last. Empty when
    // there is none.
    CString Current() const;
    void Choose(const CString& path);

  private:
    std::string file_;
};

}  // namespace desktop
