/// @file
/// The level-of-detail dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

/// The levels of detail of the object with this number.
class LodDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "LodDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::lod_dialog(), parent); }
};
