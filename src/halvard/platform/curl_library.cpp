#include "halvard/platform/curl_library.h"

#include <dlfcn.h>

#include <mutex>
#include <string>

#include "halvard/error.h"

namespace halvard::platform {
namespace {

std::string Unavailable(const char* file, const std::string& why) {
  return std::string("downloads need libcurl (") + file + "), which could not be loaded: " + why;
}

template <typename Function>
void Find(const CurlLibrary& library, const char* file, const char* name, Function& function) {
  ::dlerror();
  function = reinterpret_cast<Function>(::dlsym(library.handle.get(), name));
  if (function == nullptr) throw Error(Unavailable(file, std::string("it has no ") + name));
}

}  // namespace

CurlLibrary LoadCurlLibrary(const char* file) {
  void* opened = ::dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (opened == nullptr) {
    const char* why = ::dlerror();
    throw Error(Unavailable(file, why != nullptr ? why : "not found"));
  }
  CurlLibrary library;
  library.handle = std::shared_ptr<void>(opened, [](void* handle) { ::dlclose(handle); });
  Find(library, file, "curl_global_init", library.global_init);
  Find(library, file, "curl_easy_init", library.easy_init);
  Find(library, file, "curl_easy_setopt", library.easy_setopt);
  Find(library, file, "curl_easy_perform", library.easy_perform);
  Find(library, file, "curl_easy_getinfo", library.easy_getinfo);
  Find(library, file, "curl_easy_strerror", library.easy_strerror);
  Find(library, file, "curl_easy_cleanup", library.easy_cleanup);
  Find(library, file, "curl_getdate", library.getdate);
  Find(library, file, "curl_share_init", library.share_init);
  Find(library, file, "curl_share_setopt", library.share_setopt);
  Find(library, file, "curl_share_cleanup", library.share_cleanup);
  return library;
}

const CurlLibrary& Curl() {
  // Loaded under a lock rather than as a function-local static, so that a failed load is tried
  // (and reported) again by the next request. Once loaded it stays mapped until the process
  // ends: libcurl and its TLS libraries are not unloaded while exit handlers may still run.
  static std::mutex lock;
  static const CurlLibrary* loaded = nullptr;
  const std::lock_guard<std::mutex> held(lock);
  if (loaded == nullptr) {
    auto library = std::make_unique<CurlLibrary>(LoadCurlLibrary(kCurlLibraryFile));
    library->global_init(CURL_GLOBAL_DEFAULT);
    loaded = library.release();
  }
  return *loaded;
}

}  // namespace halvard::platform
