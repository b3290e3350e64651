/// @file
/// The commands' questions and warnings as dialogs over the main window.
#pragma once

#include "editor/prompts.h"

class GraphWindow;

/// Asks with the application's shared dialogs, and with the options dialogs of the converters.
class WindowPrompts final : public Prompts {
 public:
  /// @param window  hears what is entered in the options dialogs, see GraphWindow::handlePrefs; owns this.
  explicit WindowPrompts(GraphWindow& window) : window_(window) {}

  void warn(const char* text) override;
  void tell(const std::string& text) override;
  bool confirm(const char* question, const char* title) override;
  std::optional<std::size_t> chooseRow(const char* title, const std::vector<std::string>& rows) override;
  std::optional<std::string> chooseFile(const char* title, const FileStart& start) override;
  std::optional<PictureChoice> choosePicture(const char* title, const std::string& selection) override;
  bool setOptions(Converter converter, const char* title) override;
  void busy(const char* message) override;
  void notBusy() override;
  void progress(const char* message, double share) override;

 private:
  GraphWindow& window_;
};
