/// @file
/// Prompts that answer by themselves, and note what happens between them and the rest of the world.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/prompts.h"

/// Notes each prompt as a line of its name and its text. A test lets other things be noted among them.
class RecordingPrompts final : public Prompts {
 public:
  void warn(const char* text) override { note("warn", text); }
  void tell(const std::string& text) override {
    if (!text.empty()) note("tell", text);
  }
  bool confirm(const char* question, const char* title) override {
    note("confirm", question + (title == std::string("Question") ? "" : std::string(" (") + title + ")"));
    return answer;
  }
  std::optional<std::size_t> chooseRow(const char* title, const std::vector<std::string>& shown) override {
    note("choose", title);
    rows = shown;
    return answer ? std::optional(row) : std::nullopt;
  }
  std::optional<std::string> chooseFile(const char* title, const FileStart& asked) override {
    note("choose", title);
    start = asked;
    return answer ? std::optional(file) : std::nullopt;
  }
  std::optional<PictureChoice> choosePicture(const char* title, const std::string& selection) override {
    note("choose", title);
    start = {.selection = selection};
    return answer ? std::optional(PictureChoice{file, view_only}) : std::nullopt;
  }
  bool setOptions(Converter converter, const char* title) override {
    note(converter == Converter::quil2gfx ? "set gfx options" : "set zex options", title);
    return answer;
  }
  void busy(const char* message) override { note("busy", message ? message : ""); }
  void notBusy() override { note("ready"); }
  void progress(const char*, double) override {
    if (stops) throw StoppedByUser();
  }

  void note(const std::string& what, const std::string& text = {}) {
    lines.push_back(text.empty() ? what : what + ": " + text);
  }

  using Lines = std::vector<std::string>;
  Lines lines;
  bool stops = false;             ///< the user wants to stop
  bool answer = true;             ///< OK, or else Cancel
  std::string file;               ///< what is chosen
  bool view_only = false;         ///< what is chosen for a picture
  FileStart start;                ///< of the last choice
  std::vector<std::string> rows;  ///< of the last choice among rows
  std::size_t row = 0;            ///< what is chosen of them
};
