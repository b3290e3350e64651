/// @file
/// `quilscene options`: files of options, good and bad.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/quilscene_run.h"
#include "tests/support/places.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(Quilscene, OptionsPrintsTheRecordAndBothPrefixes) {
  put("options",
      "out/\nmodel.c\n-header model.h\n-label two words\n-scale 1.5\n-quilinfo info\n-nocomdef\n"
      "-vtxcache 16\n-envseg 4\n-fogoff\n/usr/bin/view\nscene.zex\n");
  const Ran ran = run("options options");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  EXPECT_EQ(
      ran.out,
      "output_dir = out/\nheader = model.h\noutput = model.c\nlabel = two words\nscale = 1.5\n"
      "quilinfo = info\nnocomdef = -nocomdef\nvtxshare = \nvtxcache = 16\nstrictflat = \n"
      "noalignpad = \noutobj = \nnogeomclr = \nregmask = \noutmask = \npreview = \nvtxseg = \n"
      "imgseg = \ntlutseg = \nstrictcidx = \nvtxload = \nnoreduct = \nscript_path = /usr/bin/view\n"
      "preview_path = scene.zex\nfogoff = -fogoff\nenvseg = 4\n"
      "cmd_quil2gfx = (cd ../kavoprev ; ./quil2gfx  -scale 1.5 -quilinfo out/info -vtxcache 16 -nocomdef \n"
      "cmd_quil2zex =  -scale 1.5 -vtxcache 16 -fogoff \n");
}

TEST_F(Quilscene, OptionsOfTheTemplateAddNothing) {
  const Ran ran = run("options " + support::project_file("samples/quilcnvops.template").string());
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.out, StartsWith("output_dir = ./\nheader = \noutput = model.c\n"));
  EXPECT_THAT(ran.out, HasSubstr("cmd_quil2gfx = (cd ../kavoprev ; ./quil2gfx \ncmd_quil2zex = \n"));
}

TEST_F(Quilscene, OptionsThatCannotBeReadAreSaid) {
  for (const char* file : {"absent", ".", "/dev/zero"}) {
    const Ran ran = run(std::string("options ") + file);
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_EQ(ran.err, std::string("quilscene: can't read ") + file + "\n");
  }
}

TEST_F(Quilscene, OptionsTakesOneFileAtMost) {
  const Ran ran = run("options one two");
  EXPECT_EQ(ran.status, 2);
  EXPECT_THAT(ran.err, StartsWith("quilscene: one FILE too many: two\n"));
}

TEST_F(Quilscene, OptionsThatWouldSteerATerminalAreMadeVisible) {
  put("options", "out\x1b[2J model.c\n");
  EXPECT_THAT(run("options options").out, StartsWith("output_dir = out\\x1b[2J\n"));
}

}  // namespace
