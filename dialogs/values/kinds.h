/// @file
/// The dialogs of all kinds of nodes, each described in one of the files beside this: matvalues.cc and the
/// like.
#pragma once

#include <type_traits>

#include "dialogs/values/dialog.h"

namespace values {

const Dialog& dialog_of(std::type_identity<qi::Scene>);
const Dialog& dialog_of(std::type_identity<qi::Shape>);
const Dialog& dialog_of(std::type_identity<qi::Tex>);
const Dialog& dialog_of(std::type_identity<qi::Obj>);
const Dialog& dialog_of(std::type_identity<qi::Mat>);
const Dialog& dialog_of(std::type_identity<qi::Cam>);
const Dialog& dialog_of(std::type_identity<qi::Env>);
const Dialog& dialog_of(std::type_identity<qi::Light>);
const Dialog& dialog_of(std::type_identity<qi::Part>);
const Dialog& dialog_of(std::type_identity<qi::Anim>);
const Dialog& dialog_of(std::type_identity<LevelsOfDetail>);
const Dialog& dialog_of(std::type_identity<qi::ChainRoot>);
const Dialog& dialog_of(std::type_identity<qi::Joint>);
const Dialog& dialog_of(std::type_identity<qi::Effector>);

/// The dialog of the kind with this key.
template <class Key>
const Dialog& dialog_of() {
  static_assert(
      requires { dialog_of(std::type_identity<Key>()); }, "a kind of nodes has no dialog above");
  return dialog_of(std::type_identity<Key>());
}

}  // namespace values
