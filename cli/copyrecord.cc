/// @file
/// Records that come and go by a script.
#include "cli/copyrecord.h"

#include <cstdio>
#include <span>

#include "qilib/references.h"
#include "qilib/renumber.h"

std::string why_not_copied(const Qis& scene, const std::string& node) {
  const auto record = qi::find_record(node);
  if (!record || record->number >= qi::record_count(scene, record->tag)) return "there is no " + node;
  if (qi::is_renumberable(record->tag)) return {};
  return node + " is none of the materials, textures, images, palettes and animations";
}

std::string why_not_deleted(const Qis& scene, const std::string& node) {
  std::string reason = why_not_copied(scene, node);
  if (!reason.empty()) return reason;
  const auto referrer = qi::referrer_of(scene, *qi::find_record(node));
  return referrer ? to_string(*referrer) + " refers to " + node : "";
}

int copy_node(Qis& scene, const std::string& node) {
  if (!why_not_copied(scene, node).empty()) return 0;
  const qi::RecordId record = *qi::find_record(node);
  const auto copied = qi::copy_record(scene, record);
  if (!copied) return 0;
  std::printf("%s\n", to_string(qi::RecordId{record.tag, *copied}).c_str());
  return 1;
}

int delete_node(Qis& scene, const std::string& node) {
  if (!why_not_deleted(scene, node).empty()) return 0;
  const qi::RecordId record = *qi::find_record(node);
  qi::remove_records(scene, {&record, 1});
  return 1;
}
