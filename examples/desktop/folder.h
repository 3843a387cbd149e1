// One folder, read and watched. It may vanish and come back.
#pragma once

#include <functional>
#include <string>

#include "examples/desktop/background.h"
#include "examples/desktop/file.h"

namespace desktop {

class Folder {
  public:
    explicit Folder(std::string path);
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    // What is called from the main context: after every reading, whether anything changed or not ...
    std::function<void(Listing)> read;
    // ... and when the file system tells of a new name, before the folder is read again.
    std::function<void(const std::string& from, const std::string& to)> renamed;

    const std::string& Path() const { return path_; }
    std::string PathOf(const File& file) const { return desktop::PathOf(path_, file.name); }

    // Reads soon, off this thread; once more afterwards, if it is asked meanwhile.
    void Refresh();

  private:
    static void OnChange(GFileMonitor*, GFile* file, GFile* other, GFileMonitorEvent event, gpointer self);
    void Watch();
    void Unwatch();
    void ReadSoon(unsigned milliseconds);
    void Read();
    void Took(Listing listing);

    std::string path_;
    std::string identity_;
    Owned<GFileMonitor> monitor_;
    Source soon_;
    bool reading_ = false;
    bool again_ = false;
    Lifetime lifetime_;
};

}  // namespace desktop
