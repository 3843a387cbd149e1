// The file that holds the store.
#pragma once

#include <optional>
#include <string>

#include "platform/registry/value_text.h"

typedef struct _GKeyFile GKeyFile;

namespace platform {

// The store as it is on disk at this moment. Paths and names as PathText and NameText give them.
class RegistryFile {
  public:
    // For reading; what cannot be read or understood is empty.
    RegistryFile();
    ~RegistryFile();
    RegistryFile(const RegistryFile&) = delete;
    RegistryFile& operator=(const RegistryFile&) = delete;

    bool HasKey(const std::string& path) const;
    std::optional<RegistryValue> Find(const std::string& path, const std::string& name) const;

    void AddKey(const std::string& path);
    void Set(const std::string& path, const std::string& name, const RegistryValue& value);
    bool Remove(const std::string& path, const std::string& name);
    // All or nothing; false with the file as it was.
    [[nodiscard]] bool Write() const;

  private:
    GKeyFile* file_;
    bool damaged_ = false;  // there is a file, but it is none of ours
};

// Keeps other threads and processes from writing while one reads, changes and writes.
class RegistryWriteLock {
  public:
    RegistryWriteLock();
    ~RegistryWriteLock();
    RegistryWriteLock(const RegistryWriteLock&) = delete;
    RegistryWriteLock& operator=(const RegistryWriteLock&) = delete;

    // Not where the folder cannot be written, or when somebody else kept the lock for two seconds.
    bool IsHeld() const { return held_; }

  private:
    int file_;
    bool held_ = false;
};

}  // namespace platform
