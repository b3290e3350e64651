/// @file
/// Items by path and text: how a command line reads and changes them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/values/dialog.h"

namespace values {

/// What an item shows, as text: a toggle as 0 or 1, an option as its entry's label (or its index where that
/// lies beyond the menu), a label as its computed text or that of the dialog's lines, which are indented.
std::string shown_text(const Item& item, LabelLines lines);

/// Calls `visit(path, item)` for each toggle, text, option and label below `top`, in order.
template <class Visit>
void for_each_shown(const Item& top, const Visit& visit, const std::string& prefix = {}) {
  for (std::size_t i = 0; i < top.size(); ++i) {
    const Item& item = top.item(i);
    const std::string path = prefix + item.name();
    switch (item.kind()) {
      case ItemKind::list:
      case ItemKind::group:
      case ItemKind::radio:
        for_each_shown(item, visit, path + ".");
        break;
      case ItemKind::separator:
        break;
      default:
        visit(path, item);
    }
  }
}

/// An item, by its path, and what it is to show.
struct TextEdit {
  std::string_view path;
  std::string text;
};

/// Changes items to what their texts say, as a user of the dialog would: a toggle to 0 or 1 (of a radio, the
/// one that is turned on last stays on), an option to the entry with this label or else this index.
/// @returns nothing when it was done; otherwise what is wrong first, in words that name the item or the
///          value: the edits before it are done. Only when all are done is a radio judged, of which one
///          toggle must be on if one was: otherwise, the one that was turned off last is on again.
std::optional<std::string> edit_texts(Item& top, std::span<const TextEdit> edits);
/// The same for one item.
std::optional<std::string> edit_text(Item& top, std::string_view path, const std::string& text);

}  // namespace values
