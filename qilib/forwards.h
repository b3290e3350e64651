/// @file
/// Forwards: names that callers of the library know, each for one call of something more general. The library
/// and the programs here make those calls themselves.
#pragma once

#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "qilib/edit.h"
#include "qilib/files.h"
#include "qilib/lists.h"
#include "qilib/qis.h"
#include "qilib/reader.h"
#include "qilib/writer.h"

namespace qi {

/// What sets up, resets and writes the list that a member of the scene or of its extension lists holds.
template <auto Member>
using ListOf = std::remove_cvref_t<decltype(list_in(std::declval<Qis&>(), Member))>;
template <auto Member>
inline constexpr SetupList<ListOf<Member>> list_setup{list_info(Member).name};
template <auto Member>
inline constexpr ResetList<ListOf<Member>> list_reset{list_info(Member).extension};
template <auto Member>
inline constexpr WriteList<ListOf<Member>> list_writer;

/// What parses the version-2 structures of the records in that list, and what writes one of them.
template <auto Member>
inline constexpr SetupExt<typename RecordIn<ListOf<Member>>::Type> ext_setup{list_info(Member).name};
template <auto Member>
int write_ext(std::FILE* file, const typename RecordIn<ListOf<Member>>::Type& record, int mode) {
  return write_to(file, mode, [&](auto& emitter) { emitter.block1(record); });
}

/// Writes the first n pairs: n first halves, then n second halves. @returns 1, or 0 when a write failed.
template <class Pair>
int write_pairs(std::FILE* file, const CompactArray<Pair>& pairs, std::uint64_t n) {
  return write_to(file, kBlocksAsRead, [&](auto& emitter) { emitter.pairs(pairs, n); });
}

/// The edits of one pair of kinds. The scene record, which there is once, needs no number.
template <Word Parent, Word Child>
int add_child(Qis& scene, Word parent, Word child) {
  return add_reference(scene, *find_reference(Parent, Child), parent, child);
}
template <Word Child>
int add_to_scene(Qis& scene, Word child) {
  return add_child<kSceneTag, Child>(scene, 0, child);
}
template <Word Parent, Word Child>
int delete_child(Qis& scene, Word parent, Word child) {
  return delete_reference(scene, *find_reference(Parent, Child), parent, child, print_message);
}
template <Word Child>
int delete_from_scene(Qis& scene, Word child) {
  return delete_child<kSceneTag, Child>(scene, 0, child);
}
template <Word Parent, Word Child>
int unset_child(Qis& scene, Word parent) {
  return delete_child<Parent, Child>(scene, parent, kUnset);
}

/// An edit that has a name but is not made: it changes nothing.
template <class... Args>
int not_made(Qis& /*scene*/, Args... /*args*/) {
  return 0;
}

}  // namespace qi

/// @name Reading
/// @{

/// 1 if the tags are equal; else prints both and returns 0.
int qiCheckTag(Word found, Word expected);

/// qiReadArray and qiReadExtBlk1 under the names that the version-2 set-ups use.
inline int qiSetupArray(qi::ListCursor& cursor, Words& destination, std::uint64_t word_count) {
  return qiReadArray(cursor, destination, word_count);
}
inline constexpr auto& qiSetupExtBlk1 = qiReadExtBlk1;

/// Makes the reference refer to nothing.
inline void qiSetNoExternal(QisExternal& reference) { reference = QisExternal{}; }

/// Stores five words into a polygon entry.
inline void qiSetPoly(QisPoly& poly, Word w0, Word w1, Word w2, Word w3, Word w4) {
  poly = QisPoly{{w0, w1, w2, w3, w4}};
}

