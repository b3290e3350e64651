/// @file
/// A home directory that a test may fill and spoil.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/files.h"
#include "tools/cnvopts.h"

/// While it lives, the options file is the one in a new empty directory, whoever is logged in: the login
/// name is unknown and HOME is that directory.
class ScratchHome {
 public:
  ScratchHome() {
    if (const char* home = getenv("HOME")) home_before_ = home;
    setenv("HOME", dir().c_str(), 1);
    user_lookup.login_name = [] { return static_cast<const char*>(nullptr); };
  }
  ~ScratchHome() {
    user_lookup = lookup_before_;
    if (home_before_) {
      setenv("HOME", home_before_->c_str(), 1);
    } else {
      unsetenv("HOME");
    }
  }
  ScratchHome(const ScratchHome&) = delete;
  ScratchHome& operator=(const ScratchHome&) = delete;

  const std::filesystem::path& dir() const { return dir_.path(); }
  std::filesystem::path options_file() const { return dir() / ".quilcnvops"; }

 private:
  const UserLookup lookup_before_ = user_lookup;
  std::optional<std::string> home_before_;
  ScratchDirectory dir_;
};
