// Work on another thread, whose result comes back to the thread of the main context.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "examples/desktop/glib.h"

namespace desktop {

// Expires with the object that holds it: what comes back too late is dropped.
class Lifetime {
  public:
    std::weak_ptr<const void> Watch() const { return alive_; }

  private:
    std::shared_ptr<const void> alive_ = std::make_shared<char>();
};

// Runs `work` on a thread of GLib's pool, and then `done` with what it returned from the main context, unless
// `owner` is gone by then. Neither may throw; `work` shares nothing with this thread.
template <class Work, class Done>
void InBackground(const Lifetime& owner, Work work, Done done) {
    struct Job {
        std::weak_ptr<const void> owner;
        Work work;
        Done done;
        std::optional<decltype(work())> result;
    };
    const auto finish = [](GObject*, GAsyncResult* task, gpointer) {
        Job& job = *static_cast<Job*>(g_task_get_task_data(G_TASK(task)));
        if (!job.owner.expired()) job.done(std::move(*job.result));
    };
    const auto run = [](GTask* task, gpointer, gpointer data, GCancellable*) {
        Job& job = *static_cast<Job*>(data);
        job.result.emplace(job.work());
        g_task_return_boolean(task, TRUE);
    };
    const Owned<GTask> task(g_task_new(nullptr, nullptr, finish, nullptr));
    g_task_set_task_data(task.get(), new Job{owner.Watch(), std::move(work), std::move(done), {}},
                         [](gpointer job) { delete static_cast<Job*>(job); });
    g_task_run_in_thread(task.get(), run);
}

}  // namespace desktop
