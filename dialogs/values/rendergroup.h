/// @file
/// An object's render settings as items.
#pragma once

#include <string>

#include "items/item.h"
#include "qilib/extstructs.h"

namespace values {

/// Under fog, only the fog modes make sense for the first cycle; the others are labelled "void".
enum class RenderUse { plain, fog };

/// The four words of an object's render settings: priority class and switch, a mode for each cycle, the cycle
/// type. While the switch is on "QUIL ->", the modes are chosen by the loader and are not activated.
struct objRenderGroup : items::Item {
  objRenderGroup(std::string name, const qi::RenderWords& words, RenderUse use);

  /// Writes the items into the words, prints the priority word, and activates the modes as it says. A mode
  /// labelled "void" is not written.
  static void store(items::Item& group, qi::RenderWords& words);
};

}  // namespace values
