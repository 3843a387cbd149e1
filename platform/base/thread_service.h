// Services of which each thread has its own.
#pragma once

#include <pthread.h>

namespace platform {

// The calling thread's T, made when the thread first asks. It goes after the thread's objects, thread_local
// ones included; the last thread of the process keeps its T, since objects of static storage use it until the
// end.
template <class T>
class ThreadService {
  public:
    static T& Get() {
        if (service_ == nullptr) {
            service_ = new T;
            ReleaseWithThread();
        }
        return *service_;
    }

  private:
    static void ReleaseWithThread() {
        struct Key {
            Key() : made(pthread_key_create(&value, &Release) == 0) {}
            pthread_key_t value{};
            bool made;
        };
        // Without a key the thread leaves its T behind.
        static const Key key;
        if (key.made) pthread_setspecific(key.value, service_);
    }
    static void Release(void* service) {
        service_ = nullptr;
        delete static_cast<T*>(service);
    }

    // Readable until the thread is gone, since nothing destroys it.
    static inline thread_local T* service_ = nullptr;
};

}  // namespace platform
