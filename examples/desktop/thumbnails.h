// Pictures of picture files, made off the thread that draws.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "examples/desktop/background.h"
#include "examples/desktop/file.h"
#include "examples/desktop/picture.h"

namespace desktop {

class Thumbnails {
  public:
    // Kept in memory: those asked for last. Those that an icon shows are held by the icon as well.
    static constexpr std::size_t kKept = 512;

    // Called from the main context when one more can be found.
    std::function<void(const std::string& name)> made;

    static bool MayHave(const File& file);
    // Null while there is none, or when the file is no picture after all.
    Picture Find(const File& file);

    struct Wish {
        std::string path;
        File file;
    };
    // Makes these, in this order. Wishes from before that were not begun are forgotten.
    void Want(std::vector<Wish> wishes);
    bool IsBusy() const { return working_ > 0; }

  private:
    struct Kept {
        std::string name;
        std::int64_t modified;
        Picture picture;  // null: it cannot be made
    };
    Kept* FindKept(const File& file);
    void Keep(const File& file, Picture picture);
    void Work();

    std::vector<Wish> wishes_;  // the next one last
    int working_ = 0;
    std::list<Kept> kept_;  // the latest first
    std::unordered_map<std::string, std::list<Kept>::iterator> byName_;
    Lifetime lifetime_;
};

}  // namespace desktop