// Fill a list from its words. 1, or 0 after a message on standard error.
inline constexpr auto& qiSetupSceneList = qi::list_setup<&Qis::scene>;
inline constexpr auto& qiSetupEnvList = qi::list_setup<&Qis::env_list>;
inline constexpr auto& qiSetupCamList = qi::list_setup<&Qis::cam_list>;
inline constexpr auto& qiSetupLightList = qi::list_setup<&Qis::light_list>;
inline constexpr auto& qiSetupObjList = qi::list_setup<&Qis::obj_list>;
inline constexpr auto& qiSetupShapeList = qi::list_setup<&Qis::shape_list>;
inline constexpr auto& qiSetupVtxList = qi::list_setup<&Qis::vtx_list>;
inline constexpr auto& qiSetupTriList = qi::list_setup<&Qis::tri_list>;
inline constexpr auto& qiSetupColorList = qi::list_setup<&Qis::color_list>;
inline constexpr auto& qiSetupVectorList = qi::list_setup<&Qis::vector_list>;
inline constexpr auto& qiSetupStList = qi::list_setup<&Qis::st_list>;
inline constexpr auto& qiSetupPartList = qi::list_setup<&Qis::part_list>;
inline constexpr auto& qiSetupMatList = qi::list_setup<&Qis::mat_list>;
inline constexpr auto& qiSetupTexList = qi::list_setup<&Qis::tex_list>;
inline constexpr auto& qiSetupTeximgList = qi::list_setup<&Qis::teximg_list>;
inline constexpr auto& qiSetupAnimList = qi::list_setup<&Qis::anim_list>;
inline constexpr auto& qiSetupCollList = qi::list_setup<&Qis::coll_list>;
inline constexpr auto& qiSetupSwitchList = qi::list_setup<&Qis::switch_list>;
inline constexpr auto& qiSetupNameList = qi::list_setup<&Qis::name_list>;
inline constexpr auto& qiSetupCiimgList = qi::list_setup<&qi::ExtLists::ciimg_list>;
inline constexpr auto& qiSetupColorPaletteList = qi::list_setup<&qi::ExtLists::color_palette_list>;
inline constexpr auto& qiSetupEnvelopeList = qi::list_setup<&qi::ExtLists::envelope_list>;
inline constexpr auto& qiSetupClusterList = qi::list_setup<&qi::ExtLists::cluster_list>;
inline constexpr auto& qiSetupWeightList = qi::list_setup<&qi::ExtLists::weight_list>;
inline constexpr auto& qiSetupChainRootList = qi::list_setup<&qi::ExtLists::chain_root_list>;
inline constexpr auto& qiSetupJointList = qi::list_setup<&qi::ExtLists::joint_list>;
inline constexpr auto& qiSetupEffectorList = qi::list_setup<&qi::ExtLists::effector_list>;
inline constexpr auto& qiSetupExternalNameList = qi::list_setup<&qi::ExtLists::external_name_list>;

// Make of a list what it is when the file has none. Always 1.
inline constexpr auto& qiSetScene0 = qi::list_reset<&Qis::scene>;
inline constexpr auto& qiSetEnv0 = qi::list_reset<&Qis::env_list>;
inline constexpr auto& qiSetCam0 = qi::list_reset<&Qis::cam_list>;
inline constexpr auto& qiSetLight0 = qi::list_reset<&Qis::light_list>;
inline constexpr auto& qiSetObj0 = qi::list_reset<&Qis::obj_list>;
inline constexpr auto& qiSetShape0 = qi::list_reset<&Qis::shape_list>;
inline constexpr auto& qiSetVtx0 = qi::list_reset<&Qis::vtx_list>;
inline constexpr auto& qiSetTri0 = qi::list_reset<&Qis::tri_list>;
inline constexpr auto& qiSetColor0 = qi::list_reset<&Qis::color_list>;
inline constexpr auto& qiSetVector0 = qi::list_reset<&Qis::vector_list>;
inline constexpr auto& qiSetSt0 = qi::list_reset<&Qis::st_list>;
inline constexpr auto& qiSetPart0 = qi::list_reset<&Qis::part_list>;
inline constexpr auto& qiSetMat0 = qi::list_reset<&Qis::mat_list>;
inline constexpr auto& qiSetTex0 = qi::list_reset<&Qis::tex_list>;
inline constexpr auto& qiSetTeximg0 = qi::list_reset<&Qis::teximg_list>;
inline constexpr auto& qiSetAnim0 = qi::list_reset<&Qis::anim_list>;
inline constexpr auto& qiSetColl0 = qi::list_reset<&Qis::coll_list>;
inline constexpr auto& qiSetSwitch0 = qi::list_reset<&Qis::switch_list>;
inline constexpr auto& qiSetName0 = qi::list_reset<&Qis::name_list>;
inline constexpr auto& qiSetCiimg0 = qi::list_reset<&qi::ExtLists::ciimg_list>;
inline constexpr auto& qiSetColorPalette0 = qi::list_reset<&qi::ExtLists::color_palette_list>;
inline constexpr auto& qiSetEnvelope0 = qi::list_reset<&qi::ExtLists::envelope_list>;
inline constexpr auto& qiSetCluster0 = qi::list_reset<&qi::ExtLists::cluster_list>;
inline constexpr auto& qiSetWeight0 = qi::list_reset<&qi::ExtLists::weight_list>;
inline constexpr auto& qiSetChainRoot0 = qi::list_reset<&qi::ExtLists::chain_root_list>;
inline constexpr auto& qiSetJoint0 = qi::list_reset<&qi::ExtLists::joint_list>;
inline constexpr auto& qiSetEffector0 = qi::list_reset<&qi::ExtLists::effector_list>;
inline constexpr auto& qiSetExternalName0 = qi::list_reset<&qi::ExtLists::external_name_list>;

