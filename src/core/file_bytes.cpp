// SPDX-License-Identifier: MIT
#include "core/file_bytes.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"

namespace morvane {

namespace {

[[noreturn]] void raise_open_error(const std::string& path, int error) {
  switch (error) {
    case EACCES: case EPERM: raise(ErrorNumber::PermissionDenied, path);
    case EISDIR: raise(ErrorNumber::BadFileName, path + " is a folder");
    case ENOTDIR: raise(ErrorNumber::PathNotFound, path);
    default: raise(ErrorNumber::FileNotFound, path);
  }
}

// Reads what the file holds at offset, returns the count read (short at the end of file).
size_t read_at(int fd, uint64_t offset, uint8_t* out, size_t count, const std::string& path) {
  size_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(fd, out + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0) {
      if (errno == EINTR) continue;
      raise(ErrorNumber::DeviceIoError, path);
    }
    if (got == 0) break;
    done += static_cast<size_t>(got);
  }
  return done;
}

}  // namespace

FileBytes::FileBytes(const std::string& path) : path_(path) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) raise_open_error(path, errno);
  struct stat status {};
  const bool ok = ::fstat(fd_, &status) == 0;
  const int error = ok ? EISDIR : errno;
  if (!ok || S_ISDIR(status.st_mode)) {
    ::close(fd_);
    raise_open_error(path, error);
  }
  size_ = static_cast<uint64_t>(status.st_size);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

FileBytes::~FileBytes() {
  if (fd_ >= 0) ::close(fd_);
}

uint64_t FileBytes::refresh() {
  if (fd_ < 0) return size_;
  struct stat status {};
  if (::fstat(fd_, &status) != 0) raise(ErrorNumber::DeviceIoError, path_);
  size_ = static_cast<uint64_t>(status.st_size);
  block_start_ = UINT64_MAX;
  return size_;
}

void FileBytes::read(uint64_t offset, uint8_t* out, size_t count) const {
  if (fd_ < 0) return read_memory(offset, out, count);
  const size_t got = read_at(fd_, offset, out, count, path_);
  if (got < count) std::memset(out + got, 0, count - got);
}

uint8_t FileBytes::byte(uint64_t offset) const {
  if (fd_ < 0) return offset < size_ ? memory_[offset] : 0;
  const uint64_t start = offset - offset % kBlock;
  // A block read at the growing end of a file is read again once asked beyond what it held.
  if (start != block_start_ || offset - start >= block_valid_) {
    block_.resize(kBlock);
    block_valid_ = read_at(fd_, start, block_.data(), kBlock, path_);
    block_start_ = start;
    if (offset - start >= block_valid_) return 0;
  }
  return block_[offset - start];
}

uint64_t file_length(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) raise_open_error(path, errno);
  if (S_ISDIR(status.st_mode)) raise_open_error(path, EISDIR);
  return static_cast<uint64_t>(status.st_size);
}

}  // namespace morvane
