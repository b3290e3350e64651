/// @file
/// The shape dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class ShapeDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "ShapeDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::shape_dialog(), parent); }
};
