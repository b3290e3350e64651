/// @file
/// Recovery copies of the scene that is being worked on.
#include "editor/unsavedwork.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <new>
#include <system_error>
#include <utility>

namespace {

/// How often to look whether a copy is complete.
constexpr std::chrono::milliseconds kGlance{100};

}  // namespace

UnsavedWork::UnsavedWork(const History& history, Prompts& prompts, Write write, Clock::duration pause)
    : history_(history),
      prompts_(prompts),
      write_(std::move(write)),
      pause_(pause),
      in_file_(history.state()) {}

void UnsavedWork::begin(const std::string& file, std::optional<History::State> in_file) {
  waitForHelper();
  session_.reset();
  replaced_ = 0;
  in_copy_.reset();
  due_.reset();
  file_ = file;
  in_file_ = in_file;
}

void UnsavedWork::opened(const std::string& file) { begin(file, history_.state()); }

void UnsavedWork::recovered(const RecoveryCopy& copy) {
  begin(copy.origin, std::nullopt);
  replaced_ = copy.number;
}

void UnsavedWork::saved(const std::string& file) {
  waitForHelper();
  file_ = file;
  in_file_ = history_.state();
  if (hasCopy()) startRemoval();
}

void UnsavedWork::notSaved(const std::string& file) {
  waitForHelper();
  if (file == file_) {
    in_file_.reset();
    return;
  }
  const int number = in_copy_ ? session_->number() : replaced_;
  begin(file, std::nullopt);
  replaced_ = number;
}

std::optional<UnsavedWork::Clock::duration> UnsavedWork::tend(Clock::time_point now) {
  if (helper_ != 0) reapHelper(WNOHANG);
  if (helper_ == 0 && !exists() && hasCopy()) startRemoval();
  if (helper_ == 0 && needsCopy() && due_ && *due_ <= now) startCopy();
  if (!needsCopy() || being_written_ == history_.state())
    due_.reset();
  else if (!due_)
    due_ = now + pause_;
  if (error_) prompts_.tell(std::exchange(error_, {}).text());
  if (helper_ != 0) return kGlance;
  return due_ ? std::optional(*due_ - now) : std::nullopt;
}

void UnsavedWork::keep() {
  waitForHelper();
  if (!exists() && hasCopy()) startRemoval();
  if (needsCopy()) startCopy();
  waitForHelper();
}

std::vector<RecoveryCopy> UnsavedWork::copies() const {
  std::error_code none;
  auto copies = store_.list(none);
  std::erase_if(copies, [&](const RecoveryCopy& copy) { return copy.in_use || copy.number == replaced_; });
  return copies;
}

void UnsavedWork::startCopy() {
  due_.reset();
  being_written_ = history_.state();
  if (!session_ || session_->error()) session_.emplace(store_, file_);
  if (session_->error())
    copyWritten(session_->error().number);
  else
    start(&UnsavedWork::writeCopy, &UnsavedWork::copyWritten);
}

void UnsavedWork::startRemoval() { start(&UnsavedWork::removeCopies, &UnsavedWork::copiesRemoved); }

/// @param work  returns 0, or the errno of what failed
void UnsavedWork::start(int (UnsavedWork::*work)(), void (UnsavedWork::*then)(int)) {
  then_ = then;
  helper_ = fork();
  if (helper_ == 0) {
    // Whoever ends the program, with its group or with all others, doesn't mean the copy.
    setpgid(0, 0);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) std::signal(number, SIG_IGN);
    _exit((this->*work)());
  }
  if (helper_ < 0) {  // there is no room for another process: the user has to wait
    helper_ = 0;
    (this->*then)((this->*work)());
  }
}

int UnsavedWork::writeCopy() {
  try {
    RecoveryWriter copy(*session_);
    if (!copy.stream() || !write_(copy.stream()) || !copy.commit())
      return copy.error() ? copy.error().number : EIO;
    if (replaced_ != 0) store_.remove(replaced_);
    return 0;
  } catch (const std::bad_alloc&) {
    return ENOMEM;
  }
}

void UnsavedWork::copyWritten(int error) {
  const auto written = std::exchange(being_written_, std::nullopt);
  if (error == 0) {
    in_copy_ = written;
    replaced_ = 0;
    return;
  }
  error_ = {error, WriteStep::copy, store_.folder()};
  std::fprintf(stderr, "%s\n", error_.text().c_str());
}

int UnsavedWork::removeCopies() {
  if (in_copy_) session_->remove();
  if (replaced_ != 0) store_.remove(replaced_);
  return 0;
}

void UnsavedWork::copiesRemoved(int) {
  session_.reset();
  in_copy_.reset();
  replaced_ = 0;
}

void UnsavedWork::waitForHelper() {
  while (helper_ != 0) reapHelper(0);
}

void UnsavedWork::reapHelper(int options) {
  int status = 0;
  const pid_t ended = waitpid(helper_, &status, options);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return;
  helper_ = 0;
  (this->*then_)(ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : EIO);
}
