// SPDX-License-Identifier: MIT
#include "core/system_error.h"
#include "core/safe_file.h"

#include <dirent.h>
#include <pthread.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

namespace morvane {

namespace {

constexpr const char* kTemporaryMark = ".morvane-tmp-";
constexpr int kMostLinks = 40;  // as the kernel allows in one path

// The temporary files of the writes under way, where a signal handler can reach them: a fixed
// table of paths, each slot free (0), being filled or emptied (1) or holding a path (2).
struct TemporarySlot {
  std::atomic<int> state{0};
  std::array<char, PATH_MAX> path{};
};
std::array<TemporarySlot, 16> g_temporaries;

int register_temporary(const std::string& path) {
  if (path.size() >= PATH_MAX) return -1;
  for (size_t i = 0; i < g_temporaries.size(); ++i) {
    TemporarySlot& slot = g_temporaries[i];
    int free = 0;
    if (slot.state.compare_exchange_strong(free, 1)) {
      std::memcpy(slot.path.data(), path.c_str(), path.size() + 1);
      slot.state.store(2);
      return static_cast<int>(i);
    }
  }
  return -1;  // more writes at once than slots: the next writer to the same file removes it
}

void unregister_temporary(int& slot) {
  if (slot < 0) return;
  g_temporaries[static_cast<size_t>(slot)].state.store(1);
  g_temporaries[static_cast<size_t>(slot)].state.store(0);
  slot = -1;
}

extern "C" void remove_temporaries_and_end(int signal_number) {
  for (TemporarySlot& slot : g_temporaries) {
    if (slot.state.load() == 2) ::unlink(slot.path.data());
  }
  ::signal(signal_number, SIG_DFL);
  ::raise(signal_number);  // delivered as the handler returns: the process ends by it
}

std::string folder_of(const std::string& path) {
  const std::filesystem::path target(path);
  return target.has_parent_path() ? target.parent_path().string() : ".";
}

bool is_disk_full(int error) { return error == ENOSPC || error == EDQUOT || error == EFBIG; }

// path with every symbolic link along its last component followed.
std::string follow_links(const std::string& path) {
  std::string target = path;
  for (int hops = 0;; ++hops) {
    struct stat status {};
    if (::lstat(target.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return target;
    if (hops == kMostLinks) raise_system_error(ELOOP, path + ": cannot follow its symbolic links");
    std::vector<char> buffer(PATH_MAX);
    const ssize_t length = ::readlink(target.c_str(), buffer.data(), buffer.size());
    if (length < 0) raise_system_error(errno, path + ": cannot read the symbolic link " + target);
    const std::string next(buffer.data(), static_cast<size_t>(length));
    target = next.front() == '/' ? next : (std::filesystem::path(target).parent_path() / next).string();
  }
}

// Removes the temporary files of earlier writers to target whose process is gone (killed, or
// the machine stopped) before they could commit or clean up.
void remove_stale_temporaries(const std::string& target) {
  const std::string prefix = "." + std::filesystem::path(target).filename().string() + kTemporaryMark;
  DIR* folder = ::opendir(folder_of(target).c_str());
  if (folder == nullptr) return;
  while (const dirent* entry = ::readdir(folder)) {
    const std::string_view name = entry->d_name;
    if (name.substr(0, prefix.size()) != prefix) continue;
    const long pid = std::strtol(entry->d_name + prefix.size(), nullptr, 10);
    if (pid <= 0 || pid == ::getpid()) continue;
    if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) ::unlinkat(::dirfd(folder), entry->d_name, 0);
  }
  ::closedir(folder);
}

// Renaming onto a file frees the old file's blocks inside the call: a tenth of a second for a
// file of some hundred megabytes, on the caller's thread (the window's, for an export). Held open
// over the rename, a large old file is freed when it is closed, which a short-lived thread does.
int rename_freeing_the_old_file_later(const char* from, const char* to) {
  constexpr off_t kLargeFile = off_t{16} << 20;
  int old = ::open(to, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  struct stat status {};
  if (old >= 0 && (::fstat(old, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < kLargeFile)) {
    ::close(old);
    old = -1;
  }
  const int result = ::rename(from, to);
  const int error = errno;
  if (old >= 0) {
    try {
      std::thread([old] { ::close(old); }).detach();
    } catch (...) {
      ::close(old);
    }
  }
  errno = error;
  return result;
}

}  // namespace

std::string partial_path(const std::string& path) {
  const std::filesystem::path whole(path);
  const std::filesystem::path name = whole.filename();
  const std::string kept = name.stem().string() + ".partial" + name.extension().string();
  return whole.has_parent_path() ? (whole.parent_path() / kept).string() : kept;
}

ReplacementFile::ReplacementFile(std::string path, WriteFunction write)
    : path_(std::move(path)), write_(std::move(write)) {
  if (path_ == "-") {
    target_ = path_;
    fd_ = STDOUT_FILENO;
    direct_ = true;
    owns_fd_ = false;
    return;
  }
  target_ = follow_links(path_);
  struct stat status {};
  if (::stat(target_.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) raise(ErrorNumber::BadFileName, path_ + " is a folder, not a file");
    if (!S_ISREG(status.st_mode)) {
      // A pipe, a device or a socket takes the content as it comes; there is nothing to rename.
      fd_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
      if (fd_ < 0) fail("cannot open it for writing", errno);
      direct_ = true;
      return;
    }
  }
  remove_stale_temporaries(target_);
  open_temporary();
}

void ReplacementFile::open_temporary() {
  const std::filesystem::path target(target_);
  const std::string name = "." + target.filename().string() + kTemporaryMark + std::to_string(::getpid()) + "-XXXXXX";
  const std::string pattern = (std::filesystem::path(folder_of(target_)) / name).string();
  std::vector<char> buffer(pattern.begin(), pattern.end());
  buffer.push_back('\0');
  // A signal between the file's creation and its registration would leave it behind.
  sigset_t ending, previous;
  sigemptyset(&ending);
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, signal_number);
  ::pthread_sigmask(SIG_BLOCK, &ending, &previous);
  fd_ = ::mkostemp(buffer.data(), O_CLOEXEC);
  const int error = errno;
  if (fd_ >= 0) {
    temporary_ = buffer.data();
    slot_ = register_temporary(temporary_);
  }
  ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
  if (fd_ < 0) fail("cannot create the new file beside it", error);

  struct stat old {};
  const mode_t mode = ::stat(target_.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0644;
  if (::fchmod(fd_, mode) != 0) {
    const int error = errno;
    ::close(fd_);
    fd_ = -1;
    ::unlink(temporary_.c_str());
    temporary_.clear();
    unregister_temporary(slot_);
    fail("cannot set the new file's permissions", error);
  }
}

ReplacementFile::~ReplacementFile() {
  if (fd_ >= 0 && owns_fd_) ::close(fd_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  unregister_temporary(slot_);
}

void ReplacementFile::fail(const char* what, int error) const {
  std::string detail = path_ + ": " + what;
  if (is_disk_full(error)) {
    std::error_code ignored;
    const std::filesystem::path folder = std::filesystem::absolute(target_, ignored).lexically_normal().parent_path();
    detail += " after " + std::to_string(written_) + " bytes, in the folder " + folder.string();
  }
  raise_system_error(error, detail, error == ENOENT ? ErrorNumber::PathNotFound : ErrorNumber::DeviceIoError);
}

void ReplacementFile::write(std::string_view data) {
  const char* next = data.data();
  size_t left = data.size();
  while (left > 0) {
    const ssize_t count = write_ ? write_(fd_, next, left) : ::write(fd_, next, left);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fail(direct_ ? "cannot write to it" : "cannot write the new file", count < 0 ? errno : EIO);
    const auto done = static_cast<size_t>(count);
    if (const void* line_break = ::memrchr(next, '\n', done)) {
      line_end_ = written_ + static_cast<uint64_t>(static_cast<const char*>(line_break) - next) + 1;
    }
    written_ += done;
    next += done;
    left -= done;
  }
}

void ReplacementFile::commit() {
  if (direct_) {
    const int fd = fd_;
    fd_ = -1;
    if (owns_fd_ && ::close(fd) != 0) fail("cannot close it", errno);
    return;
  }
  if (::fsync(fd_) != 0) fail("cannot flush the new file to the disk", errno);
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) fail("cannot close the new file", errno);
  if (rename_freeing_the_old_file_later(temporary_.c_str(), target_.c_str()) != 0) {
    fail("cannot replace the old file", errno);
  }
  temporary_.clear();
  unregister_temporary(slot_);

  const int folder_fd = ::open(folder_of(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder_fd >= 0) {
    ::fsync(folder_fd);
    ::close(folder_fd);
  }
}

std::string ReplacementFile::keep_partial(PartialContent what) noexcept {
  if (direct_ || temporary_.empty()) return {};
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  std::string kept;
  struct stat status {};
  const bool has_content = ::stat(temporary_.c_str(), &status) == 0 && status.st_size > 0;
  bool keep = false;
  switch (what) {
    case PartialContent::Whole_Lines:
      keep = line_end_ > 0 && ::truncate(temporary_.c_str(), static_cast<off_t>(line_end_)) == 0;
      break;
    case PartialContent::Everything: keep = has_content; break;
    case PartialContent::Nothing: break;
  }
  if (keep) {
    try {
      kept = partial_path(target_);
    } catch (...) {
      kept.clear();
    }
    if (!kept.empty() && rename_freeing_the_old_file_later(temporary_.c_str(), kept.c_str()) != 0) kept.clear();
  }
  if (kept.empty()) ::unlink(temporary_.c_str());
  temporary_.clear();
  unregister_temporary(slot_);
  return kept;
}

RuntimeError write_failure(const RuntimeError& error, const ReplacementFile& file, const std::string& partial) {
  if (file.direct()) return error;
  std::string detail = error.detail() + "; " + file.target() + " is left as it was";
  if (!partial.empty()) detail += "; the lines written so far are in " + partial;
  return RuntimeError(static_cast<ErrorNumber>(error.number()), detail);
}

void replace_file(const std::string& path, std::string_view content, const WriteFunction& write,
                  PartialContent keep) {
  ReplacementFile file(path, write);
  try {
    file.write(content);
    file.commit();
  } catch (const RuntimeError& error) {
    const std::string kept = file.keep_partial(keep);
    throw write_failure(error, file, kept);
  }
}

void remove_temporary_files_on_signals() {
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction current {};
    if (::sigaction(signal_number, nullptr, &current) != 0 || current.sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = remove_temporaries_and_end;
    sigemptyset(&action.sa_mask);
    ::sigaction(signal_number, &action, nullptr);
  }
}

}  // namespace morvane
