// The icons of files by their content types.
#pragma once

#include <map>
#include <string>

#include "examples/desktop/file.h"
#include "examples/desktop/icon_theme.h"
#include "examples/desktop/picture.h"

namespace desktop {

class Icons {
  public:
    // From the user's icon theme, or one of the program's own pictures where no theme has any. Each type is
    // looked up once; all files of a type share the pixels.
    const Picture& Of(const File& file);

  private:
    Picture Load(const File& file) const;

    IconTheme theme_;
    std::map<std::string, Picture> byType_;
};

}  // namespace desktop
