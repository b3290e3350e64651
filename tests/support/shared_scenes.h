/// @file
/// The scene files of tests/data, and the lists of what is in them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What a scene of tests/data holds, as its .json tells it.
struct SharedScene {
  std::string name;  ///< "robot"
  std::string path;  ///< of the scene file
  unsigned version = 0;
  std::size_t bytes = 0;
  std::map<std::string, std::size_t> counts;  ///< records by kind, such as "Obj"; only kinds that occur
  std::vector<std::string> names;             ///< texts of the NameList
  std::vector<std::string> nodes;             ///< of the graph, in order
  std::vector<std::pair<std::string, std::string>> arcs;
};

inline const char* const kSharedScenes[] = {"tiny_v1",  "tiny_v2",         "robot",
                                            "skeleton", "absent_lists_v1", "absent_lists_v2"};

/// Reads the .json of one scene. Throws when it can't be read.
SharedScene shared_scene(const std::string& name);
