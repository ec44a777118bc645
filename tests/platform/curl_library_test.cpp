#include "halvard/platform/curl_library.h"

#include <gtest/gtest.h>

#include "halvard/error.h"

namespace halvard::platform {
namespace {

std::string LoadFailure(const char* file) {
  try {
    LoadCurlLibrary(file);
  } catch (const Error& e) {
    return e.what();
  }
  return "";
}

TEST(CurlLibrary, AMissingLibraryOrFunctionIsAnErrorThatSaysDownloadsNeedIt) {
  const std::string missing = LoadFailure("libcurl-not-installed.so.4");
  EXPECT_EQ(missing.rfind("downloads need libcurl (libcurl-not-installed.so.4), which could not be "
                          "loaded: libcurl-not-installed.so.4: cannot open shared object file",
                          0),
            0u)
      << missing;
  // A library that loads but is not libcurl: the first function it lacks is named.
  EXPECT_EQ(LoadFailure("libm.so.6"),
            "downloads need libcurl (libm.so.6), which could not be loaded: it has no "
            "curl_global_init");
}

TEST(CurlLibrary, TheInstalledLibraryIsFoundWholeAndLoadedOnce) {
  const CurlLibrary library = LoadCurlLibrary(kCurlLibraryFile);
  EXPECT_NE(library.share_cleanup, nullptr);
  EXPECT_STREQ(library.easy_strerror(CURLE_OK), "No error");
  // The process-wide copy is loaded once and shared.
  EXPECT_EQ(&Curl(), &Curl());
}

}  // namespace
}  // namespace halvard::platform
