/// @file
/// Starting, watching and ending child processes.
#include "tests/support/process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace support {

Descriptor::~Descriptor() {
  if (fd_ >= 0) close(fd_);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(fd_, other.fd_);
  return *this;
}

namespace {

std::vector<char*> pointers(std::vector<std::string>& strings) {
  std::vector<char*> result;
  for (std::string& string : strings) result.push_back(string.data());
  result.push_back(nullptr);
  return result;
}

std::vector<std::string> environmentWith(std::map<std::string, std::string> changes) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view line = *entry;
    if (!changes.contains(std::string(line.substr(0, line.find('='))))) result.emplace_back(line);
  }
  for (const auto& [name, value] : changes) {
    if (!value.empty()) result.push_back(name + "=" + value);
  }
  return result;
}

/// Runs between vfork and exec, in the memory of the test. @returns only when something failed.
void becomeProgram(const Process::Start& start, pid_t parent, char** arguments, char** environment) {
  setpgid(0, 0);
  for (const int number : {SIGHUP, SIGINT, SIGQUIT})
    ::signal(number, SIG_DFL);  // tests that nohup or a script's & started ignore them
  prctl(PR_SET_PDEATHSIG, start.end_signal);
  if (getppid() != parent) _exit(1);  // the test died before the line above
  if (!start.directory.empty() && chdir(start.directory.c_str()) != 0) return;
  const auto redirect = [](const std::filesystem::path& file, int fd) {
    const int target = open(file.empty() ? "/dev/null" : file.c_str(),
                            O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644);
    return target >= 0 && dup2(target, fd) >= 0;
  };
  if (!redirect(start.output, STDOUT_FILENO) || !redirect(start.errors, STDERR_FILENO)) return;
  if (start.kept_fd >= 0) fcntl(start.kept_fd, F_SETFD, 0);
  execvpe(start.command.front().c_str(), arguments, environment);
}

}  // namespace

Process::Process(const Start& start) : end_signal_(start.end_signal) {
  std::vector<std::string> command = start.command, environment = environmentWith(start.environment);
  if (!start.name.empty()) command.front() = start.name;
  std::vector<char*> arguments = pointers(command), variables = pointers(environment);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);

  const pid_t parent = getpid();
  // Not fork: a copy of the address space that sanitizers need costs more than many a program that is
  // started.
  const pid_t child = vfork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "vfork");
  if (child == 0) {
    becomeProgram(start, parent, arguments.data(), variables.data());
    const int error = errno;
    if (write(writing.get(), &error, sizeof error) != sizeof error) _exit(126);
    _exit(127);
  }
  pid_ = child;
  writing = Descriptor();
  int error = 0;  // the pipe closes by itself when the program runs
  if (read(reading.get(), &error, sizeof error) == sizeof error) {
    waitpid(pid_, nullptr, 0);
    throw std::system_error(error, std::generic_category(), start.command.front());
  }
}

Process::~Process() { end(); }

bool Process::running() {
  if (status_ || pid_ < 0) return false;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) != pid_) return true;
  status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return false;
}

std::optional<int> Process::waitForExit(std::chrono::milliseconds limit) {
  waitFor([this] { return !running(); }, limit);
  return status_;
}

void Process::signal(int number) {
  if (running()) kill(pid_, number);
}

void Process::end() {
  if (pid_ < 0) return;
  if (running()) {
    kill(pid_, end_signal_);
    if (!waitForExit(std::chrono::seconds(5))) {
      kill(pid_, SIGKILL);
      waitForExit();
    }
  }
  kill(-pid_, SIGKILL);  // what it left behind in its group
  pid_ = -1;
}

}  // namespace support
