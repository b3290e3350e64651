/// @file
/// The camera dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class CamDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "CamDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::cam_dialog(), parent); }
};
