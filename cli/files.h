/// @file
/// The files that a command line names: one after another, in folders, in lists.
#pragma once

#include <string>
#include <vector>

#include "cli/commandline.h"

/// As it stands on the command line.
struct FileSet {
  std::vector<std::string> words;  ///< files, folders and "@LIST"s
  bool folders = false;            ///< folders stand for the scenes below them
  bool zeros = false;              ///< names in lists end with a zero byte, not with a line
  unsigned jobs = 0;               ///< so many files at a time; 0: one for each core
};

/// FILE..., -r, -0 and --jobs.
void take_files(CLI::App& line, FileSet& set);
/// The same without FILE.
void take_file_options(CLI::App& line, FileSet& set);

/// All the files, in their order; those of a folder sorted by their names. Throws WrongUse when there is none
/// or "-" comes twice, and std::runtime_error when a list or folder can't be read.
std::vector<std::string> files_of(const FileSet& set);

/// What to open for a file: itself, or, for "-", what was read from standard input. Throws
/// std::runtime_error when that can't be read.
std::string path_of(const std::string& file);
