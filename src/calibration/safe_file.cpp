// SPDX-License-Identifier: MIT
#include "calibration/safe_file.h"

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

// The new file until it has been renamed over the old one: closed and removed on every way out.
class Temporary_File {
 public:
  explicit Temporary_File(const std::string& path) {
    const std::filesystem::path target(path);
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::string name = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    std::vector<char> buffer(name.begin(), name.end());
    buffer.push_back('\0');
    fd_ = ::mkstemp(buffer.data());
    if (fd_ < 0) fail(path, "cannot create the new file beside it", errno);
    name_ = buffer.data();
  }
  ~Temporary_File() {
    if (fd_ >= 0) ::close(fd_);
    if (!name_.empty()) ::unlink(name_.c_str());
  }
  Temporary_File(const Temporary_File&) = delete;
  Temporary_File& operator=(const Temporary_File&) = delete;

  int fd() const { return fd_; }
  const std::string& name() const { return name_; }
  // Closes the descriptor; false when the close reports a failed write.
  bool close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }
  void renamed() { name_.clear(); }

 private:
  int fd_ = -1;
  std::string name_;
};

}  // namespace

void replace_file(const std::string& path, std::string_view content, const Write_Function& write) {
  Temporary_File file(path);
  struct stat old {};
  const mode_t mode = ::stat(path.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0644;
  if (::fchmod(file.fd(), mode) != 0) fail(path, "cannot set the new file's permissions", errno);

  const char* data = content.data();
  size_t left = content.size();
  while (left > 0) {
    const ssize_t written = write ? write(file.fd(), data, left) : ::write(file.fd(), data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) fail(path, "cannot write the new file", written < 0 ? errno : EIO);
    data += written;
    left -= static_cast<size_t>(written);
  }
  if (::fsync(file.fd()) != 0) fail(path, "cannot flush the new file to the disk", errno);
  if (!file.close()) fail(path, "cannot close the new file", errno);
  if (::rename(file.name().c_str(), path.c_str()) != 0) fail(path, "cannot replace the old file", errno);
  file.renamed();

  // The rename itself reaches the disk with the folder.
  const std::filesystem::path target(path);
  const std::string folder = target.has_parent_path() ? target.parent_path().string() : ".";
  const int folder_fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (folder_fd >= 0) {
    ::fsync(folder_fd);
    ::close(folder_fd);
  }
}

}  // namespace morvane