// Make the version-2 structures of a list's records. 1, or 0 when a record has none or it can't be read.
inline constexpr auto& qiSetupSceneListExt = qi::ext_setup<&Qis::scene>;
inline constexpr auto& qiSetupCamExt = qi::ext_setup<&Qis::cam_list>;
inline constexpr auto& qiSetupObjExt = qi::ext_setup<&Qis::obj_list>;
inline constexpr auto& qiSetupShapeExt = qi::ext_setup<&Qis::shape_list>;
inline constexpr auto& qiSetupMatExt = qi::ext_setup<&Qis::mat_list>;
inline constexpr auto& qiSetupTexExt = qi::ext_setup<&Qis::tex_list>;
inline constexpr auto& qiSetupTeximgExt = qi::ext_setup<&Qis::teximg_list>;
inline constexpr auto& qiSetupAnimGroupExt = qi::ext_setup<&Qis::anim_list>;

// Text files are opened like binary ones.
inline constexpr auto& qiQdReadOpen = qiQbReadOpen;
inline constexpr auto& qiQdWriteOpen = qiQbWriteOpen;

/// @}
/// @name Writing
/// @{

// Write a list as it is held. 1, or 0 when a write failed.
inline constexpr auto& qiWriteSceneList = qi::list_writer<&Qis::scene>;
inline constexpr auto& qiWriteEnvList = qi::list_writer<&Qis::env_list>;
inline constexpr auto& qiWriteCamList = qi::list_writer<&Qis::cam_list>;
inline constexpr auto& qiWriteLightList = qi::list_writer<&Qis::light_list>;
inline constexpr auto& qiWriteObjList = qi::list_writer<&Qis::obj_list>;
inline constexpr auto& qiWriteShapeList = qi::list_writer<&Qis::shape_list>;
inline constexpr auto& qiWriteVtxList = qi::list_writer<&Qis::vtx_list>;
inline constexpr auto& qiWriteTriList = qi::list_writer<&Qis::tri_list>;
inline constexpr auto& qiWriteColorList = qi::list_writer<&Qis::color_list>;
inline constexpr auto& qiWriteVectorList = qi::list_writer<&Qis::vector_list>;
inline constexpr auto& qiWriteStList = qi::list_writer<&Qis::st_list>;
inline constexpr auto& qiWritePartList = qi::list_writer<&Qis::part_list>;
inline constexpr auto& qiWriteMatList = qi::list_writer<&Qis::mat_list>;
inline constexpr auto& qiWriteTexList = qi::list_writer<&Qis::tex_list>;
inline constexpr auto& qiWriteTexImgList = qi::list_writer<&Qis::teximg_list>;
inline constexpr auto& qiWriteAnimList = qi::list_writer<&Qis::anim_list>;
inline constexpr auto& qiWriteCollList = qi::list_writer<&Qis::coll_list>;
inline constexpr auto& qiWriteSwitchList = qi::list_writer<&Qis::switch_list>;
inline constexpr auto& qiWriteNameList = qi::list_writer<&Qis::name_list>;

