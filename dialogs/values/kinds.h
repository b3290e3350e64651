/// @file
/// The 14 dialogs, each described in a file of its own.
#pragma once

#include "dialogs/values/dialog.h"

namespace values {

const Dialog& scene_dialog();
const Dialog& shape_dialog();
const Dialog& tex_dialog();
const Dialog& obj_dialog();
const Dialog& mat_dialog();
const Dialog& cam_dialog();
const Dialog& env_dialog();
const Dialog& light_dialog();
const Dialog& part_dialog();
const Dialog& anim_dialog();
const Dialog& lod_dialog();
const Dialog& chroot_dialog();
const Dialog& joint_dialog();
const Dialog& effector_dialog();

}  // namespace values
