/// @file
/// The watch pointer is on the window whenever a command of the converters' menus waits for a program.
#include "tests/support/case_name.h"
#include "tests/window/converterfixture.h"

namespace {

struct Wait {
  const char* name;
  std::vector<std::string> menu;
  const char* call;  ///< the stand-in that is waited for
};

class WaitingFor : public ConverterTest, public testing::WithParamInterface<Wait> {};

TEST_P(WaitingFor, KeepsTheWindowBusyUntilTheEnd) {
  openScene("robot");
  hold(GetParam().call);
  editor_.chooseMenu(GetParam().menu);
  awaitHeld();
  EXPECT_TRUE(isBusy());
  release();
  editor_.settle();
  EXPECT_FALSE(isBusy());
}

const std::vector<std::string> kQuickPreview = {"KAVO tool", "KAVO Quick preview(Emu-Board)"};
const std::vector<std::string> kFullPreview = {"KAVO tool", "Kavo preview(Emu-Board)"};
const std::vector<std::string> kViewerPreview = {"QUIL2 tool", "Preview(DX-VIEWER)"};

INSTANTIATE_TEST_SUITE_P(
    Programs, WaitingFor,
    testing::Values(
        Wait{"TheEndOfLoaders", {"KAVO tool", "kill [pb]xsend"}, "scenes: killbxsend"},
        Wait{"TheEndOfLoadersBeforeAPreview", kQuickPreview, "scenes: killpxsend"},
        Wait{"TheCleanImage", kFullPreview, "scenes: pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin"},
        Wait{"Make", kFullPreview, "kavoprev: make"},
        Wait{"TheQuickPreviewer", kQuickPreview, "kavoprev/quickprev: pxsend -s quickprev.kavo"},
        Wait{"TheQuickPreview", kQuickPreview, "kavoprev/quickprev: pxsend -s -o0x200000 model.bin"},
        Wait{"TheViewersConverter", kViewerPreview, "zexview: quil2zex model.quil model.zex"},
        Wait{"TheViewersLoader", kViewerPreview, "zexview: bxsend -n -s 0x200000 zexview.bin"}),
    CaseName());

class WaitingForAConversion : public ConverterTest {};

TEST_F(WaitingForAConversion, KeepsTheWindowBusyUntilTheEnd) {
  openScene("skeleton");
  hold("zexview: quil2zex model.quil ./model.c");
  editor_.chooseMenu({"QUIL2 tool", "Convert to ZEX", "Set Options and Go"});
  editor_.click("quil2zexDialog/OK");
  awaitHeld();
  EXPECT_TRUE(isBusy());
  release();
  editor_.settle();
  EXPECT_FALSE(isBusy());
}

}  // namespace
