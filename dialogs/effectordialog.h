/// @file
/// The effector dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class EffectorDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "EffectorDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::effector_dialog(), parent); }
};
