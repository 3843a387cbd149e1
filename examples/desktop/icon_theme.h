// Finds the files of named icons, in the user's icon theme and those that it builds on.
//
// GTK knows this too, but brings a toolkit, and with it a display, along; GIO only names the icons.
#pragma once

#include <string>
#include <vector>

namespace desktop {

class IconTheme {
  public:
    // The theme that the user's desktop is set to.
    IconTheme();

    // The path of the first of `names` that a theme has, in the picture that suits `size` pixels best: that
    // size, else one to be made smaller, else the largest. Empty when no theme has any.
    std::string Find(const std::vector<std::string>& names, int size) const;

  private:
    struct Shelf {  // a folder of icons of one size
        std::string path;
        int smallest;
        int largest;
    };
    using Theme = std::vector<Shelf>;

    void Load(const std::string& name, std::vector<std::string>& seen);

    std::vector<std::string> roots_;  // where themes lie
    std::vector<Theme> themes_;
};

}  // namespace desktop
