/// @file
/// The shared dialog that lets the user choose one of several rows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "viewkit/vkdialogmanager.h"

/// Shows rows of text in a list, with OK and Cancel. A double click is OK.
class VkListDialog final : public VkDialogManager {
 public:
  explicit VkListDialog(const char* name) : VkDialogManager(name) {}
  const char* className() const override { return "VkListDialog"; }

  /// Shows the rows, the first one selected, and waits for the answer.
  /// @returns the place of the chosen row, from 0; nothing when the user cancels.
  std::optional<std::size_t> choose(const char* title, const std::vector<std::string>& rows);

 private:
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;
  Widget list() const;

  std::vector<std::string> rows_;
};

/// The application's one such dialog, made at first use and owned by theApplication.
VkListDialog* getTheListDialog();
