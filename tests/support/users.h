/// @file
/// Doing something as somebody else, in a process of its own.
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <vector>

/// Runs a step in a forked process and waits for it and for helpers that it started. @returns what the step
/// returned (0..127), or 128 and the number of the signal that ended it.
inline int in_child(const std::function<int()>& step) {
  int ends[2];
  if (pipe(ends) != 0) return -1;
  const pid_t child = fork();
  if (child == 0) _exit(step());
  close(ends[1]);
  int status = 0;
  const bool ended = child > 0 && waitpid(child, &status, 0) == child;
  char nothing = 0;
  if (ended && read(ends[0], &nothing, 1) != 0) return -1;  // the end of the pipe comes with the last of them
  close(ends[0]);
  if (!ended) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// A user that no system knows by name.
struct User {
  uid_t id;
  gid_t group;
  std::vector<gid_t> other_groups{};

  /// Makes this process that user's for good; only root can.
  bool become() const {
    return setgroups(other_groups.size(), other_groups.data()) == 0 && setresgid(group, group, group) == 0 &&
           setresuid(id, id, id) == 0;
  }
};

inline constexpr gid_t kArtists = 70100;
inline const User kAlice{70001, 70001, {kArtists}}, kBob{70002, 70002, {kArtists}}, kStranger{70003, 70003};

/// Runs a step as a user; -1 also when that can't be.
inline int as_user(const User& user, const std::function<int()>& step) {
  return in_child([&] { return user.become() ? step() : 255; });
}
