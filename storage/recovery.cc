/// @file
/// The folder of recovery copies.
#include "storage/recovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "storage/userfolders.h"

namespace fs = std::filesystem;

namespace {

using storage::Descriptor;

constexpr std::string_view kCopy = ".copy", kInfo = ".info", kTemporary = ".tmp";
constexpr std::string_view kProcess = "process ", kOrigin = "origin ";
constexpr int kMostNumber = 999'999'999;

std::string name_of(int number, std::string_view what) { return std::to_string(number) + std::string(what); }

/// The number that a file of the store belongs to; 0: it is no file of the store.
int number_of(std::string_view name, std::string_view what) {
  if (!name.ends_with(what)) return 0;
  name.remove_suffix(what.size());
  int number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  const bool whole = error == std::errc{} && end == name.data() + name.size();
  return whole && number <= kMostNumber && std::to_string(number) == name ? std::max(number, 0) : 0;
}

Descriptor open_info(const fs::path& folder, int number) {
  const fs::path path = folder / name_of(number, kInfo);
  return Descriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

/// Whether the session of this description lives. Sessions lock for themselves, who asks doesn't.
bool is_locked(const Descriptor& info) {
  return info && flock(info.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

void read_info(const Descriptor& info, RecoveryCopy& copy) {
  constexpr std::size_t kEnough = 64 * 1024;  // a path is far shorter
  std::string text(kEnough, 0);
  const ssize_t size = info ? pread(info.get(), text.data(), text.size(), 0) : 0;
  text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  const std::size_t line = text.find('\n');
  if (line == text.npos || !text.starts_with(kProcess) ||
      text.compare(line + 1, kOrigin.size(), kOrigin) != 0)
    return;
  std::from_chars(text.data() + kProcess.size(), text.data() + line, copy.process);
  copy.origin = text.substr(line + 1 + kOrigin.size());
}

/// The names in a folder; none when there is no folder.
std::vector<std::string> names_in(const fs::path& folder, std::error_code& error) {
  std::vector<std::string> names;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error))
    names.push_back(entry->path().filename());
  if (error == std::errc::no_such_file_or_directory) error.clear();
  return names;
}

/// What is known of a copy; nothing when there is none.
std::optional<RecoveryCopy> copy_of(const fs::path& folder, int number) {
  RecoveryCopy copy;
  copy.number = number;
  copy.path = folder / name_of(number, kCopy);
  struct stat status {};
  if (lstat(copy.path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  copy.time += std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
  copy.size = static_cast<std::uint64_t>(status.st_size);
  const Descriptor info = open_info(folder, number);
  copy.in_use = is_locked(info);
  read_info(info, copy);
  return copy;
}

/// The number to which a file belongs that only a living session needs: an info without a copy, or a
/// copy's temporary file. 0: it is something else.
int number_of_unfinished(const fs::path& folder, const std::string& name) {
  std::error_code gone;
  if (!fs::is_regular_file(fs::symlink_status(folder / name, gone))) return 0;
  if (const int number = number_of(name, kInfo)) return copy_of(folder, number) ? 0 : number;
  const std::size_t process = name.find('.') + 1;
  return number_of(name.substr(process), kTemporary) ? number_of(name.substr(0, process), ".") : 0;
}

}  // namespace

std::string RecoveryCopy::local_time() const {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm local{};
  char text[32] = "";
  if (localtime_r(&seconds, &local)) std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  return text;
}

RecoveryStore::RecoveryStore() {
  if (const fs::path state = storage::state_folder(); !state.empty()) folder_ = state / "recovery";
}

std::vector<RecoveryCopy> RecoveryStore::list(std::error_code& error) const {
  std::vector<RecoveryCopy> copies;
  for (const std::string& name : names_in(folder_, error))
    if (const int number = number_of(name, kCopy))
      if (const auto copy = copy_of(folder_, number)) copies.push_back(*copy);
  std::ranges::sort(copies, std::greater{},
                    [](const RecoveryCopy& c) { return std::pair(c.time, c.number); });
  return copies;
}

std::optional<RecoveryCopy> RecoveryStore::find(int number) const { return copy_of(folder_, number); }

std::error_code RecoveryStore::remove(int number) const {
  const auto copy = find(number);
  if (!copy) return {ENOENT, std::generic_category()};
  if (copy->in_use) return {EBUSY, std::generic_category()};
  std::error_code error;
  fs::remove(copy->path, error);
  if (!error) fs::remove(folder_ / name_of(number, kInfo), error);
  return error;
}

void RecoveryStore::trim() const {
  std::error_code ignored;
  const auto copies = list(ignored);
  std::size_t count = copies.size();
  std::uint64_t bytes = 0;
  for (const RecoveryCopy& copy : copies) bytes += copy.size;
  for (auto oldest = copies.rbegin(); oldest != copies.rend(); ++oldest) {
    if (count <= limits_.copies && bytes <= limits_.bytes) break;
    if (oldest->in_use || remove(oldest->number)) continue;
    --count;
    bytes -= oldest->size;
  }
  for (const std::string& name : names_in(folder_, ignored))
    if (const int number = number_of_unfinished(folder_, name))
      if (!is_locked(open_info(folder_, number))) fs::remove(folder_ / name, ignored);
}

RecoverySession::RecoverySession(const RecoveryStore& store, const std::string& origin) : store_(store) {
  int error = open_folder();
  if (error == 0) error = take_number(origin);
  if (error != 0) error_ = {error, WriteStep::copy, store_.folder().string()};
}

RecoverySession::~RecoverySession() {
  if (number_ != 0 && faccessat(folder_.get(), copy_name().c_str(), F_OK, 0) != 0)
    unlinkat(folder_.get(), name_of(number_, kInfo).c_str(), 0);
}

int RecoverySession::open_folder() {
  if (store_.folder().empty()) return ENOENT;
  if (const int error = storage::make_folder(store_.folder())) return error;
  folder_ = Descriptor(open(store_.folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat status {};
  if (!folder_ || fstat(folder_.get(), &status) != 0) return errno;
  if (status.st_uid != geteuid()) return EPERM;  // its owner would see what the user sees
  const bool is_private = (status.st_mode & 077) == 0;
  return is_private || fchmod(folder_.get(), 0700) == 0 ? 0 : errno;
}

int RecoverySession::take_number(const std::string& origin) {
  std::error_code error;
  std::set<int> taken{0};
  for (const std::string& name : names_in(store_.folder(), error))
    for (const std::string_view what : {kCopy, kInfo}) taken.insert(number_of(name, what));
  if (error) return error.value();
  int number = *taken.rbegin() < kMostNumber ? *taken.rbegin() : 0;
  do {
    while (taken.contains(number)) ++number;
    if (take(number)) return describe(number, origin);
    taken.insert(number);  // by somebody else in the meantime
  } while (errno == EEXIST);
  return errno;
}

/// @returns false, with EEXIST when another number must be tried.
bool RecoverySession::take(int number) {
  const std::string name = name_of(number, kInfo);
  info_ = Descriptor(openat(folder_.get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!info_) return false;
  // Without locks there is nothing to hold; else somebody who tidies up may have been faster.
  struct stat status {};
  const bool held = flock(info_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  if (held && fstat(info_.get(), &status) == 0 && status.st_nlink != 0) return true;
  unlinkat(folder_.get(), name.c_str(), 0);
  errno = EEXIST;
  return false;
}

int RecoverySession::describe(int number, const std::string& origin) {
  number_ = number;
  std::ostringstream text;
  text << kProcess << getpid() << '\n' << kOrigin << origin;
  return storage::write_all(info_.get(), text.str().data(), text.str().size());
}

std::string RecoverySession::copy_name() const { return name_of(number_, kCopy); }

fs::path RecoverySession::path() const { return store_.folder() / copy_name(); }

void RecoverySession::remove() { unlinkat(folder_.get(), copy_name().c_str(), 0); }

RecoveryWriter::RecoveryWriter(RecoverySession& session) : session_(session), error_(session.error()) {
  if (error_) return;
  temporary_ = std::to_string(session.number()) + '.' + std::to_string(getpid()) + std::string(kTemporary);
  file_ = Descriptor(openat(session.folder_.get(), temporary_.c_str(),
                            O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (file_) stream_.emplace(fd());
  if (!stream()) fail(errno);
}

RecoveryWriter::~RecoveryWriter() {
  if (!temporary_.empty()) unlinkat(session_.folder_.get(), temporary_.c_str(), 0);
}

bool RecoveryWriter::commit() {
  const int folder = session_.folder_.get();
  if (error_ || temporary_.empty()) return false;
  if (const int error = stream_->flush()) {
    fail(error);
  } else if (fsync(session_.info_.get()) != 0 || fsync(fd()) != 0 ||
             renameat(folder, temporary_.c_str(), folder, session_.copy_name().c_str()) != 0) {
    fail(errno);
  } else {
    temporary_.clear();
    if (fsync(folder) != 0) fail(errno);
  }
  session_.store_.trim();
  return !error_;
}

WriteError RecoveryWriter::error() const {
  return !error_ && stream_ && stream_->error() != 0 ? at(stream_->error()) : error_;
}
