/// @file
/// Items as texts.
#include "dialogs/values/itemtext.h"

#include <algorithm>
#include <charconv>
#include <ranges>
#include <vector>

namespace values {
namespace {

std::string complaint(std::string_view problem, std::string_view culprit) {
  return std::string(problem) + ": " + std::string(culprit);
}

std::string without_blanks_around(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
  return std::string(text.substr(first, text.find_last_not_of(" \t") + 1 - first));
}

/// The index of the entry with this label or, failing that, of this number.
std::optional<int> entry_index(const std::vector<std::string>& entries, const std::string& text) {
  const auto label = std::ranges::find(entries, text);
  if (label != entries.end()) return static_cast<int>(label - entries.begin());
  std::size_t index = 0;
  const char* const end = text.data() + text.size();
  const auto number = std::from_chars(text.data(), end, index);
  if (number.ec != std::errc{} || number.ptr != end || index >= entries.size()) return std::nullopt;
  return static_cast<int>(index);
}

std::optional<std::string> edit_option(Item& item, const std::string& text) {
  if (text == item.entry()) return std::nullopt;  // also where it lies beyond the menu
  const auto index = entry_index(item.look().entries, text);
  if (!index) return complaint("no such entry of " + item.name(), text);
  item.edit({.option = *index});
  return std::nullopt;
}

std::optional<std::string> edit_toggle(Item& item, const std::string& text) {
  if (text != "0" && text != "1") return complaint(item.name() + " is 0 or 1, not", text);
  item.edit({.on = text == "1"});
  return std::nullopt;
}

bool has_one_on(const Item& radio) {
  for (std::size_t i = 0; i < radio.size(); ++i)
    if (radio.item(i).on()) return true;
  return false;
}

std::optional<std::string> edit_item(Item* item, const TextEdit& edit) {
  if (!item) return complaint("no such item", edit.path);
  switch (item->kind()) {
    case ItemKind::toggle:
      return edit_toggle(*item, edit.text);
    case ItemKind::option:
      return edit_option(*item, edit.text);
    case ItemKind::text:
      item->edit({.text = edit.text});
      return std::nullopt;
    default:
      return complaint("this item can't be changed", edit.path);
  }
}

}  // namespace

std::string shown_text(const Item& item, LabelLines lines) {
  switch (item.kind()) {
    case ItemKind::toggle:
      return item.on() ? "1" : "0";
    case ItemKind::option:
      return item.entry();
    case ItemKind::text:
      return item.text();
    default:
      if (item.label()) return *item.label();
      const char* const line = label_line(lines, item.name(), "Base");
      return line ? without_blanks_around(line) : item.name();
  }
}

std::optional<std::string> edit_texts(Item& top, std::span<const TextEdit> edits) {
  std::vector<Item*> turned_off;
  for (const TextEdit& edit : edits) {
    Item* const item = edit.path.empty() ? nullptr : top.find(edit.path);
    const bool was_on = item && item->on();
    if (auto problem = edit_item(item, edit)) return problem;
    if (was_on && !item->on() && item->in_radio()) turned_off.push_back(item);
  }
  for (Item* const item : turned_off | std::views::reverse) {
    const Item& radio = *item->holder();
    if (has_one_on(radio)) continue;
    item->edit({.on = true});
    return complaint("turn on another one of " + radio.name() + " instead of turning off", item->name());
  }
  return std::nullopt;
}

std::optional<std::string> edit_text(Item& top, std::string_view path, const std::string& text) {
  const TextEdit edit{path, text};
  return edit_texts(top, {&edit, 1});
}

}  // namespace values
