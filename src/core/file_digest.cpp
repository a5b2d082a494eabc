// SPDX-License-Identifier: MIT
#include "core/file_digest.h"

#include <openssl/evp.h>

#include <fstream>
#include <memory>
#include <vector>

#include "core/error.h"
#include "core/shared_library.h"

namespace morvane {

namespace {

// The digest functions of the cryptography library, loaded the first time a digest is made
// rather than linked: only reports and the archive make digests, and the library's symbols were,
// with the workbook library's, half of the dynamic loader's work at every start.
#define MORVANE_DIGEST_FUNCTIONS(X) \
  X(EVP_MD_CTX_new) X(EVP_MD_CTX_free) X(EVP_sha256) X(EVP_DigestInit_ex) X(EVP_DigestUpdate) X(EVP_DigestFinal_ex)

struct DigestFunctions {
#define MORVANE_DIGEST_POINTER(name) decltype(&::name) name = nullptr;
  MORVANE_DIGEST_FUNCTIONS(MORVANE_DIGEST_POINTER)
#undef MORVANE_DIGEST_POINTER
};

const DigestFunctions& digest_functions() {
  return functions_loaded_once<DigestFunctions>(
      "libcrypto.so.3", "cryptography",
      [](const SharedLibrary& library, DigestFunctions& loaded) { MORVANE_DIGEST_FUNCTIONS(MORVANE_RESOLVE_FUNCTION) });
}

}  // namespace

std::string file_sha256(const std::string& path, const std::function<void(int64_t)>& progress) {
  const DigestFunctions& evp = digest_functions();
  std::ifstream in(path, std::ios::binary);
  if (!in) raise(ErrorNumber::FileNotFound, path);
  const std::unique_ptr<EVP_MD_CTX, decltype(evp.EVP_MD_CTX_free)> context(evp.EVP_MD_CTX_new(), evp.EVP_MD_CTX_free);
  if (!context || evp.EVP_DigestInit_ex(context.get(), evp.EVP_sha256(), nullptr) != 1) {
    raise(ErrorNumber::InvalidProcedureCall, "SHA-256 is not available");
  }
  std::vector<char> block(4 << 20);
  int64_t done = 0;
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    const std::streamsize got = in.gcount();
    if (got <= 0) break;
    evp.EVP_DigestUpdate(context.get(), block.data(), static_cast<size_t>(got));
    done += got;
    if (progress) progress(done);
  }
  if (in.bad()) raise(ErrorNumber::DeviceIoError, path);
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  evp.EVP_DigestFinal_ex(context.get(), digest, &length);
  static constexpr char kHex[] = "0123456789abcdef";
  std::string text;
  for (unsigned int i = 0; i < length; ++i) {
    text += kHex[digest[i] >> 4];
    text += kHex[digest[i] & 15];
  }
  return text;
}

}  // namespace morvane
