// SPDX-License-Identifier: MIT
#include "core/file_bytes.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"
#include "core/input_file.h"
#include "core/system_error.h"

namespace morvane {

namespace {

[[noreturn]] void raise_open_error(const std::string& path, int error) {
  if (error == EISDIR) raise(ErrorNumber::BadFileName, path + " is a folder, not a file");
  if (error == ENOENT) raise(ErrorNumber::FileNotFound, path);
  raise_system_error(error, path, ErrorNumber::FileNotFound);
}

const char* kind_of(mode_t mode) {
  if (S_ISFIFO(mode)) return "a named pipe";
  if (S_ISCHR(mode)) return "a character device";
  if (S_ISBLK(mode)) return "a block device";
  if (S_ISSOCK(mode)) return "a socket";
  return "not a regular file";
}

}  // namespace

int open_regular_file(const std::string& path, uint64_t& size) {
  struct stat status {};
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) {
    const int error = errno;
    // A socket cannot be opened at all: say what it is rather than why the open failed.
    struct stat named {};
    if (::stat(path.c_str(), &named) == 0 && !S_ISREG(named.st_mode) && !S_ISDIR(named.st_mode)) {
      raise(ErrorNumber::BadFileName, path + " is " + kind_of(named.st_mode) + ", not a regular file");
    }
    raise_open_error(path, error);
  }
  if (::fstat(fd, &status) != 0) {
    const int error = errno;
    ::close(fd);
    raise_open_error(path, error);
  }
  if (!S_ISREG(status.st_mode)) {
    ::close(fd);
    if (S_ISDIR(status.st_mode)) raise_open_error(path, EISDIR);
    raise(ErrorNumber::BadFileName, path + " is " + kind_of(status.st_mode) + ", not a regular file");
  }
  // Reads of a regular file never wait; the flag goes so that nothing below depends on it.
  ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  size = static_cast<uint64_t>(status.st_size);
  return fd;
}

namespace {

// Reads what the file holds at offset, returns the count read (short at the end of file).
size_t read_at(int fd, uint64_t offset, uint8_t* out, size_t count, const std::string& path) {
  size_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(fd, out + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0) {
      if (errno == EINTR) continue;
      raise_system_error(errno, path + ": cannot read it");
    }
    if (got == 0) break;
    done += static_cast<size_t>(got);
  }
  return done;
}

}  // namespace

FileBytes::FileBytes(const std::string& path) : path_(path) {
  fd_ = open_regular_file(path, size_);
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
  if (::fstat(fd_, &status) != 0) raise_system_error(errno, path_);
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
  if (!S_ISREG(status.st_mode)) {
    raise(ErrorNumber::BadFileName, path + " is " + kind_of(status.st_mode) + ", not a regular file");
  }
  return static_cast<uint64_t>(status.st_size);
}

FileIdentity file_identity(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino)};
}

std::string read_whole_file(const std::string& path, uint64_t limit) {
  uint64_t size = 0;
  const int fd = open_regular_file(path, size);
  if (size > limit) {
    ::close(fd);
    raise(ErrorNumber::BadFileName, path + " is " + std::to_string(size) + " bytes, more than the " +
                                        std::to_string(limit) + " bytes such a file may hold");
  }
  std::string text;
  text.resize(static_cast<size_t>(size));
  size_t got = 0;
  try {
    got = read_at(fd, 0, reinterpret_cast<uint8_t*>(text.data()), text.size(), path);
  } catch (...) {
    ::close(fd);
    throw;
  }
  ::close(fd);
  text.resize(got);  // a file cut short since its size was taken
  return text;
}

}  // namespace morvane
