// SPDX-License-Identifier: MIT
// Runs a piece of a test in a child process: for what must not touch the test process itself
// (a file-size limit, a signal that ends the process, a kill in the middle of a write).
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>

#include "core/error.h"

namespace morvane::testing {

// How the child ended and the message of the run-time error it ended with, if any.
struct ChildEnd {
  int exit_status = -1;  // -1 when a signal ended it
  int signal = 0;
  std::string error;  // RuntimeError::message() of a child that ended with one (exit status 1)
};

// Runs work in a child process. A RuntimeError ends the child with status 1 and its message; a
// return ends it with 0.
inline ChildEnd in_child(const std::function<void()>& work) {
  int channel[2];
  if (::pipe(channel) != 0) return {};
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(channel[0]);
    int status = 0;
    try {
      work();
    } catch (const RuntimeError& error) {
      const std::string message = error.message();
      [[maybe_unused]] const ssize_t written = ::write(channel[1], message.data(), message.size());
      status = 1;
    } catch (...) {
      status = 2;
    }
    ::_exit(status);
  }
  ::close(channel[1]);
  ChildEnd end;
  char buffer[4096];
  ssize_t got = 0;
  while ((got = ::read(channel[0], buffer, sizeof buffer)) > 0) end.error.append(buffer, static_cast<size_t>(got));
  ::close(channel[0]);
  int status = 0;
  ::waitpid(pid, &status, 0);
  if (WIFEXITED(status)) end.exit_status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
  return end;
}

// In a child: files may grow to at most bytes, as on a nearly full disk (a write beyond fails
// with EFBIG rather than ending the process).
inline void limit_file_size(rlim_t bytes) {
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace morvane::testing

namespace morvane::testing {

// In a child run by the superuser: goes on as the unprivileged user "nobody", whom file
// permissions bind. False when that is not possible.
inline bool become_unprivileged() {
  if (::geteuid() != 0) return true;
  return ::setgid(65534) == 0 && ::setuid(65534) == 0;
}

}  // namespace morvane::testing
