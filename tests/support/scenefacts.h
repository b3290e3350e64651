/// @file
/// What the .json beside each scene in tests/data says is in it.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace support {

struct SceneFacts {
  unsigned version = 0;                ///< 0x100 or 0x200
  unsigned long bytes = 0;             ///< of the whole file
  std::map<std::string, long> counts;  ///< records by list, such as "Obj"; lists without records are missing
  std::vector<std::string> names;      ///< of the NameList, blanks as underscores
  std::vector<std::string> nodes;      ///< in the order in which they enter the graph
  std::vector<std::pair<std::string, std::string>> arcs;  ///< parent, child
};

/// The scenes in tests/data.
inline constexpr const char* kSceneNames[] = {"tiny_v1",  "tiny_v2",         "robot",
                                              "skeleton", "absent_lists_v1", "absent_lists_v2"};

/// The scene file of that name, and what is in it. Throws std::runtime_error when the facts can't be read.
std::filesystem::path scene_path(const std::string& name);
SceneFacts scene_facts(const std::string& name);

}  // namespace support
