// SPDX-License-Identifier: MIT
#include "postgres_url.h"

namespace morvane::archive {

std::string url_without_password(const std::string& url) {
  const std::size_t scheme = url.find("://");
  if (scheme == std::string::npos) return url;
  const std::size_t authority = scheme + 3;
  const std::size_t authority_end = std::min(url.find_first_of("/?#", authority), url.size());
  std::string result = url.substr(0, authority);
  const std::size_t at = url.rfind('@', authority_end - 1);
  if (at != std::string::npos && at >= authority) {
    const std::size_t colon = url.find(':', authority);
    result += url.substr(authority, std::min(colon, at) - authority) + url.substr(at, authority_end - at);
  } else {
    result += url.substr(authority, authority_end - authority);
  }
  const std::size_t query = url.find('?', authority_end);
  result += url.substr(authority_end, std::min(query, url.size()) - authority_end);
  if (query == std::string::npos) return result;
  // Query parameters, without password=...
  char separator = '?';
  std::size_t start = query + 1;
  while (start <= url.size()) {
    const std::size_t end = std::min(url.find('&', start), url.size());
    const std::string parameter = url.substr(start, end - start);
    if (!parameter.empty() && parameter.rfind("password=", 0) != 0) {
      result += separator + parameter;
      separator = '&';
    }
    start = end + 1;
  }
  return result;
}

}  // namespace morvane::archive
