/// @file
/// The environment dialog.
#pragma once

#include "dialogs/propertydialog.h"

class EnvDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "EnvDialog"; }

 protected:
  Widget createDialog(Widget parent) override;
};
