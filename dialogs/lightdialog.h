/// @file
/// The light dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class LightDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "LightDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::light_dialog(), parent); }
};
