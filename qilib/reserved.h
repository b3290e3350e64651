/// @file
/// Edits that the library has names for but does not make: each changes nothing and answers 0.
///
/// They take what their namesakes in edit.h take, so that a caller written today works when one is filled in.
#pragma once

#include "qilib/qis.h"

inline int qiAddMat_Light(Qis&, Word /*mat*/, Word /*light*/) { return 0; }
inline int qiAddTex_ColorPalette(Qis&, Word /*tex*/, Word /*palette*/) { return 0; }
inline int qiAddTex_TLUT(Qis&, Word /*tex*/, Word /*tlut*/) { return 0; }
inline int qiAddFullWeightedPart_ChainRoot(Qis&, Word /*envelope*/, Word /*part*/, Word /*root*/) {
  return 0;
}
inline int qiAddFullWeightedPart_Effector(Qis&, Word /*envelope*/, Word /*part*/, Word /*effector*/) {
  return 0;
}
inline int qiAddWeightedPart_ChainRoot(Qis&, Word /*envelope*/, Word /*part*/, Word /*root*/, float) {
  return 0;
}
inline int qiAddWeightedPart_Joint(Qis&, Word /*envelope*/, Word /*part*/, Word /*joint*/, float) {
  return 0;
}
inline int qiAddWeightedPart_Effector(Qis&, Word /*envelope*/, Word /*part*/, Word /*effector*/, float) {
  return 0;
}
inline int qiAddMorphPart_Obj(Qis&, Word /*envelope*/, Word /*part*/, Word /*obj_a*/, Word /*obj_b*/) {
  return 0;
}
inline int qiAddMorphPart_Joint(Qis&, Word /*envelope*/, Word /*part*/, Word /*joint_a*/, Word /*joint_b*/) {
  return 0;
}
inline int qiAddCluster_Obj(Qis&, Word /*cluster*/, Word /*entry*/, Word /*obj*/) { return 0; }

inline int qiDeleteShape_Envelope(Qis&, Word /*shape*/) { return 0; }
inline int qiDeleteShape_ClusterShape(Qis&, Word /*shape*/) { return 0; }
inline int qiDeleteMat_Light(Qis&, Word /*mat*/, Word /*light*/) { return 0; }
inline int qiDeleteTex_ColorPalette(Qis&, Word /*tex*/, Word /*palette*/) { return 0; }
inline int qiDeleteTex_TLUT(Qis&, Word /*tex*/, Word /*tlut*/) { return 0; }
inline int qiDeleteFullWeightedPart_Obj(Qis&, Word /*envelope*/, Word /*part*/, Word /*obj*/) { return 0; }
inline int qiDeleteFullWeightedPart_ChainRoot(Qis&, Word /*envelope*/, Word /*part*/, Word /*root*/) {
  return 0;
}
inline int qiDeleteFullWeightedPart_Joint(Qis&, Word /*envelope*/, Word /*part*/, Word /*joint*/) {
  return 0;
}
inline int qiDeleteFullWeightedPart_Effector(Qis&, Word /*envelope*/, Word /*part*/, Word /*effector*/) {
  return 0;
}
inline int qiDeleteWeightedPart_Obj(Qis&, Word /*envelope*/, Word /*part*/, Word /*obj*/, float) { return 0; }
inline int qiDeleteWeightedPart_ChainRoot(Qis&, Word /*envelope*/, Word /*part*/, Word /*root*/, float) {
  return 0;
}
inline int qiDeleteWeightedPart_Joint(Qis&, Word /*envelope*/, Word /*part*/, Word /*joint*/, float) {
  return 0;
}
inline int qiDeleteWeightedPart_Effector(Qis&, Word /*envelope*/, Word /*part*/, Word /*effector*/, float) {
  return 0;
}
inline int qiDeleteMorphPart_Obj(Qis&, Word /*envelope*/, Word /*part*/, Word /*obj_a*/, Word /*obj_b*/) {
  return 0;
}
inline int qiDeleteMorphPart_Joint(Qis&, Word /*envelope*/, Word /*part*/, Word /*joint_a*/,
                                   Word /*joint_b*/) {
  return 0;
}
inline int qiDeleteMorphPart_Node(Qis&, Word /*envelope*/, Word /*part*/, Word /*tag_a*/, Word /*index_a*/,
                                  Word /*tag_b*/, Word /*index_b*/) {
  return 0;
}
inline int qiDeleteCluster_Obj(Qis&, Word /*cluster*/, Word /*entry*/, Word /*obj*/) { return 0; }
