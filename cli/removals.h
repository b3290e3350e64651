/// @file
/// What `prune` and `dedup` have in common: records go, and a list of them is printed.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/scenefile.h"
#include "qilib/renumber.h"

struct RemovalRequest {
  FileSet files;
  Target target;
  bool dry_run = false;
};

/// FILE..., where to write, and --dry-run.
void take_removals(CLI::App& line, RemovalRequest& request);

/// A record that goes, and what is said of it.
struct Removal {
  qi::RecordId record;
  std::string text;
};

/// Takes out of each file the records that `find(scene)` gives, which nothing refers to by then, and prints
/// them, how many they are, and the bytes that they took.
Outcome remove_from_files(const RemovalRequest& request,
                          const std::function<std::vector<Removal>(Qis& scene)>& find);
