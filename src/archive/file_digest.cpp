// SPDX-License-Identifier: MIT
#include "file_digest.h"

#include <openssl/evp.h>

#include <fstream>
#include <memory>
#include <vector>

#include "core/error.h"

namespace morvane::archive {

std::string file_sha256(const std::string& path, const std::function<void(int64_t)>& progress) {
  std::ifstream in(path, std::ios::binary);
  if (!in) raise(ErrorNumber::FileNotFound, path);
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
  if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) {
    raise(ErrorNumber::InvalidProcedureCall, "SHA-256 is not available");
  }
  std::vector<char> block(4 << 20);
  int64_t done = 0;
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    const std::streamsize got = in.gcount();
    if (got <= 0) break;
    EVP_DigestUpdate(context.get(), block.data(), static_cast<size_t>(got));
    done += got;
    if (progress) progress(done);
  }
  if (in.bad()) raise(ErrorNumber::DeviceIoError, path);
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  EVP_DigestFinal_ex(context.get(), digest, &length);
  static constexpr char kHex[] = "0123456789abcdef";
  std::string text;
  for (unsigned int i = 0; i < length; ++i) {
    text += kHex[digest[i] >> 4];
    text += kHex[digest[i] & 15];
  }
  return text;
}

}  // namespace morvane::archive
