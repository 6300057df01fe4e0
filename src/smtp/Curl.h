// The functions of libcurl that this room calls, found when the first mail is sent.
//
// Linked as usual, libcurl and the thirty libraries that it brings would take a fifth of the program's start
// and a tenth of its memory, and in most sessions no mail is sent. On Windows it is a part of the executable
// and costs nothing.
#pragma once

#include <QString>
#include <curl/curl.h>

namespace OSSMTP {

struct CurlFunctions {
    // Loads the library with that file name, which stays loaded. An empty name stands for one that is linked.
    explicit CurlFunctions(const QString &library);

    // Why nothing can be called, in words for the operator; empty when everything can.
    QString Problem;

    decltype(&curl_global_init) global_init = nullptr;
    decltype(&curl_easy_init) easy_init = nullptr;
    decltype(&curl_easy_setopt) easy_setopt = nullptr;
    decltype(&curl_easy_getinfo) easy_getinfo = nullptr;
    decltype(&curl_easy_send) easy_send = nullptr;
    decltype(&curl_easy_recv) easy_recv = nullptr;
    decltype(&curl_easy_strerror) easy_strerror = nullptr;
    decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
    decltype(&curl_multi_init) multi_init = nullptr;
    decltype(&curl_multi_setopt) multi_setopt = nullptr;
    decltype(&curl_multi_add_handle) multi_add_handle = nullptr;
    decltype(&curl_multi_remove_handle) multi_remove_handle = nullptr;
    decltype(&curl_multi_socket_action) multi_socket_action = nullptr;
    decltype(&curl_multi_info_read) multi_info_read = nullptr;
    decltype(&curl_multi_cleanup) multi_cleanup = nullptr;
    decltype(&curl_url) url = nullptr;
    decltype(&curl_url_set) url_set = nullptr;
    decltype(&curl_url_get) url_get = nullptr;
    decltype(&curl_url_cleanup) url_cleanup = nullptr;
    decltype(&curl_free) free = nullptr;
};

// Loads libcurl at the first call. Look at its Problem before anything is called.
const CurlFunctions &Curl();

} // namespace OSSMTP
