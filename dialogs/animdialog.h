/// @file
/// The animation dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class AnimDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "AnimDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::anim_dialog(), parent); }
};
