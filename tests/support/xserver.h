/// @file
/// A virtual X server and a window manager for one test.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace support {

/// A running virtual X server of its own, ready for clients.
class XServer {
 public:
  /// @param depth  bits per pixel: 8 (PseudoColor), 16 or 24 (TrueColor)
  explicit XServer(int depth = 24, int width = 1280, int height = 1000);

  /// What DISPLAY must be set to, ":N".
  const std::string& display() const { return display_; }

  /// Ends the server as a crash would: its clients lose their display.
  void end() { process_->end(); }

  /// Writes a picture of the screen as a PNG file; makes its directory.
  /// @param part  "WIDTHxHEIGHT+X+Y" in pixels; empty: all of it
  void screenshot(const std::filesystem::path& file, const std::string& part = "") const;

 private:
  std::string display_;
  std::optional<Process> process_;
};

/// A window manager on a server; ended, and waited for, before the server is.
class WindowManager {
 public:
  explicit WindowManager(const XServer& server);

 private:
  ScratchDirectory home_;
  std::optional<Process> process_;
};

}  // namespace support
