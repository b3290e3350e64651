/// @file
/// Opening and saving a scene on behalf of a command, with messages that name the file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "qilib/qis.h"

/// Opens a scene file, or standard input ("-"), into an empty scene. On failure, the library's messages and
/// one with the file's name go to standard error.
bool open_scene(const std::string& file, Qis& scene);

/// The same, telling nobody. @returns what is wrong, in lines; empty: nothing
std::string open_quietly(const std::string& file, Qis& scene);

/// Where a command writes what it makes of its files.
struct Target {
  std::string output;     ///< -o: a file, or "-"
  bool in_place = false;  ///< -i
  std::string folder;     ///< -C
  int mode = 2;           ///< of the writer

  /// What is written for that file.
  std::string of(const std::string& file) const;
};

/// -o, -i, -C and --mode.
void take_target(CLI::App& line, Target& target);

/// Throws WrongUse when the files can't all be written there: two of them to one file, or outside the folder.
/// From here on, what is printed goes to standard error if a scene goes to standard output.
void require_target(const Target& target, const std::vector<std::string>& files);

/// Makes the folder that a file is to be written in. Where that fails, writing the file will tell.
void make_folder_of(const std::string& output);

/// How a scene was changed, and whether it is to be saved.
struct Changed {
  Outcome outcome;
  bool save;
};

/// Opens a file, has it changed, and saves it as the target says; not over a file that somebody else has
/// changed meanwhile.
Outcome rewrite(const std::string& file, const Target& target, const std::function<Changed(Qis&)>& change);
