// SPDX-License-Identifier: MIT
#include "postgres_cluster.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace morvane::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* kServerUser = "postgres";  // made by Debian's postgresql package
constexpr const char* kRole = "morvane";         // the superuser initdb makes

// The bin folder of the newest server under /usr/lib/postgresql/<version>/bin.
std::string find_server_binaries() {
  std::string best;
  int best_version = -1;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", error)) {
    const std::string version = entry.path().filename().string();
    const fs::path bin = entry.path() / "bin";
    if (version.empty() || !std::all_of(version.begin(), version.end(), ::isdigit)) continue;
    if (!fs::exists(bin / "initdb") || !fs::exists(bin / "pg_ctl") || !fs::exists(bin / "postgres")) continue;
    if (std::stoi(version) > best_version) {
      best_version = std::stoi(version);
      best = bin.string();
    }
  }
  if (best.empty()) {
    throw std::runtime_error(
        "the PostgreSQL server (initdb, pg_ctl, postgres under /usr/lib/postgresql/<version>/bin) is not "
        "installed: run make deps");
  }
  return best;
}

bool running_as_root() { return ::geteuid() == 0; }

// The command prefix that runs a server program as the unprivileged server user when we are root.
std::vector<std::string> as_server_user(std::vector<std::string> command) {
  if (!running_as_root()) return command;
  std::vector<std::string> full = {"runuser", "-u", kServerUser, "--"};
  full.insert(full.end(), command.begin(), command.end());
  return full;
}

std::string shell_quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string read_text(const fs::path& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// Runs a program in `folder` with its output appended to `log`; returns its exit status (-1 when
// it did not exit normally).
int run(const std::vector<std::string>& command, const std::string& folder, const std::string& log) {
  std::vector<char*> argv;
  for (const auto& argument : command) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const int out = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  const pid_t child = ::fork();
  if (child == 0) {
    // Only async-signal-safe calls between fork and exec.
    if (::chdir(folder.c_str()) != 0) ::_exit(126);
    if (out >= 0) {
      ::dup2(out, STDOUT_FILENO);
      ::dup2(out, STDERR_FILENO);
    }
    ::execvp(argv[0], argv.data());
    ::_exit(127);
  }
  if (out >= 0) ::close(out);
  if (child < 0) return -1;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A fresh folder the server user owns, short enough for a Unix socket path inside it.
std::string make_cluster_folder() {
  // The server user must reach it (TMPDIR may be below root's home), and a socket path is short.
  std::string base = fs::temp_directory_path().string();
  if (running_as_root() || base.size() > 60) base = "/tmp";
  std::string pattern = base + "/morvane-pg-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot create a folder for the PostgreSQL cluster");
  if (running_as_root()) {
    const passwd* user = ::getpwnam(kServerUser);
    if (user == nullptr || ::chown(pattern.c_str(), user->pw_uid, user->pw_gid) != 0) {
      fs::remove_all(pattern);
      throw std::runtime_error(std::string("the tests run as root and need the system user \"") + kServerUser +
                               "\" (Debian's postgresql package makes it) to run the server: run make deps");
    }
  }
  return pattern;
}

}  // namespace

PostgresCluster::PostgresCluster() : bin_(find_server_binaries()), folder_(make_cluster_folder()) {
  const std::string data = folder_ + "/data";
  const std::string log = folder_ + "/setup.log";
  const auto fail = [&](const std::string& what) {
    run(as_server_user({bin_ + "/pg_ctl", "-D", data, "-m", "immediate", "stop"}), folder_, "/dev/null");
    const std::string details = read_text(log) + read_text(folder_ + "/server.log");
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    throw std::runtime_error("the test PostgreSQL cluster " + what + ":\n" + details);
  };
  if (run(as_server_user({bin_ + "/initdb", "-D", data, "-U", kRole, "-A", "trust", "--no-sync", "-E", "UTF8",
                          "--locale=C"}),
          folder_, log) != 0) {
    fail("could not be made (initdb failed)");
  }
  {
    // Only a socket in our own folder: no TCP address at all. Durability is not wanted here.
    std::ofstream conf(data + "/postgresql.conf", std::ios::app);
    conf << "listen_addresses = ''\n"
         << "unix_socket_directories = '" << folder_ << "'\n"
         << "fsync = off\nsynchronous_commit = off\nfull_page_writes = off\n";
  }
  if (run(as_server_user({bin_ + "/pg_ctl", "-D", data, "-l", folder_ + "/server.log", "-w", "-t", "60", "start"}),
          folder_, log) != 0) {
    fail("did not start");
  }
  start_watchdog();
}

