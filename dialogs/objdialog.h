/// @file
/// The object dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class ObjDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "ObjDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::obj_dialog(), parent); }
};
