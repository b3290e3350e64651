/// @file
/// Scenes built in memory.
#include "tests/support/builtscene.h"

#include "qilib/lists.h"

namespace {

using namespace qi;

template <class R>
constexpr bool is_version2_kind =
    std::same_as<R, Envelope> || std::same_as<R, Cluster> || std::same_as<R, ChainRoot> ||
    std::same_as<R, Joint> || std::same_as<R, Effector>;
template <class R>
constexpr bool is_version1_kind = std::same_as<R, Obj> || std::same_as<R, Shape> || std::same_as<R, Part> ||
                                  std::same_as<R, Mat> || std::same_as<R, Tex> || std::same_as<R, Anim> ||
                                  std::same_as<R, Cam> || std::same_as<R, Light> || std::same_as<R, Env>;

/// Gives a record its version-2 structure, empty, and its block's size.
template <class R>
void add_structure(R& record) {
  if constexpr (requires { record.ext; }) {
    record.ext.emplace();
    record.fixed.block1_size = sizeof record.ext->head;
    record.block1.assign(record.fixed.block1_size / sizeof(Word), 0);
    if constexpr (std::same_as<R, Tex>) {  // its two arrays of one word per tile
      record.ext->palettes = record.ext->words1 = {0};
      record.fixed.block1_size += 8;
      record.block1.resize(record.block1.size() + 2);
    }
    record.fixed.size += record.fixed.block1_size;
  }
}

template <class R>
void fill(List<R>& list, Word tag, Word count, bool version2) {
  list.header = {tag, 0, sizeof(ListHeader), count, 0, 0};
  for (Word i = 0; i < count; ++i) {
    R& record = list.records.emplace_back();
    record.fixed.tag = R::kTag;
    record.fixed.index = i;
    record.fixed.size = sizeof record.fixed;
    record.fixed.name = kUnset;
    if constexpr (requires { record.fixed.fixed_size; }) record.fixed.fixed_size = sizeof record.fixed;
    if constexpr (requires { record.table; }) record.fixed.size += sizeof record.table.untiled;
    if (version2) add_structure(record);
    list.sizes.push_back(record.fixed.size);
    list.header.size += record.fixed.size + Word{sizeof(Word)};
  }
}

void unset_slots(Qis& scene) {
  for (Obj& obj : scene.obj_list.records) obj.fixed.shape = obj.fixed.mat = obj.fixed.anim = kUnset;
  for (Shape& shape : scene.shape_list.records) shape.fixed.mat = kUnset;
  for (Part& part : scene.part_list.records) part.fixed.mat = kUnsetPartMaterial;
  for (ChainRoot& root : scene.ext.chain_root_list.records) root.fixed.anim = root.fixed.joint = kUnset;
  for (Joint& joint : scene.ext.joint_list.records)
    joint.fixed.child_joint = joint.fixed.effector = joint.fixed.anim = kUnset;
  for (Effector& effector : scene.ext.effector_list.records) effector.fixed.anim = kUnset;
}

std::unique_ptr<Qis> build(Word count, bool version2) {
  auto scene = std::make_unique<Qis>();
  auto& header = scene->header.fixed;
  header.version = version2 ? kVersion2 : kVersion1;
  header.ext_block1_size = version2 ? sizeof(Header::ExtSizes) : 0;
  header.header_size = sizeof header + header.ext_block1_size;
  header.file_size = header.header_size;
  scene->header.block1.assign(header.ext_block1_size / sizeof(Word), 0);

  for_each_list(*scene, [&](const ListInfo& info, auto& list) {
    using L = std::remove_reference_t<decltype(list)>;
    if (!version2 && info.extension) return;
    Word bytes = 0;
    if constexpr (std::same_as<L, Scene>) {
      list.fixed.tag = Scene::kTag;
      list.fixed.fixed_size = list.fixed.size = sizeof list.fixed;
      list.fixed.name = kUnset;
      if (version2) add_structure(list);
      bytes = list.fixed.size;
    } else if constexpr (requires { typename L::Record; }) {
      if constexpr (is_version1_kind<typename L::Record> || is_version2_kind<typename L::Record>) {
        fill(list, info.tag, count, version2);
        bytes = list.header.size;
      }
    }
    list_bytes(scene->header, info) = bytes;
    if (info.extension) scene->header.block1[info.entry] = bytes;
    header.file_size += bytes;
  });
  unset_slots(*scene);
  return scene;
}

}  // namespace

std::unique_ptr<Qis> built_scene(Word count) { return build(count, true); }
std::unique_ptr<Qis> built_version1_scene(Word count) { return build(count, false); }

SizeWords size_words(const Qis& scene) {
  SizeWords words{{"file", scene.header.fixed.file_size}, {"header", scene.header.fixed.header_size}};
  for_each_list(scene, [&](const ListInfo& info, const auto& list) {
    using L = std::remove_cvref_t<decltype(list)>;
    const std::string name(info.name);
    words[name + " entry"] = list_bytes(scene.header, info);
    if (info.extension && info.entry < scene.header.block1.size())
      words[name + " block1 entry"] = scene.header.block1[info.entry];
    if constexpr (requires { list.header.size; }) words[name] = list.header.size;
    if constexpr (requires { list.sizes; }) {
      for (std::size_t i = 0; i < list.sizes.size(); ++i)
        words[std::string(info.record) + " " + std::to_string(i) + " table"] = list.sizes[i];
    }
    if constexpr (std::same_as<L, Scene> || requires { typename L::Record; }) {
      for_each_record(list, [&](std::size_t i, const auto& record) {
        const std::string key = std::string(info.record) + " " + std::to_string(i);
        if constexpr (requires { record.fixed.size; }) words[key] = record.fixed.size;
        if constexpr (requires { record.fixed.block1_size; })
          words[key + " block"] = record.fixed.block1_size;
      });
    }
  });
  return words;
}

std::map<std::string, std::int32_t> size_changes(const SizeWords& before, const SizeWords& after) {
  std::map<std::string, std::int32_t> changes;
  for (const auto& [name, bytes] : after) changes[name] += static_cast<std::int32_t>(bytes);
  for (const auto& [name, bytes] : before) changes[name] -= static_cast<std::int32_t>(bytes);
  std::erase_if(changes, [](const auto& change) { return change.second == 0; });
  return changes;
}

std::map<std::string, std::int32_t> record_growth(const std::string& list, const std::string& record,
                                                  std::int32_t bytes, bool block) {
  std::map<std::string, std::int32_t> growth{{"file", bytes}, {record, bytes}, {list + " entry", bytes}};
  if (block) growth[record + " block"] = bytes;
  if (list == "SceneList") return growth;
  growth[list] = growth[record + " table"] = bytes;
  const bool extension = list == "EnvelopeList" || list == "ClusterList" || list == "ChainRootList" ||
                         list == "JointList" || list == "EffectorList";
  if (extension) growth[list + " block1 entry"] = bytes;
  return growth;
}
