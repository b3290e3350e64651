/// @file
/// Reading what belongs to a file and giving it to another.
#include "storage/attributes.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "storage/writeerror.h"

namespace storage {
namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

/// Rights and checksums that the system ties to the very contents.
constexpr std::array<std::string_view, 3> kOfTheContents{"security.capability", "security.ima",
                                                         "security.evm"};

/// A text whose length the system tells when it is asked with no room. @returns 0, or an errno.
template <class Ask>
int ask(std::string& text, Ask ask) {
  ssize_t size = 0;
  do {
    size = ask(nullptr, 0);
    if (size <= 0) break;
    text.resize(static_cast<std::size_t>(size));
    size = ask(text.data(), text.size());
  } while (size < 0 && errno == ERANGE);  // it grew in between
  text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return size < 0 ? errno : 0;
}

/// Where the system has no such thing, or keeps it to itself, nothing is to be kept.
int unless_refused(int error) { return error == ENODATA || is_refusal(error) ? 0 : error; }

}  // namespace

int Attributes::read(int fd) {
  struct stat status {};
  if (fstat(fd, &status) != 0) return errno;
  owner_ = status.st_uid;
  group_ = status.st_gid;
  mode_ = status.st_mode & 07777;
  extended_.clear();
  access_list_.clear();
  std::string names;
  if (const int error = ask(names, [&](char* room, std::size_t size) { return flistxattr(fd, room, size); }))
    return unless_refused(error);
  for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
    Extended each{names.c_str() + at, {}};
    if (std::ranges::find(kOfTheContents, each.name) != kOfTheContents.end()) continue;
    const int error = ask(each.value, [&](char* room, std::size_t size) {
      return fgetxattr(fd, each.name.c_str(), room, size);
    });
    if (unless_refused(error) != 0) return error;
    if (error != 0) continue;
    if (each.name == kAccessList) {
      access_list_ = each.value;
    } else {
      extended_.push_back(std::move(each));
    }
  }
  return 0;
}

int Attributes::give(int fd) const {
  mode_t mode = mode_;
  if (const int error = give_owner(fd, mode)) return error;
  if (const int error = give_access_list(fd)) return error;
  for (const auto& [name, value] : extended_)
    if (fsetxattr(fd, name.c_str(), value.data(), value.size(), 0) != 0 && unless_refused(errno) != 0)
      return errno;
  return fchmod(fd, mode) == 0 ? 0 : unless_refused(errno);
}

int Attributes::give_owner(int fd, mode_t& mode) const {
  struct stat now {};
  if (fstat(fd, &now) != 0) return errno;
  if ((now.st_uid == owner_ && now.st_gid == group_) || fchown(fd, owner_, group_) == 0) return 0;
  if (!is_refusal(errno)) return errno;
  if (now.st_gid != group_ && fchown(fd, now.st_uid, group_) != 0) return errno;
  mode &= 0777u;
  return 0;
}

int Attributes::give_access_list(int fd) const {
  const bool given = access_list_.empty()
                         ? fremovexattr(fd, kAccessList) == 0
                         : fsetxattr(fd, kAccessList, access_list_.data(), access_list_.size(), 0) == 0;
  if (given) return 0;
  return access_list_.empty() ? unless_refused(errno) : errno;  // it may have inherited none to be removed
}

}  // namespace storage
