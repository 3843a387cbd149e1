#include "platform/registry/registry_file.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>

namespace platform {
namespace {

// More than a user's settings take: a file of another size is no store, and is not read.
constexpr off_t kMostBytes = off_t{16} << 20;

using Text = std::unique_ptr<char, decltype(&g_free)>;

std::string Folder() {
    return std::string(g_get_user_config_dir()) + "/registry";
}

std::string FileName() {
    return Folder() + "/current-user.ini";
}

// No pipe, which would be waited for.
bool IsReadable(const struct stat& facts) {
    return S_ISREG(facts.st_mode) && facts.st_size <= kMostBytes;
}

}  // namespace

RegistryFile::RegistryFile() : file_(g_key_file_new()) {
    const std::string name = FileName();
    struct stat facts;
    if (stat(name.c_str(), &facts) != 0) return;
    damaged_ = !IsReadable(facts) ||
               !g_key_file_load_from_file(file_, name.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
    if (!damaged_) return;
    g_key_file_unref(file_);
    file_ = g_key_file_new();
}

RegistryFile::~RegistryFile() {
    g_key_file_unref(file_);
}

bool RegistryFile::HasKey(const std::string& path) const {
    if (path == "@" || g_key_file_has_group(file_, path.c_str())) return true;
    // A file written by hand need not name what lies above its keys.
    const std::unique_ptr<char*, decltype(&g_strfreev)> groups(g_key_file_get_groups(file_, nullptr),
                                                               &g_strfreev);
    for (char** each = groups.get(); *each; ++each)
        if (std::string_view(*each).starts_with(path + "\\")) return true;
    return false;
}

std::optional<RegistryValue> RegistryFile::Find(const std::string& path, const std::string& name) const {
    const Text text(g_key_file_get_string(file_, path.c_str(), name.c_str(), nullptr), &g_free);
    return text ? ValueOfText(text.get()) : std::nullopt;
}

void RegistryFile::AddKey(const std::string& path) {
    if (HasKey(path)) return;
    // The one way to a group without values.
    g_key_file_set_string(file_, path.c_str(), "@", "");
    g_key_file_remove_key(file_, path.c_str(), "@", nullptr);
}

void RegistryFile::Set(const std::string& path, const std::string& name, const RegistryValue& value) {
    g_key_file_set_string(file_, path.c_str(), name.c_str(), ValueText(value).c_str());
}

bool RegistryFile::Remove(const std::string& path, const std::string& name) {
    return g_key_file_remove_key(file_, path.c_str(), name.c_str(), nullptr);
}

bool RegistryFile::Write() const {
    const std::string name = FileName();
    if (damaged_ && std::rename(name.c_str(), (name + ".damaged").c_str()) != 0) return false;
    gsize length = 0;
    const Text text(g_key_file_to_data(file_, &length, nullptr), &g_free);
    constexpr int kMine = 0600;
    return g_file_set_contents_full(name.c_str(), text.get(), static_cast<gssize>(length),
                                    G_FILE_SET_CONTENTS_CONSISTENT, kMine, nullptr);
}

RegistryWriteLock::RegistryWriteLock() {
    constexpr int kMine = 0700;
    g_mkdir_with_parents(Folder().c_str(), kMine);
    file_ = open((Folder() + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    for (int tries = 200; file_ >= 0 && !held_ && tries > 0; --tries) {
        held_ = flock(file_, LOCK_EX | LOCK_NB) == 0;
        if (!held_) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

RegistryWriteLock::~RegistryWriteLock() {
    if (file_ >= 0) close(file_);
}

}  // namespace platform
