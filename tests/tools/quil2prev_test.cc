/// @file
/// The command lines of viewer-format conversion, its previews and the viewer script, to the blank.
#include "tools/quil2prev.h"

#include "tests/tools/options_fixture.h"

namespace {

constexpr char kAllOptions[] =
    " -scale 1.5 -vtxcache 16 -vtxload 8 -vtxseg 5 -imgseg 6 -tlutseg 7 -noreduct  -fogoff ";

TEST_F(CommandLines, ZexOptionsAreEmptyWithoutAny) {
  std::string out = "what was there";
  EXPECT_EQ(&cmd_quil2zex(out), &out);
  EXPECT_EQ(out, "");
}

TEST_F(CommandLines, ZexOptionsStandInTheirOwnOrderWithoutTheEnvelopeSegment) {
  set_all();
  std::string out;
  EXPECT_EQ(cmd_quil2zex(out), kAllOptions);
}

TEST_F(CommandLines, ZexPreviewsWithoutOptionsKeepTheDoubledBlank) {
  EXPECT_EQ(cmd_zex_preview(ZexBoard::dx_viewer),
            "cd ../zexview; ./quil2zex  model.quil model.zex; ./zex2bin scene.zex model.zex zexview.bin;"
            " bxsend -n -e zexview.KAVO; bxsend -n -s 0x200000 zexview.bin");
  EXPECT_EQ(cmd_zex_preview(ZexBoard::emu_board),
            "cd ../zexview; ./quil2zex  model.quil model.zex; ./zex2bin scene.zex model.zex zexview.bin;"
            " pxsend -s zexview.KAVO; pxsend -s -o 0x200000 zexview.bin");
}

TEST_F(CommandLines, ZexPreviewsPassTheOptionsToTheConverter) {
  set_all();
  for (const ZexBoard board : {ZexBoard::dx_viewer, ZexBoard::emu_board})
    EXPECT_EQ(cmd_zex_preview(board).find("cd ../zexview; ./quil2zex " + std::string(kAllOptions) +
                                          " model.quil model.zex; ./zex2bin "),
              0U);
}

TEST_F(CommandLines, ZexConversionWritesTheOutputFileOfTheOptions) {
  EXPECT_EQ(cmd_zex(), "cd ../zexview; ./quil2zex  model.quil ");
  set_all();
  EXPECT_EQ(cmd_zex(), "cd ../zexview; ./quil2zex " + std::string(kAllOptions) + " model.quil out/o.c");
}

TEST_F(CommandLines, ScriptWithBothPathsEmptyIsTheViewersOwn) {
  EXPECT_EQ(script_scene(), "../zexview/model.quil");
  EXPECT_EQ(cmd_script(), "(cd ../zexview/; ../zexview/prev) &");
}

TEST_F(CommandLines, ScriptRunsInItsOwnDirectoryUnquoted) {
  set_all();
  EXPECT_EQ(script_scene(), "/opt/viewer/scene.quil");
  EXPECT_EQ(cmd_script(), "(cd /opt/viewer/; /opt/viewer/show it) &");
  set_option(ngops.script_path, "prev");
  EXPECT_EQ(cmd_script(), "(cd ./; prev) &");
}

}  // namespace
