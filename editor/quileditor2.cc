/// @file
/// The program's entry point.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>

#include "editor/graphwindow.h"
#include "editor/look.h"
#include "storage/signals.h"
#include "viewkit/vkapp.h"

/// The program's name and version, and on the following lines the notice of rights.
std::array<char, 256> version_string;

namespace {

/// As the file dialog answers it.
std::string absolute_path(const char* file) {
  std::error_code error;
  const auto path = std::filesystem::absolute(file, error).lexically_normal();
  return error ? file : path.string();
}

}  // namespace

int main(int argc, char** argv) {
  storage::survive_file_size_limit();
  // Traces appear in order with the output of the commands that the editor runs.
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  VkApp app("quileditor", &argc, argv, nullptr, 0, &editorResources);
  const std::span operands(argv + 1, static_cast<std::size_t>(std::max(argc, 1) - 1));
  if (operands.size() > 1 || (operands.size() == 1 && *operands.front() == '-')) {
    std::fprintf(stderr, "usage: quileditor [toolkit options] [FILE]\n");
    return 2;
  }
  GraphWindow window("QUILeditor2");
  std::snprintf(version_string.data(), version_string.size(), "%s %s\n%s\n%s",
                "QUILeditor Version" QUIL_VERSION, QUIL_RELEASE_DATE,
                "Copyright (c) 2026 the quileditor authors.",
                "Licensed under the MIT License; see the file LICENSE.");
  app.setVersionString(version_string.data());
  app.setBusyDialog(nullptr);
  window.show();
  for (const char* const file : operands) window.openFile(absolute_path(file));
  return app.run();
}
