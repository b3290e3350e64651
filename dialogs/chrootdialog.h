/// @file
/// The chain-root dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "dialogs/values/kinds.h"

class ChainrootDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "ChainrootDialog"; }

 protected:
  Widget createDialog(Widget parent) override { return createFrom(values::chroot_dialog(), parent); }
};
