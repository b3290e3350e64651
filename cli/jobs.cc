/// @file
/// Worker processes. The library's scenes are values, but what it prints goes to the process's standard
/// output and error: a process for each worker keeps them apart, and survives what ends another one.
#include "cli/jobs.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "cli/lines.h"
#include "cli/printable.h"
#include "cli/progress.h"
#include "cli/writeall.h"
#include "storage/descriptor.h"

namespace {

using storage::Descriptor;

/// What a worker sends before what it printed.
struct Header {
  std::uint64_t number, outcome, out, err, note;
};

struct Result {
  Done done;
  std::string out, err;
};

/// Takes what is printed to a descriptor.
class Capture {
 public:
  explicit Capture(int fd) : memory_(memfd_create("printed", MFD_CLOEXEC)) {
    if (!memory_ || dup2(memory_.get(), fd) < 0) throw std::runtime_error(std::strerror(errno));
  }
  std::string taken() {
    std::string text;
    const off_t size = lseek(memory_.get(), 0, SEEK_CUR);
    text.resize(static_cast<std::size_t>(std::max<off_t>(size, 0)));
    if (pread(memory_.get(), text.data(), text.size(), 0) != size || ftruncate(memory_.get(), 0) != 0 ||
        lseek(memory_.get(), 0, SEEK_SET) != 0)
      throw std::runtime_error(std::strerror(errno));
    return text;
  }

 private:
  Descriptor memory_;
};

/// Reads exactly so many bytes; false at the end.
bool read_bytes(int fd, void* to, std::size_t bytes) {
  for (auto* at = static_cast<char*>(to); bytes != 0;) {
    const ssize_t got = read(fd, at, bytes);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    at += got;
    bytes -= static_cast<std::size_t>(got);
  }
  return true;
}

/// What a worker does until there are no more numbers to be had.
void serve(int socket, const std::vector<std::string>& files,
           const std::function<Done(const std::string&)>& work) {
  Capture out{STDOUT_FILENO}, err{STDERR_FILENO};
  for (std::uint64_t number = 0; read_bytes(socket, &number, sizeof number);) {
    Done done{Outcome::failed, {}};
    try {
      done = work(files[number]);
    } catch (const std::exception& error) {
      std::fprintf(stderr, "quilscene: %s: %s\n", printable(files[number]).c_str(), error.what());
    }
    std::fflush(stdout);
    const std::string printed = out.taken(), complained = err.taken();
    const Header header{number, static_cast<std::uint64_t>(done.outcome), printed.size(), complained.size(),
                        done.note.size()};
    std::string sent(sizeof header, '\0');
    std::memcpy(sent.data(), &header, sizeof header);
    write_all(socket, sent + printed + complained + done.note);
  }
}

class Worker {
 public:
  Worker(const std::vector<std::string>& files, const std::function<Done(const std::string&)>& work) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
      throw std::runtime_error(std::strerror(errno));
    socket_ = Descriptor(ends[0]);
    const Descriptor other(ends[1]);
    std::fflush(stdout);
    process_ = fork();
    if (process_ < 0) throw std::runtime_error(std::strerror(errno));
    if (process_ != 0) return;
    socket_.close();
    try {
      serve(other.get(), files, work);
    } catch (...) {
      _exit(1);
    }
    _exit(0);
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker() { end(); }

  int socket() const { return socket_.get(); }
  bool is_idle() const { return !file_; }
  std::size_t file() const { return *file_; }

