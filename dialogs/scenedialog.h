/// @file
/// The scene dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

/// There is one scene record, so the dialog needs no number.
class SceneDialog final : public PropertyDialog {
 public:
  explicit SceneDialog(const char* name) : PropertyDialog(name) {}
  const char* className() const override { return "SceneDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::scene_dialog(), parent); }
};
