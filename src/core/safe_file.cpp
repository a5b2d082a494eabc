// SPDX-License-Identifier: MIT
#include "core/safe_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "core/error.h"

namespace morvane {

namespace {

[[noreturn]] void fail(const std::string& path, const char* what, int error) {
  ErrorNumber number = ErrorNumber::DeviceIoError;
  if (error == EACCES || error == EPERM || error == EROFS) number = ErrorNumber::PermissionDenied;
  if (error == ENOENT || error == ENOTDIR) number = ErrorNumber::PathNotFound;
  raise(number, path + ": " + what + " (" + std::strerror(error) + ")");
}

std::string folder_of(const std::string& path) {
  const std::filesystem::path target(path);
  return target.has_parent_path() ? target.parent_path().string() : ".";
}

}  // namespace

Replacement_File::Replacement_File(std::string path, Write_Function write)
    : path_(std::move(path)), write_(std::move(write)) {
  const std::filesystem::path target(path_);
  std::string name =
      (std::filesystem::path(folder_of(path_)) / ("." + target.filename().string() + ".XXXXXX")).string();
  std::vector<char> buffer(name.begin(), name.end());
  buffer.push_back('\0');
  fd_ = ::mkstemp(buffer.data());
  if (fd_ < 0) fail(path_, "cannot create the new file beside it", errno);
  temporary_ = buffer.data();

  struct stat old {};
  const mode_t mode = ::stat(path_.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0644;
  if (::fchmod(fd_, mode) != 0) {
    const int error = errno;
    ::close(fd_);
    ::unlink(temporary_.c_str());
    fail(path_, "cannot set the new file's permissions", error);
  }
}

Replacement_File::~Replacement_File() {
  if (fd_ >= 0) ::close(fd_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void Replacement_File::write(std::string_view data) {
  const char* next = data.data();
  size_t left = data.size();
  while (left > 0) {
    const ssize_t written = write_ ? write_(fd_, next, left) : ::write(fd_, next, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) fail(path_, "cannot write the new file", written < 0 ? errno : EIO);
    next += written;
    left -= static_cast<size_t>(written);
  }
}

void Replacement_File::commit() {
  if (::fsync(fd_) != 0) fail(path_, "cannot flush the new file to the disk", errno);
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) fail(path_, "cannot close the new file", errno);
  if (::rename(temporary_.c_str(), path_.c_str()) != 0) fail(path_, "cannot replace the old file", errno);
  temporary_.clear();

  const int folder_fd = ::open(folder_of(path_).c_str(), O_RDONLY | O_DIRECTORY);
  if (folder_fd >= 0) {
    ::fsync(folder_fd);
    ::close(folder_fd);
  }
}

void replace_file(const std::string& path, std::string_view content, const Write_Function& write) {
  Replacement_File file(path, write);
  file.write(content);
  file.commit();
}

}  // namespace morvane
