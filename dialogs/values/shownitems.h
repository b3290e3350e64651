/// @file
/// What nodes' dialogs show, as texts, and where two scenes differ in it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qilib/qis.h"

namespace values {

struct ShownItem {
  std::string path, text;
};

/// The items of the dialog of a node, in their order; nothing when there is no such node. The scene stays as
/// it is.
std::optional<std::vector<ShownItem>> shown_items(Qis& scene, std::string_view node);

/// An item that shows something else, or is not there, in one of two scenes.
struct ItemDifference {
  std::string path;
  std::optional<std::string> before, after;
};

/// Those of a node that both scenes have.
std::vector<ItemDifference> item_differences(Qis& before, Qis& after, std::string_view node);

}  // namespace values
