/// @file
/// The texture dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class TexDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "TexDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::tex_dialog(), parent); }
};
