/// @file
/// The joint dialog.
#pragma once

#include "dialogs/propertydialog.h"
#include "viewkit/vktabpanel.h"

class JointDialog final : public QuilNodeDialog {
 public:
  using QuilNodeDialog::QuilNodeDialog;
  const char* className() const override { return "JointDialog"; }

 protected:
  Widget createDialog(Widget parent) override;

 private:
  std::unique_ptr<VkTabPanel> tab_;
};
