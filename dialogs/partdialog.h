/// @file
/// The part dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class PartDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "PartDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::part_dialog(), parent); }
};
