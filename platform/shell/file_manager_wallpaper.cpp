// The wallpaper of pcmanfm, which draws the desktop in many light sessions: set by its command, read from
// where it keeps it.
#include <cstring>
#include <vector>

#include "platform/shell/gobject.h"
#include "platform/shell/wallpaper.h"

namespace platform {

namespace {

constexpr gint64 kCommandTime = 3 * G_TIME_SPAN_SECOND;
constexpr gint64 kKeepTime = 2 * G_TIME_SPAN_SECOND;  // until it has written down what it was sent
constexpr gulong kLook = 20000;                       // microseconds

// Runs a command, and ends it by force when it takes too long. False unless it succeeded.
bool Run(const std::vector<const char*>& command) {
    std::vector<const char*> arguments = command;
    arguments.push_back(nullptr);
    const GRef<GSubprocess> process(g_subprocess_newv(
        arguments.data(),
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE),
        nullptr));
    if (!process) return false;
    // GLib collects the child on a thread of its own; this only looks whether it has.
    const gint64 end = g_get_monotonic_time() + kCommandTime;
    while (g_subprocess_get_identifier(process.get()) != nullptr) {
        if (g_get_monotonic_time() >= end) {
            g_subprocess_force_exit(process.get());
            return false;
        }
        g_usleep(kLook / 4);
    }
    return g_subprocess_get_successful(process.get()) != FALSE;
}

// The profile that an instance was started with.
std::string ProfileOf(int process) {
    const std::string path = "/proc/" + std::to_string(process) + "/cmdline";
    char* read = nullptr;
    gsize length = 0;
    if (process <= 0 || !g_file_get_contents(path.c_str(), &read, &length, nullptr)) return "default";
    const GText kept(read);
    std::vector<std::string> words;
    for (const char* at = read; at < read + length; at += std::strlen(at) + 1)
        words.emplace_back(at);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if ((words[i] == "--profile" || words[i] == "-p") && i + 1 < words.size()) return words[i + 1];
        if (words[i].starts_with("--profile=")) return words[i].substr(std::strlen("--profile="));
    }
    return "default";
}

class FileManagerWallpaper final : public Wallpaper {
  public:
    explicit FileManagerWallpaper(int process) {
        const GText file(g_build_filename(g_get_user_config_dir(), "pcmanfm", ProfileOf(process).c_str(),
                                          "desktop-items-0.conf", nullptr));
        settings_ = file.get();
    }

    bool Set(const std::string& path) override {
        const std::string wallpaper = "--set-wallpaper=" + path;
        std::vector<const char*> command = {"pcmanfm", wallpaper.c_str()};
        // In this mode it shows no picture at all; the others are the user's choice.
        if (Read("wallpaper_mode").value_or("color") == "color") command.push_back("--wallpaper-mode=crop");
        // The command says that it succeeded, whatever comes of it.
        if (!Run(command)) return false;
        for (const gint64 end = g_get_monotonic_time() + kKeepTime; Get() != path; g_usleep(kLook))
            if (g_get_monotonic_time() >= end) return false;
        return true;
    }
    std::optional<std::string> Get() override {
        if (Read("wallpaper_mode") == "color") return std::string();
        return Read("wallpaper").value_or(std::string());
    }

  private:
    std::optional<std::string> Read(const char* key) const {
        const GKeyFileRef file(g_key_file_new());
        if (!g_key_file_load_from_file(file.get(), settings_.c_str(), G_KEY_FILE_NONE, nullptr))
            return std::nullopt;
        const GText value(g_key_file_get_string(file.get(), "*", key, nullptr));
        return value ? std::optional<std::string>(value.get()) : std::nullopt;
    }

    std::string settings_;
};

}  // namespace

std::unique_ptr<Wallpaper> MakeFileManagerWallpaper(int process) {
    return std::make_unique<FileManagerWallpaper>(process);
}

}  // namespace platform
