/// @file
/// The dialogs for the options of the converters.
#pragma once

#include "dialogs/values/optionvalues.h"
#include "viewkit/vkprefdialog.h"

/// Shows the options as they are when it is opened. It is opened once.
class ConverterDialog : public VkPrefDialog {
 public:
  const char* className() const override { return "ConverterDialog"; }

 protected:
  /// @param values  what it shows and writes back; must outlive the dialog
  ConverterDialog(const char* name, const values::OptionsDialog& values)
      : VkPrefDialog(name), values_(values) {}
  Widget createDialog(Widget parent) override;

 private:
  const values::OptionsDialog& values_;
};

/// For the display-list converter.
class Quil2gfxDialog final : public ConverterDialog {
 public:
  explicit Quil2gfxDialog(const char* name) : ConverterDialog(name, values::quil2gfx_dialog()) {}
  const char* className() const override { return "Quil2gfxDialog"; }
};

/// For the viewer-format converter.
class Quil2zexDialog final : public ConverterDialog {
 public:
  explicit Quil2zexDialog(const char* name) : ConverterDialog(name, values::quil2zex_dialog()) {}
  const char* className() const override { return "Quil2zexDialog"; }
};