// Write a record's extension block 1. 1, or 0 when a write failed.
inline constexpr auto& qiWriteSceneListExt = qi::write_ext<&Qis::scene>;
inline constexpr auto& qiWriteCamExt = qi::write_ext<&Qis::cam_list>;
inline constexpr auto& qiWriteObjExt = qi::write_ext<&Qis::obj_list>;
inline constexpr auto& qiWriteShapeExt = qi::write_ext<&Qis::shape_list>;
inline constexpr auto& qiWriteMatExt = qi::write_ext<&Qis::mat_list>;
inline constexpr auto& qiWriteTexExt = qi::write_ext<&Qis::tex_list>;
inline constexpr auto& qiWriteTexImgExt = qi::write_ext<&Qis::teximg_list>;
inline constexpr auto& qiWriteAnimGroupExt = qi::write_ext<&Qis::anim_list>;

inline constexpr auto& qiWriteExternal = qi::write_pairs<QisExternal>;
inline constexpr auto& qiWriteNodeIndex = qi::write_pairs<QisNodeIndex>;

/// Texel bytes of one texture image by its size words; 0 when it has none or the number is wrong.
std::uint64_t qiSizeofTeximg(const qi::List<qi::Teximg>& list, Word record_number);

/// Words that the pixel indices of a colour-indexed image take.
std::uint64_t qiSizeofPixelIndexArray(const qi::CiImg& image);

/// @}
/// @name Editing
/// What edit.h says of all edits holds for these.
/// @{

// Entries of an index array: refused when the child is among the entries already; +4 bytes.
inline constexpr auto& qiAddScene_Obj = qi::add_to_scene<qi::kObjTag>;
inline constexpr auto& qiAddScene_ChainRoot = qi::add_to_scene<qi::kChainRootTag>;
inline constexpr auto& qiAddObj_ChainRoot = qi::add_child<qi::kObjTag, qi::kChainRootTag>;
inline constexpr auto& qiAddChainRoot_Obj = qi::add_child<qi::kChainRootTag, qi::kObjTag>;
inline constexpr auto& qiAddJoint_Obj = qi::add_child<qi::kJointTag, qi::kObjTag>;
inline constexpr auto& qiAddEffector_Obj = qi::add_child<qi::kEffectorTag, qi::kObjTag>;

/// Adds a child obj. Refused when the parent is a child of the child, and when it has 32 children. A child
/// that it has already is not added again, but the answer is 1 and the sizes grow by 4 all the same.
inline constexpr auto& qiAddObj_Obj = qi::add_child<qi::kObjTag, qi::kObjTag>;

/// Adds a texture. Refused when the material has 3. A texture that it has already: as in qiAddObj_Obj.
inline constexpr auto& qiAddMat_Tex = qi::add_child<qi::kMatTag, qi::kTexTag>;

// Slots: refused when the slot holds this very child; another child that it held is replaced. No size
// changes.
inline constexpr auto& qiAddChainRoot_Anim = qi::add_child<qi::kChainRootTag, qi::kAnimTag>;
inline constexpr auto& qiAddChainRoot_Joint = qi::add_child<qi::kChainRootTag, qi::kJointTag>;
inline constexpr auto& qiAddJoint_Anim = qi::add_child<qi::kJointTag, qi::kAnimTag>;
inline constexpr auto& qiAddJoint_Joint = qi::add_child<qi::kJointTag, qi::kJointTag>;
inline constexpr auto& qiAddJoint_Effector = qi::add_child<qi::kJointTag, qi::kEffectorTag>;
inline constexpr auto& qiAddEffector_Anim = qi::add_child<qi::kEffectorTag, qi::kAnimTag>;

