// libcurl, loaded when it is first asked for, so that a program without requests maps nothing of it.
#pragma once

#include <curl/curl.h>

namespace platform {

struct CurlLibrary {
    // Null where the system has no libcurl. Once loaded it stays, since its own exit handlers need it.
    [[nodiscard]] static const CurlLibrary* Get();

    decltype(&curl_global_init) globalInit;
    decltype(&curl_easy_init) easyInit;
    decltype(&curl_easy_setopt) easySetopt;
    decltype(&curl_easy_getinfo) easyGetinfo;
    decltype(&curl_easy_pause) easyPause;
    decltype(&curl_easy_cleanup) easyCleanup;
    decltype(&curl_multi_init) multiInit;
    decltype(&curl_multi_add_handle) multiAddHandle;
    decltype(&curl_multi_remove_handle) multiRemoveHandle;
    decltype(&curl_multi_perform) multiPerform;
    decltype(&curl_multi_poll) multiPoll;
    decltype(&curl_multi_info_read) multiInfoRead;
    decltype(&curl_multi_cleanup) multiCleanup;
    decltype(&curl_slist_append) slistAppend;
    decltype(&curl_slist_free_all) slistFreeAll;
};

}  // namespace platform
