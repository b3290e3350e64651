/// @file
/// Work on many files, several at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "cli/commands.h"

/// What came of one file.
struct Done {
  Outcome outcome = Outcome::well;
  std::string note;  ///< for who asked
};

/// Whether what is printed of each of many files begins with a line that names it.
enum class Headings : bool { no, yes };

/// Does the work on every file, in so many processes at a time, and prints what each printed in the order of
/// the files. A process that a file ends is replaced, and the file has failed.
/// @param jobs  0: one for each core
/// @param work  is called with a file, in any of the processes
/// @param took  is called, in this one, with the note on each
/// @returns the worst outcome.
Outcome for_each_file(const std::vector<std::string>& files, unsigned jobs,
                      const std::function<Done(const std::string&)>& work,
                      const std::function<void(const Done&)>& took = {}, Headings headings = Headings::no);
