/// @file
/// Fixture for tests that make widgets in their own process.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/xserver.h"
#include "viewkit/vkapp.h"

/// An application object on a virtual display without a window manager, one for all tests of the process:
/// Motif keeps the smoothed fonts of a display it has been told is closed.
class DisplayTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (app) return;
    server = std::make_unique<support::XServer>();
    setenv("DISPLAY", server->display().c_str(), 1);
    static std::string words[] = {"some/path/displaytest", "-geometry", "700x500+10+20", "extra"};
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    int argc = 4;
    app = std::make_unique<VkApp>("displaytest", &argc, argv.data(), nullptr, 0, &resources);
  }

  static std::vector<std::string> resources(bool) { return {"*matTint: #ffd6b5"}; }

  static inline std::unique_ptr<support::XServer> server;
  static inline std::unique_ptr<VkApp> app;
};
