/// @file
/// Reading: the messages, the table of the lists, and a list's way from the file into its set-up.
#include "qilib/reader.h"

#include <cinttypes>
#include <memory>
#include <string>

#include "qilib/files.h"

namespace qi {

void report(const ReadError& error, std::string_view list_name, std::optional<std::size_t> record) {
  std::string where(list_name);
  if (record) where += ": record " + std::to_string(*record);
  const std::string what(error.what);
  switch (error.fault) {
    case ReadError::Fault::too_large:
      std::fprintf(stderr, "%s: %s of %" PRIu64 " bytes at offset %zu exceeds the %" PRIu64 " bytes left\n",
                   where.c_str(), what.c_str(), error.needed, error.offset, error.left);
      break;
    case ReadError::Fault::not_words:
      std::fprintf(stderr, "%s: %s of %" PRId64 " bytes is no whole number of words\n", where.c_str(),
                   what.c_str(), static_cast<std::int64_t>(error.needed));
      break;
    case ReadError::Fault::wrong_length:
      std::fprintf(stderr, "%s: fixed part of %" PRIu64 " bytes, expected %" PRIu64 "\n", where.c_str(),
                   error.needed, error.left);
      break;
    case ReadError::Fault::tag:
      std::fprintf(stderr, "irregular tag ! %0#10x != %0#10x\n", error.found, error.expected);
      break;
    case ReadError::Fault::name_tag:
      std::fprintf(stderr, "irregular tag ! %0#10x\n", error.found);
      break;
  }
}

namespace {

/// The last row of the table of the lists whose name matches decides.
struct TableWalk {
  std::string_view list_name;
  std::span<const Word> buffer;
  int result = 0;

  template <class Setup, class Reset, class L>
  void row(const Setup& setup, const Reset& reset, L& list) {
    if (setup.list_name == list_name) result = buffer.empty() ? reset(list) : setup(buffer, list);
  }

  int operator()(Qis& scene) {
    row(qiSetupSceneList, qiSetScene0, scene.scene);
    row(qiSetupEnvList, qiSetEnv0, scene.env_list);
    row(qiSetupCamList, qiSetCam0, scene.cam_list);
    row(qiSetupLightList, qiSetLight0, scene.light_list);
    row(qiSetupObjList, qiSetObj0, scene.obj_list);
    row(qiSetupShapeList, qiSetShape0, scene.shape_list);
    row(qiSetupVtxList, qiSetVtx0, scene.vtx_list);
    row(qiSetupTriList, qiSetTri0, scene.tri_list);
    row(qiSetupColorList, qiSetColor0, scene.color_list);
    row(qiSetupVectorList, qiSetVector0, scene.vector_list);
    row(qiSetupStList, qiSetSt0, scene.st_list);
    row(qiSetupPartList, qiSetPart0, scene.part_list);
    row(qiSetupMatList, qiSetMat0, scene.mat_list);
    row(qiSetupTexList, qiSetTex0, scene.tex_list);
    row(qiSetupTeximgList, qiSetTeximg0, scene.teximg_list);
    row(qiSetupAnimList, qiSetAnim0, scene.anim_list);
    row(qiSetupCollList, qiSetColl0, scene.coll_list);
    row(qiSetupSwitchList, qiSetSwitch0, scene.switch_list);
    row(qiSetupNameList, qiSetName0, scene.name_list);
    row(qiSetupCiimgList, qiSetCiimg0, scene.ext.ciimg_list);
    row(qiSetupColorPaletteList, qiSetColorPalette0, scene.ext.color_palette_list);
    row(qiSetupEnvelopeList, qiSetEnvelope0, scene.ext.envelope_list);
    row(qiSetupClusterList, qiSetCluster0, scene.ext.cluster_list);
    row(qiSetupWeightList, qiSetWeight0, scene.ext.weight_list);
    row(qiSetupChainRootList, qiSetChainRoot0, scene.ext.chain_root_list);
    row(qiSetupJointList, qiSetJoint0, scene.ext.joint_list);
    row(qiSetupEffectorList, qiSetEffector0, scene.ext.effector_list);
    row(qiSetupExternalNameList, qiSetExternalName0, scene.ext.external_name_list);
    return result;
  }
};

}  // namespace
}  // namespace qi

int qiCheckTag(Word found, Word expected) {
  if (found == expected) return 1;
  qi::report({.fault = qi::ReadError::Fault::tag, .found = found, .expected = expected}, {}, {});
  return 0;
}

int qiReadArray(qi::ListCursor& cursor, Words& destination, std::uint64_t word_count, std::string_view what) {
  const auto words = cursor.take(word_count, what);
  destination.assign(words.begin(), words.end());
  return !cursor.error();
}

int qiReadExtBlk1(qi::ListCursor& cursor, Words& destination1, Word size1, Words& destination2, Word size2) {
  const auto read = [&cursor](Words& destination, Word size, std::string_view what) {
    const auto words = cursor.take_bytes(size, what);
    destination.assign(words.begin(), words.end());
    return !cursor.error();
  };
  return read(destination1, size1, "extension block 1") && read(destination2, size2, "extension block 2");
}

int qiReadList(std::FILE* file, Word size, Qis& scene, std::string_view list_name) {
  if (size == 0) return qi::TableWalk{list_name, {}}(scene);
  qi::ReadError error{.fault = qi::ReadError::Fault::too_large,
                      .what = "list",
                      .needed = size,
                      .left = qi::bytes_left(file),
                      .offset = static_cast<std::size_t>(std::ftell(file))};
  if (size % sizeof(Word) != 0) {
    error.fault = qi::ReadError::Fault::not_words;
  } else if (size <= error.left) {
    const auto words = std::make_unique_for_overwrite<Word[]>(size / sizeof(Word));
    error.left = freadEndianSwap4(words.get(), size, file);
    if (error.left == size) return qi::TableWalk{list_name, {words.get(), size / sizeof(Word)}}(scene);
  }
  qi::report(error, list_name, {});
  return 0;
}
