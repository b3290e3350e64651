/// @file
/// Command lines from options that a test sets.
#pragma once

#include <gtest/gtest.h>

#include "tools/cnvopts.h"

/// Starts each test with no option given.
class CommandLines : public testing::Test {
 protected:
  CommandLines() { ngops = NgOps{}; }
  ~CommandLines() override { ngops = NgOps{}; }

  /// Sets every option, each to a text of its own.
  static void set_all() {
    ngops = {.output_dir = "out",
             .header = "h.h",
             .output = "o.c",
             .label = "my label",
             .scale = "1.5",
             .quilinfo = "info",
             .nocomdef = "-nocomdef",
             .vtxshare = "3",
             .vtxcache = "16",
             .strictflat = "-strictflat",
             .noalignpad = "-noalignpad",
             .outobj = "arm",
             .nogeomclr = "-nogeomclr",
             .regmask = "9",
             .outmask = "512",
             .preview = "pre",
             .vtxseg = "5",
             .imgseg = "6",
             .tlutseg = "7",
             .strictcidx = "-strictcidx",
             .vtxload = "8",
             .noreduct = "-noreduct",
             .script_path = "/opt/viewer/show it",
             .preview_path = "/opt/viewer/scene.quil",
             .fogoff = "-fogoff",
             .envseg = "4"};
  }
};
