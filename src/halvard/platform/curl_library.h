#pragma once
// The libcurl functions the HTTP client calls, looked up in the shared library the first time a
// request is made rather than linked into the programs: libcurl brings some thirty libraries of
// its own (TLS, Kerberos, LDAP, SSH, ...), and mapping them took most of the start-up of every
// run, although only the downloads and the fundamentals services go on the network.

#include <curl/curl.h>

#include <memory>

namespace halvard::platform {

// libcurl's stable interface since 7.16; the one the packages depend on.
inline constexpr const char* kCurlLibraryFile = "libcurl.so.4";

struct CurlLibrary {
  std::shared_ptr<void> handle;  // keeps the library mapped while the functions are in use
  decltype(&curl_global_init) global_init = nullptr;
  decltype(&curl_easy_init) easy_init = nullptr;
  decltype(&curl_easy_setopt) easy_setopt = nullptr;
  decltype(&curl_easy_perform) easy_perform = nullptr;
  decltype(&curl_easy_getinfo) easy_getinfo = nullptr;
  decltype(&curl_easy_strerror) easy_strerror = nullptr;
  decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
  decltype(&curl_getdate) getdate = nullptr;
  decltype(&curl_share_init) share_init = nullptr;
  decltype(&curl_share_setopt) share_setopt = nullptr;
  decltype(&curl_share_cleanup) share_cleanup = nullptr;
};

// Opens the library FILE (a name the dynamic loader looks up, or a path) and finds every function
// above in it; throws halvard::Error saying what is missing and that downloads need it.
CurlLibrary LoadCurlLibrary(const char* file);

// kCurlLibraryFile, loaded and initialised once for the whole process; throws as LoadCurlLibrary
// does (again at every call, so a later request says the same).
const CurlLibrary& Curl();

}  // namespace halvard::platform
