#include "examples/desktop/folder.h"

#include <utility>

namespace desktop {
namespace {

// Changes come in bursts: one reading for all of them.
constexpr unsigned kGather = 120;      // milliseconds
constexpr unsigned kLookAgain = 1000;  // for a folder that is away

std::string NameOf(GFile* file) {
    return Owned<char>(g_file_get_basename(file)).get();
}

}  // namespace

Folder::Folder(std::string path) : path_(std::move(path)) {}

Folder::~Folder() {
    Unwatch();
}

void Folder::Refresh() {
    soon_.Stop();
    Read();
}

void Folder::Watch() {
    const Owned<GFile> place(g_file_new_for_path(path_.c_str()));
    monitor_.reset(g_file_monitor_directory(place.get(), G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr));
    if (monitor_) g_signal_connect(monitor_.get(), "changed", G_CALLBACK(&Folder::OnChange), this);
}

void Folder::Unwatch() {
    if (monitor_) g_signal_handlers_disconnect_by_data(monitor_.get(), this);
    monitor_.reset();
}

void Folder::OnChange(GFileMonitor*, GFile* file, GFile* other, GFileMonitorEvent event, gpointer data) {
    Folder& self = *static_cast<Folder*>(data);
    // A file that is being written is looked at when that is done.
    if (event == G_FILE_MONITOR_EVENT_CHANGED) return;
    if (event == G_FILE_MONITOR_EVENT_RENAMED && self.renamed) self.renamed(NameOf(file), NameOf(other));
    self.ReadSoon(kGather);
}

void Folder::ReadSoon(unsigned milliseconds) {
    if (soon_) return;
    const auto due = [](gpointer data) -> gboolean {
        Folder& self = *static_cast<Folder*>(data);
        self.soon_.Ended();
        self.Read();
        return G_SOURCE_REMOVE;
    };
    soon_.Start(g_timeout_add(milliseconds, due, this));
}

void Folder::Read() {
    again_ = reading_;
    if (std::exchange(reading_, true)) return;
    if (!monitor_) Watch();  // before reading, so that nothing is missed in between
    InBackground(
        lifetime_, [path = path_] { return ReadListing(path); },
        [this](Listing listing) { Took(std::move(listing)); });
}

void Folder::Took(Listing listing) {
    reading_ = false;
    const std::string before = std::exchange(identity_, listing.identity);
    if (!listing.fault.IsEmpty()) {
        Unwatch();
        ReadSoon(kLookAgain);
    } else if (!before.empty() && before != identity_) {
        Unwatch();  // from a folder that is no more; the one in its place is watched, and read once more
        again_ = true;
    }
    if (std::exchange(again_, false)) ReadSoon(kGather);
    if (read) read(std::move(listing));
}

}  // namespace desktop