// Entries out of an index array: refused, with qiDeleteLink's line, when the child isn't there; -4 bytes.
inline constexpr auto& qiDeleteScene_ChainRoot = qi::delete_from_scene<qi::kChainRootTag>;
inline constexpr auto& qiDeleteObj_ChainRoot = qi::delete_child<qi::kObjTag, qi::kChainRootTag>;
inline constexpr auto& qiDeleteChainRoot_Obj = qi::delete_child<qi::kChainRootTag, qi::kObjTag>;
inline constexpr auto& qiDeleteJoint_Obj = qi::delete_child<qi::kJointTag, qi::kObjTag>;
inline constexpr auto& qiDeleteEffector_Obj = qi::delete_child<qi::kEffectorTag, qi::kObjTag>;

// Slots unset, whatever they held.
inline constexpr auto& qiDeleteChainRoot_Anim = qi::unset_child<qi::kChainRootTag, qi::kAnimTag>;
inline constexpr auto& qiDeleteChainRoot_Joint = qi::unset_child<qi::kChainRootTag, qi::kJointTag>;
inline constexpr auto& qiDeleteJoint_Anim = qi::unset_child<qi::kJointTag, qi::kAnimTag>;
inline constexpr auto& qiDeleteJoint_Joint = qi::unset_child<qi::kJointTag, qi::kJointTag>;
inline constexpr auto& qiDeleteJoint_Effector = qi::unset_child<qi::kJointTag, qi::kEffectorTag>;
inline constexpr auto& qiDeleteEffector_Anim = qi::unset_child<qi::kEffectorTag, qi::kAnimTag>;

// Edits that are not made. They take what their namesakes in edit.h take, so that a caller written today
// works when one is filled in.
inline constexpr auto& qiAddMat_Light = qi::not_made<Word, Word>;
inline constexpr auto& qiAddTex_ColorPalette = qi::not_made<Word, Word>;
inline constexpr auto& qiAddTex_TLUT = qi::not_made<Word, Word>;
inline constexpr auto& qiAddFullWeightedPart_ChainRoot = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiAddFullWeightedPart_Effector = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiAddWeightedPart_ChainRoot = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiAddWeightedPart_Joint = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiAddWeightedPart_Effector = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiAddMorphPart_Obj = qi::not_made<Word, Word, Word, Word>;
inline constexpr auto& qiAddMorphPart_Joint = qi::not_made<Word, Word, Word, Word>;
inline constexpr auto& qiAddCluster_Obj = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiDeleteShape_Envelope = qi::not_made<Word>;
inline constexpr auto& qiDeleteShape_ClusterShape = qi::not_made<Word>;
inline constexpr auto& qiDeleteMat_Light = qi::not_made<Word, Word>;
inline constexpr auto& qiDeleteTex_ColorPalette = qi::not_made<Word, Word>;
inline constexpr auto& qiDeleteTex_TLUT = qi::not_made<Word, Word>;
inline constexpr auto& qiDeleteFullWeightedPart_Obj = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiDeleteFullWeightedPart_ChainRoot = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiDeleteFullWeightedPart_Joint = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiDeleteFullWeightedPart_Effector = qi::not_made<Word, Word, Word>;
inline constexpr auto& qiDeleteWeightedPart_Obj = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiDeleteWeightedPart_ChainRoot = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiDeleteWeightedPart_Joint = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiDeleteWeightedPart_Effector = qi::not_made<Word, Word, Word, float>;
inline constexpr auto& qiDeleteMorphPart_Obj = qi::not_made<Word, Word, Word, Word>;
inline constexpr auto& qiDeleteMorphPart_Joint = qi::not_made<Word, Word, Word, Word>;
inline constexpr auto& qiDeleteMorphPart_Node = qi::not_made<Word, Word, Word, Word, Word, Word>;
inline constexpr auto& qiDeleteCluster_Obj = qi::not_made<Word, Word, Word>;

/// @}
