/// @file
/// Reading what the .json beside a scene file says: here and not in the header, for a JSON library takes long
/// to compile.
#include "tests/support/shared_scenes.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/support/places.h"

SharedScene shared_scene(const std::string& name) {
  const std::string base = support::data_file(name).string();
  const auto json = nlohmann::json::parse(std::ifstream(base + ".json"));
  return {name,
          base + ".quil",
          json.at("version"),
          json.at("bytes"),
          json.at("counts"),
          json.at("names"),
          json.at("nodes"),
          json.at("arcs")};
}
