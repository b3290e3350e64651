/// @file
/// The words of tooltips.
#include "editor/tips.h"

#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"
#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "picture/utf8.h"

namespace {

/// As much of a text as is worth a line.
std::string beginning_of(const std::string& text) {
  constexpr std::size_t kMost = 48;  // bytes
  const std::string_view begin = picture::beginning(text, kMost);
  return std::string(begin) + (begin.size() < text.size() ? "..." : "");
}

std::string count_of(int number, const std::string& one, const std::string& many) {
  return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string named(const VkNode& node) {
  const std::string title = node.title();
  return node.name() + (title.empty() ? "" : "  " + beginning_of(title));
}

}  // namespace

std::string tip_of_node(const VkNode& node) {
  const NodeKind* const kind = kind_of_node(node.name());
  if (!kind) return std::string(node.name()) + "\nstands for no record";
  std::string tip = named(node) + "\n" + kind->noun + ", " + count_of(node.nParents(), "parent", "parents") +
                    ", " + count_of(node.nChildren(), "child", "children");
  const auto on = values::dialog_of_node(node.name());
  if (!on || !on->dialog->has_record(*qis, on->number)) return tip + "\nits record is not in the file";
  constexpr int kMostValues = 4;
  int values = 0;
  values::for_each_shown(*on->dialog->items(*qis, on->number),
                         [&](const std::string& path, const values::Item& item) {
                           if (values == kMostValues || path.starts_with("title.")) return;
                           const std::string value = values::shown_text(item, on->dialog->lines());
                           if (value.empty()) return;
                           ++values;
                           tip += "\n" + path + " = " + beginning_of(value);
                         });
  return tip;
}

std::string tip_of_arc(const VkNode& parent, const VkNode& child) {
  return "from " + named(parent) + "\nto " + named(child);
}
