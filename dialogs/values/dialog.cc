/// @file
/// What all property dialogs do alike.
#include "dialogs/values/dialog.h"

#include <cstdio>

#include "dialogs/values/numbers.h"
#include "editor/model/nodenames.h"
#include "editor/model/recordnames.h"
#include "qilib/change.h"

namespace values {
namespace {

/// A toggle whose label the lines give to its label widget has that label in front of its button.
void set_label_formats(Item& item, LabelLines lines) {
  if (item.kind() == ItemKind::toggle)
    item.look().force_label_format = label_line(lines, item.name(), "Label") != nullptr;
  for (std::size_t i = 0; i < item.size(); ++i) set_label_formats(item.item(i), lines);
}

}  // namespace

const char* label_line(LabelLines lines, std::string_view item, std::string_view widget) {
  const std::string start = "*" + std::string(item) + std::string(widget) + ".labelString:";
  for (const char* line : lines)
    if (std::string_view(line).starts_with(start)) return line + start.size();
  return nullptr;
}

bool Dialog::has_record(Qis& scene, Word number) const { return kind_.name_index(scene, number) != nullptr; }

bool Dialog::require_record(Qis& scene, Word number) const {
  if (has_record(scene, number)) return true;
  std::fprintf(stderr, "%s: there is no such record\n", node_name(kind_, number).c_str());
  return false;
}

std::uint64_t Dialog::fingerprint(Qis& scene, Word number) const {
  const Word* const name = kind_.name_index(scene, number);
  if (!name) return 0;
  constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15;
  return qi::fingerprint(scene, record_tag(), number) ^ kOdd * qi::fingerprint(scene, qi::kNameTag, *name);
}

std::unique_ptr<Item> Dialog::items(Qis& scene, Word number) const {
  if (!require_record(scene, number)) return nullptr;
  auto top = make_items(scene, number);
  set_label_formats(*top, lines());
  return top;
}

std::unique_ptr<Item> Dialog::open(Qis& scene, Word number) const {
  auto top = items(scene, number);
  if (!top) return top;
  for (std::size_t i = 0; i < top->size(); ++i)
    if (top->item(i).kind() == ItemKind::list) std::printf("%s\n", top->item(i).name().c_str());
  if (facts_.traces_node_index && *kind_.name_index(scene, number) != kUnset)
    std::printf("node_index = %u\n", number);
  return top;
}

void Dialog::trace_item(const Item& item) {
  std::printf("prefg->size() = %zu\nitem->name() = %s\n", item.size(), item.name().c_str());
}

bool Dialog::can_take_name(Qis& scene, const Item& top, Word number) const {
  const Item* const name = top.find("title.nodeName");
  const Word index = *kind_.name_index(scene, number);
  const bool renames = name && name->changed() && first_line(name->text()) != get_name_string(scene, index);
  return !renames || require_nameable(scene, node_name(kind_, number), index);
}

int Dialog::write_back(Qis& scene, Item& top, Word number) const {
  if (!top.changed()) return 1;
  std::printf("%s is changed.\n", kind_.word);
  if (!require_record(scene, number) || !can_take_name(scene, top, number)) return 0;
  if (facts_.traces_top) trace_item(top);
  store_items(scene, top, number);
  return 1;
}

}  // namespace values
