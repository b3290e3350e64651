/// @file
/// Reading: the table of the lists, and a list's way from the file into its set-up.
#include "qilib/reader.h"

#include <memory>

#include "qilib/files.h"

namespace qi {

namespace {

/// The last row of the table of the lists whose name matches decides.
struct TableWalk {
  std::string_view list_name;
  std::span<const Word> buffer;
  const MessageSink& sink;
  int result = 0;

  template <class Setup, class Reset, class L>
  void row(const Setup& setup, const Reset& reset, L& list) {
    if (setup.list_name == list_name) result = buffer.empty() ? reset(list) : setup(buffer, list, sink);
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

int read_list(std::FILE* file, Word size, Qis& scene, std::string_view list_name, const MessageSink& sink) {
  const auto begin = static_cast<std::uint64_t>(std::ftell(file));
  const MessageSink placing_sink = [&](Message message) {
    message.base = begin;
    sink(message);
  };
  if (size == 0) return TableWalk{list_name, {}, placing_sink}(scene);
  Message message{.code = MessageCode::too_large,
                  .list = list_name,
                  .what = "list",
                  .found = size,
                  .expected = bytes_left(file),
                  .offset = begin,
                  .base = 0};
  if (size % sizeof(Word) != 0) {
    message.code = MessageCode::no_whole_words;
  } else if (size <= message.expected) {
    const auto words = std::make_unique_for_overwrite<Word[]>(size / sizeof(Word));
    message.expected = freadEndianSwap4(words.get(), size, file);
    if (message.expected == size)
      return TableWalk{list_name, {words.get(), size / sizeof(Word)}, placing_sink}(scene);
  }
  sink(message);
  return 0;
}

}  // namespace qi

int qiCheckTag(Word found, Word expected) {
  if (found == expected) return 1;
  qi::print_message({.code = qi::MessageCode::wrong_tag, .found = found, .expected = expected});
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
  return qi::read_list(file, size, scene, list_name, qi::print_message);
}
