#include "halvard/data/crumb_session.h"

#include <algorithm>
#include <cctype>

#include "halvard/data/price_answer.h"
#include "halvard/data/symbol_name.h"
#include "halvard/platform/text.h"

namespace halvard::data {
namespace {

// A crumb is one short word of printable characters; anything else (an HTML page, an error
// object) is not one.
bool LooksLikeCrumb(std::string_view text) {
  return !text.empty() && text.size() <= 64 && std::all_of(text.begin(), text.end(), [](char c) {
    return std::isgraph(static_cast<unsigned char>(c)) && c != '<' && c != '{';
  });
}

}  // namespace

CrumbSession::CrumbSession(std::string chartHost, std::string cookieHost,
                           std::unique_ptr<platform::HttpClient> http)
    : chartBase_(BaseUrl(chartHost)),
      cookieBase_(cookieHost.empty() ? "" : BaseUrl(cookieHost)),
      http_(std::move(http)) {}

bool CrumbSession::AsksForCrumb(const platform::HttpResponse& response) {
  return response.answered() && response.status == 401 &&
         (response.body.find("Invalid Crumb") != std::string::npos ||
          response.body.find("Unauthorized") != std::string::npos);
}

std::string CrumbSession::WithCrumb(const std::string& url) const {
  if (crumb_.empty()) return url;
  return url + (url.find('?') == std::string::npos ? "?" : "&") + "crumb=" + AddressPart(crumb_);
}

std::string CrumbSession::Handshake(std::string& crumb) {
  // The cookie page answers with an error status on purpose; only its cookie matters.
  if (!cookieBase_.empty()) {
    const platform::HttpResponse page = http_->Get(cookieBase_ + "/");
    if (!page.answered()) return "its cookie page gave no answer: " + page.failure;
  }
  const platform::HttpResponse answer = http_->Get(chartBase_ + "/v1/test/getcrumb");
  if (!answer.answered()) return "no answer to the crumb request: " + answer.failure;
  const std::string_view text = platform::TrimEnd(answer.body, platform::kWhiteSpace);
  if (answer.status != 200 || !LooksLikeCrumb(text)) {
    return "the crumb request was answered with " + platform::StatusText(answer.status) + ": " +
           std::string(text.substr(0, 80));
  }
  crumb = std::string(text);
  return "";
}

platform::HttpResponse CrumbSession::Get(const std::string& url) {
  platform::HttpResponse response = http_->Get(WithCrumb(url));
  if (!AsksForCrumb(response)) return response;
  std::string crumb;
  if (const std::string why = Handshake(crumb); !why.empty()) {
    response.failure = "the chart service asked for a session and " + why;
    return response;
  }
  crumb_ = std::move(crumb);
  return http_->Get(WithCrumb(url));
}

}  // namespace halvard::data
