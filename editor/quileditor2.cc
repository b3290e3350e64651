/// @file
/// The program's entry point.
#include <array>
#include <cstdio>

#include "editor/graphwindow.h"
#include "editor/look.h"
#include "storage/signals.h"
#include "viewkit/vkapp.h"

/// The program's name and version, and on the following lines the notice of rights.
std::array<char, 256> version_string;

int main(int argc, char** argv) {
  storage::survive_file_size_limit();
  // Traces appear in order with the output of the commands that the editor runs.
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  VkApp app("quileditor", &argc, argv, nullptr, 0, &editorResources);
  GraphWindow window("QUILeditor2");
  std::snprintf(version_string.data(), version_string.size(), "%s %s\n%s\n%s",
                "QUILeditor Version" QUIL_VERSION, QUIL_RELEASE_DATE,
                "Copyright (c) 2026 the quileditor authors.",
                "Licensed under the MIT License; see the file LICENSE.");
  app.setVersionString(version_string.data());
  app.setBusyDialog(nullptr);
  window.show();
  return app.run();
}
