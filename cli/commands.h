/// @file
/// The commands of quilscene. Each writes its results to standard output and returns how it went.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "picture/paper.h"

/// What the program exits with.
enum class Outcome {
  well = 0,
  failed = 1,    ///< a file could not be read, checked or written, or an edit was refused
  wrong_use = 2  ///< arguments or a script line that make no sense
};

/// What follows the command's name on the command line.
struct Arguments {
  std::vector<std::string> files;  ///< just one, but for `check` any number and for `options` perhaps none
  std::string output;              ///< -o: the file to write
  std::optional<std::string> script;
  int mode = 2;  ///< of the writer: 1 or 2
  bool dot = false;
  bool strict = false;                    ///< `resave`: not when the save would lose something
  std::vector<std::string> nodes;         ///< `show`: at least one
  int copy = 0;                           ///< `recover`: its number; 0: list them
  const picture::Paper* paper = nullptr;  ///< `render`: null for a page as large as the picture
  bool remove = false;                    ///< `recover`: the copy is to go
};

/// Version, header, lists with their record counts and bytes, names.
Outcome info(const Arguments& arguments);

/// One line per finding in each file; fails if any finding is more than a note.
Outcome check(const Arguments& arguments);

/// The scene's nodes and arcs in their order, or as a Graphviz graph.
Outcome graph(const Arguments& arguments);

/// The items of nodes' dialogs with their values, one a line.
Outcome show(const Arguments& arguments);

/// Opens and saves.
Outcome resave(const Arguments& arguments);

/// Writes the picture of the graph; the ending of the output's name says the format.
Outcome render(const Arguments& arguments);

/// Opens, runs a script of edits, and saves if every line of it made sense.
Outcome edit(const Arguments& arguments);

/// The converters' options, by default the user's own, and the command lines' beginnings that they give.
Outcome options(const Arguments& arguments);

/// The recovery copies of unsaved work: lists them, takes one out, or forgets one.
Outcome recover(const Arguments& arguments);
