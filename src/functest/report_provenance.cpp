// SPDX-License-Identifier: MIT
#include "functest/report_provenance.h"

#include <openssl/evp.h>

#include <array>
#include <ctime>
#include <fstream>
#include <memory>
#include <vector>

#include "core/error.h"

namespace morvane {

std::string file_sha256(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) raise(ErrorNumber::FileNotFound, path);
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr);
  std::vector<char> block(size_t{1} << 20);
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    EVP_DigestUpdate(context.get(), block.data(), static_cast<size_t>(in.gcount()));
  }
  if (in.bad()) raise(ErrorNumber::DeviceIoError, path);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int length = 0;
  EVP_DigestFinal_ex(context.get(), digest.data(), &length);
  static constexpr char kHex[] = "0123456789abcdef";
  std::string text;
  for (unsigned int i = 0; i < length; ++i) {
    text += kHex[digest[i] >> 4];
    text += kHex[digest[i] & 0x0F];
  }
  return text;
}

std::string local_time_now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
  return text.data();
}

void stamp_report_source(TestReportSource& source, const std::string& program_version) {
  source.evaluated_at = local_time_now();
  source.program_version = program_version;
  source.file_sha256 = file_sha256(source.file_name);
}

}  // namespace morvane