PostgresCluster::~PostgresCluster() { stop(); }

// A detached shell that waits for the end of a pipe whose write end only this process holds.
// The kernel closes it when the process ends in any way (even SIGKILL by a test timeout), so the
// server never outlives the tests; stop() closes it on purpose and waits for the shell.
void PostgresCluster::start_watchdog() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot make the cluster watchdog pipe");
  std::string stop_command;
  for (const auto& part : as_server_user({bin_ + "/pg_ctl", "-D", folder_ + "/data", "-m", "immediate", "stop"})) {
    stop_command += shell_quote(part) + " ";
  }
  const std::string script = "read _; " + stop_command + "; rm -rf -- " + shell_quote(folder_);
  const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  const pid_t child = ::fork();
  if (child == 0) {
    ::setsid();  // not in the terminal's process group: Ctrl-C ends the tests, not the watchdog
    ::dup2(ends[0], STDIN_FILENO);
    ::dup2(null, STDOUT_FILENO);
    ::dup2(null, STDERR_FILENO);
    ::execl("/bin/sh", "sh", "-c", script.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(null);
  ::close(ends[0]);
  if (child < 0) {
    ::close(ends[1]);
    throw std::runtime_error("cannot start the cluster watchdog");
  }
  watchdog_pipe_ = ends[1];
  watchdog_ = child;
}

void PostgresCluster::stop() {
  if (watchdog_pipe_ < 0) return;
  ::close(watchdog_pipe_);
  watchdog_pipe_ = -1;
  int status = 0;
  while (::waitpid(watchdog_, &status, 0) < 0 && errno == EINTR) {
  }
}

std::string PostgresCluster::url(const std::string& database) const {
  return "postgresql:///" + database + "?host=" + folder_ + "&user=" + kRole;
}

std::string PostgresCluster::create_database() {
  const std::string name = "archive_" + std::to_string(++databases_);
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(url("postgres").c_str()), &PQfinish);
  if (PQstatus(connection.get()) != CONNECTION_OK) {
    throw std::runtime_error("cannot reach the test cluster: " + std::string(PQerrorMessage(connection.get())));
  }
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(
      PQexec(connection.get(), ("CREATE DATABASE " + name).c_str()), &PQclear);
  if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) {
    throw std::runtime_error("cannot create a test database: " + std::string(PQerrorMessage(connection.get())));
  }
  return url(name);
}

namespace {

struct SharedCluster {
  std::mutex mutex;
  std::unique_ptr<PostgresCluster> cluster;
  std::string failure;
};

SharedCluster& shared_cluster() {
  static SharedCluster shared;  // its destructor stops the server at exit
  return shared;
}

// Stops the shared cluster after the last test, before static destruction.
class ClusterEnvironment : public ::testing::Environment {
 public:
  void TearDown() override {
    const std::lock_guard lock(shared_cluster().mutex);
    shared_cluster().cluster.reset();
  }
};

[[maybe_unused]] const auto* const cluster_environment =
    ::testing::AddGlobalTestEnvironment(new ClusterEnvironment);

}  // namespace

PostgresCluster& test_postgres_cluster() {
  SharedCluster& shared = shared_cluster();
  const std::lock_guard lock(shared.mutex);
  if (!shared.cluster) {
    if (!shared.failure.empty()) throw std::runtime_error(shared.failure);
    try {
      shared.cluster = std::make_unique<PostgresCluster>();
    } catch (const std::exception& error) {
      shared.failure = error.what();
      throw;
    }
  }
  return *shared.cluster;
}

}  // namespace morvane::testing