  void give(std::size_t file) {
    file_ = file;
    const std::uint64_t number = file;
    std::string sent(sizeof number, '\0');
    std::memcpy(sent.data(), &number, sizeof number);
    try {
      write_all(socket_.get(), sent);
    } catch (const std::runtime_error&) {
      // It has ended: who waits for its answer will see.
    }
  }
  /// What it answers; nothing when it has ended instead.
  std::optional<Result> answer() {
    Header header;
    if (!read_bytes(socket_.get(), &header, sizeof header)) return std::nullopt;
    Result result{{static_cast<Outcome>(header.outcome), std::string(header.note, '\0')},
                  std::string(header.out, '\0'),
                  std::string(header.err, '\0')};
    for (std::string* text : {&result.out, &result.err, &result.done.note})
      if (!read_bytes(socket_.get(), text->data(), text->size())) return std::nullopt;
    file_.reset();
    return result;
  }
  /// Lets it end. @returns how it did, in words
  std::string end() {
    if (process_ <= 0) return {};
    shutdown(socket_.get(), SHUT_RDWR);  // workers that were made later have the descriptor, too
    socket_.close();
    int status = 0;
    while (waitpid(std::exchange(process_, 0), &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? std::string("ended by signal ") + std::to_string(WTERMSIG(status))
                               : "ended before its time";
  }

 private:
  Descriptor socket_;
  pid_t process_ = 0;
  std::optional<std::size_t> file_;
};

/// Puts results in the order of their files.
class Printer {
 public:
  Printer(const std::vector<std::string>& files, const std::function<void(const Done&)>& took,
          Headings headings)
      : files_(files), took_(took), headings_(headings), progress_(files.size()) {}

  void add(std::size_t file, Result result) {
    progress_.step();
    waiting_.emplace(file, std::move(result));
    for (auto at = waiting_.begin(); at != waiting_.end() && at->first == next_; at = waiting_.erase(at)) {
      print(at->second);
      ++next_;
    }
    progress_.show();
  }
  std::size_t next() const { return next_; }
  Outcome worst() const { return worst_; }

 private:
  void print(const Result& result) {
    if (!result.out.empty() || !result.err.empty()) progress_.clear();
    const std::string heading = "==> " + printable(files_[next_]) + " <==\n";
    if (headings_ == Headings::yes) lines_.add_all(heading);
    lines_.add_all(result.out);
    lines_.flush();
    if (!result.err.empty()) std::fputs(heading.c_str(), stderr);
    std::fwrite(result.err.data(), 1, result.err.size(), stderr);
    worst_ = std::max(worst_, result.done.outcome);
    if (took_) took_(result.done);
  }

  const std::vector<std::string>& files_;
  const std::function<void(const Done&)>& took_;
  Headings headings_;
  Progress progress_;
  std::map<std::size_t, Result> waiting_;
  std::size_t next_ = 0;
  Outcome worst_ = Outcome::well;
  Lines lines_;
};

}  // namespace

Outcome for_each_file(const std::vector<std::string>& files, unsigned jobs,
                      const std::function<Done(const std::string&)>& work,
                      const std::function<void(const Done&)>& took, Headings headings) {
  if (jobs == 0) jobs = std::max(std::thread::hardware_concurrency(), 1U);
  if (files.size() == 1) {
    const Done done = work(files.front());
    if (took) took(done);
    return done.outcome;
  }
  constexpr std::size_t kMostWaiting = 64;  // results of files after one that takes long
  std::vector<std::unique_ptr<Worker>> workers(std::min<std::size_t>(jobs, files.size()));
  Printer printer(files, took, headings);
  std::size_t given = 0;
  while (printer.next() < files.size()) {
    std::vector<pollfd> waiting;
    std::vector<std::unique_ptr<Worker>*> of;
    for (auto& worker : workers) {
      const bool may_give = given < files.size() && given < printer.next() + workers.size() + kMostWaiting;
      if (!worker && may_give) worker = std::make_unique<Worker>(files, work);
      if (worker && worker->is_idle() && may_give) worker->give(given++);
      if (!worker || worker->is_idle()) continue;
      waiting.push_back({worker->socket(), POLLIN, 0});
      of.push_back(&worker);
    }
    if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
      throw std::runtime_error(std::strerror(errno));
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (waiting[i].revents == 0) continue;
      auto& worker = *of[i];
      const std::size_t file = worker->file();
      if (auto result = worker->answer()) {
        printer.add(file, std::move(*result));
        continue;
      }
      Result failed;
      failed.done.outcome = Outcome::failed;
      failed.err = "quilscene: " + printable(files[file]) + ": " + worker->end() + "\n";
      worker.reset();
      printer.add(file, std::move(failed));
    }
  }
  return printer.worst();
}
