/// @file
/// The material dialog.
#pragma once

#include "dialogs/propertydialog.h"

class MatDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "MatDialog"; }

 protected:
  Widget createDialog(Widget parent) override;
};
