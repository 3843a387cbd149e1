// The files of a folder as a desktop shows them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QKUILib.h>

namespace desktop {

struct File {
    std::string name;           // the bytes on disk: not always UTF-8
    CString caption;            // the same, to be read
    std::string type;           // content type, as the name tells it
    std::int64_t modified = 0;  // microseconds since 1970
    bool folder = false;
    std::string sortKey;
};

// Folders first, then by caption as people count: "9" before "10".
bool ShownBefore(const File& a, const File& b);

struct Listing {
    std::vector<File> files;  // in the order of ShownBefore, without hidden ones
    std::string identity;     // of the folder itself: another one when it was made anew
    CString fault;            // why it could not be read; empty when it was
};
// Blocks for as long as the disk takes; for any thread.
Listing ReadListing(const std::string& folder);

std::string PathOf(const std::string& folder, const std::string& name);

}  // namespace desktop
