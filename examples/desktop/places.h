// Where the user put the icons of a folder, kept in a small file.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "examples/desktop/cell.h"

namespace desktop {

// The file holds the places of several folders. What stands in it for others is kept, and so is a file that
// cannot be understood: under another name. Names are bytes, not text.
class Places {
  public:
    static constexpr std::size_t kMost = 5000;  // remembered of one folder

    // Reads at once. An empty file name remembers nothing beyond this object.
    Places(std::string file, const std::string& folder);

    std::optional<Cell> Find(const std::string& name) const;
    void Set(const std::string& name, Cell cell);
    void Rename(const std::string& from, const std::string& to);
    void Clear();
    // Forgets those that are not among `names`, once there are too many.
    void Prune(const std::vector<std::string>& names);

    // Writes what changed, whole or not at all; false when that failed, and it is tried again next time.
    bool Save();

  private:
    std::string file_;
    std::string group_;
    std::map<std::string, Cell> cells_;
    bool changed_ = false;
};

}  // namespace desktop
