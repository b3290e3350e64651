/// @file
/// The command lines of display-list conversion and its previews, to the blank.
#include "tools/kavoprev.h"

#include "tests/tools/options_fixture.h"

namespace {

constexpr char kAllOptions[] =
    "(cd ../kavoprev ; ./quil2gfx  -scale 1.5 -quilinfo out/info -vtxshare 3 -vtxcache 16 -vtxload 8"
    " -regmask 9 -nocomdef  -strictflat  -noalignpad  -nogeomclr  -outobj arm -outmask 512 -strictcidx "
    " -vtxseg 5 -imgseg 6 -tlutseg 7 -noreduct ";

TEST_F(CommandLines, ConversionWithoutOptionsNamesTheScratchSceneAndNoOutput) {
  EXPECT_EQ(cmd_kavo_dl(), "(cd ../kavoprev ; ./quil2gfx  quilpv )");
}

TEST_F(CommandLines, ConversionAddsHeaderAndLabelAfterTheOptions) {
  set_all();
  EXPECT_EQ(cmd_kavo_dl(), std::string(kAllOptions) + " -header out/h.h -label my label quilpv out/o.c)");
}

TEST_F(CommandLines, ConversionAddsTheOutputDirectoryOnceItEndsWithASlash) {
  set_option(ngops.output_dir, "/data/");
  set_option(ngops.header, "h.h");
  set_option(ngops.output, "o.c");
  EXPECT_EQ(cmd_kavo_dl(), "(cd ../kavoprev ; ./quil2gfx  -header /data/h.h quilpv /data/o.c)");
}

TEST_F(CommandLines, FullPreviewsDifferByABlank) {
  EXPECT_EQ(cmd_kavo_preview(kKavoEmuBoard),
            "(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c ; make)");
  EXPECT_EQ(cmd_kavo_preview(kKavoDxViewer),
            "(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c; make)");
}

TEST_F(CommandLines, PreviewsIgnoreHeaderLabelAndOutputOfTheOptions) {
  set_all();
  EXPECT_EQ(cmd_kavo_preview(kKavoDxViewer),
            std::string(kAllOptions) + " -label prev -header model.h quilpv model.c; make)");
  EXPECT_EQ(cmd_kavo_quick_preview(),
            std::string(kAllOptions) + " -label prev -b quilpv quickprev/model.bin)");
}

TEST_F(CommandLines, QuickPreviewWithoutOptions) {
  EXPECT_EQ(cmd_kavo_quick_preview(),
            "(cd ../kavoprev ; ./quil2gfx  -label prev -b quilpv quickprev/model.bin)");
}

TEST_F(CommandLines, LoadersOfTheEmuBoard) {
  EXPECT_STREQ(kKavoEmuBoard.load_clean, "pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin");
  EXPECT_EQ(kKavoEmuBoard.check_rom, nullptr);
  EXPECT_STREQ(kKavoEmuBoard.load_preview, "(cd ../kavoprev ; pxsend) &");
  EXPECT_STREQ(kKavoEmuBoard.quick_start,
               "(cd ../kavoprev/quickprev; pxsend -s -o0x200000 clean.bin; pxsend -s quickprev.kavo)");
  EXPECT_STREQ(kKavoEmuBoard.quick_load, "(cd ../kavoprev/quickprev ; pxsend -s -o0x200000 model.bin)");
}

TEST_F(CommandLines, LoadersOfTheDxViewer) {
  EXPECT_STREQ(kKavoDxViewer.load_clean, "bxsend -n -v -s0x200000 ../kavoprev/quickprev/clean.bin");
  EXPECT_STREQ(kKavoDxViewer.check_rom, "cd ../kavoprev");
  EXPECT_STREQ(kKavoDxViewer.load_preview, "(cd ../kavoprev ; bxsend rom)&");
  EXPECT_STREQ(kKavoDxViewer.quick_start,
               "(cd ../kavoprev/quickprev; bxsend -n -v -s0x200000 clean.bin; bxsend -n -v quickprev.kavo)");
  EXPECT_STREQ(kKavoDxViewer.quick_load, "(cd ../kavoprev/quickprev ; bxsend -n -v -s0x200000 model.bin)");
}

TEST_F(CommandLines, ConversionLongerThan512CharactersIsWhole) {
  set_option(ngops.output_dir, std::string(255, 'd'));
  set_option(ngops.outobj, std::string(255, 'o'));
  set_option(ngops.header, std::string(31, 'h'));
  EXPECT_EQ(cmd_kavo_dl(), "(cd ../kavoprev ; ./quil2gfx  -outobj " + std::string(255, 'o') + " -header " +
                               std::string(255, 'd') + "/" + std::string(31, 'h') + " quilpv " +
                               std::string(255, 'd') + "/)");
}

}  // namespace
