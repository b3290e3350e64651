/// @file
/// The rules of the material dialog and its panels.
#include "dialogs/values/combiner.h"
#include "dialogs/values/numbers.h"
#include "tests/dialogs/values/dialog_rule.h"

namespace {

using values::Item;
using values::ItemKind;

class MatRule : public DialogRule {};

TEST_P(MatRule, Holds) { check(); }

constexpr char kColor0[] = "cc_g.cc_quil.quil_color_type0";
#define IN_COLOR0(toggle) "cc_g.cc_quil.quil_color_type0." toggle
#define IN_KAVO0(button) "cc_g.cc_kavo.kavo_color_type0." button
#define IN_QUIL_FOG0(toggle) "cc_g_fog.cc_quil.quil_color_type0." toggle
#define IN_FOG0(button) "cc_g_fog.cc_kavo.kavo_color_type0." button
#define IN_FOG1(button) "cc_g_fog.cc_kavo.kavo_color_type1." button

const Rule kMatRules[] = {
    {"MatPrimitiveColourAloneRewritesShadeTypeAndCombiner",
     "mat_1",
     {{5, 0xFFFFF212}, {6, 0xFFE0FFE1}, {8, 0}, {kExt + 13, kUnset}},
     {{"shade_type.light", "GLOBAL"}},
     {{"prim_color.red", "1"}},
     {{5, 0x212}, {6, 0x00000001}, {8, kUnset}, {10, f(1)}, {kExt + 13, 0x15151515}}},
    {"MatShadeBeyondItsMenusIsKept",
     "mat_1",
     {{5, 0xFED}},
     {{"shade_type.light", "13"}, {"shade_type.shading", "14"}, {"shade_type.use", "15"}},
     {{"u_flags0.usr_flag0", "1"}},
     {{14, 1}}},
    {"MatQuilToKavoClearsTheCombiner",
     "mat_1",
     {},
     {},
     {{"mat_type.kavo", "1"}, {IN_COLOR0("prim"), "1"}},
     {{4, 0x01010101}, {6, 0}, {7, 0}, {8, 0}, {9, 0}},
     {{IN_COLOR0("prim"), "1"}}},
    {"MatKavoAndBackClearsTheCombinerToo",
     "mat_1",
     {},
     {},
     {{"mat_type.kavo", "1"}, {"mat_type.quil", "1"}},
     {{6, 0}, {7, 0}, {8, 0}, {9, 0}}},
    {"MatFogStyleHasAFlagOfItsOwn",
     "mat_1",
     {},
     {},
     {{"mat_type_fog.quil_fog", "1"}, {IN_COLOR0("vtx"), "0"}},
     {{6, 0x00010002}, {kExt + 12, 0}, {kExt + 13, 0}, {kExt + 14, 0}, {kExt + 15, 0}, {kExt + 16, 0}}},
    {"MatStyleDoesNotKeepTheFogPanelsFromBeingStored",
     "mat_1",
     {},
     {},
     {{"mat_type.kavo", "1"}, {IN_FOG0("cc_a"), "Noise"}, {IN_FOG1("cc_d"), "prim"}},
     {{4, 0x01010101}, {6, 0}, {7, 0}, {8, 0}, {9, 0}, {kExt + 13, 0x12030405}, {kExt + 14, 0x0E0F1103}}},
    {"MatOfAnotherTypeShowsKavoWithoutPanels",
     "mat_1",
     {{4, 5}, {6, 77}},
     {{"mat_type.kavo", "1"}, {"mat_type.quil", "0"}, {kColor0, "(no such item)"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}}},
    {"MatOfAnotherTypeCanBecomeQuil",
     "mat_1",
     {{4, 5}},
     {},
     {{"mat_type.quil", "1"}},
     {{4, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 0}}},
    {"MatQuilWordShowsItsBits",
     "mat_1",
     {{6, 0x00010003}},
     {{IN_COLOR0("vtx"), "1"},
      {IN_COLOR0("tri"), "1"},
      {IN_COLOR0("prim"), "0"},
      {IN_COLOR0("vtx_alpha"), "1"},
      {IN_COLOR0("tri_alpha"), "0"}},
     {},
     {}},
    {"MatUnsetQuilWordShowsNothingOn",
     "mat_1",
     {{6, kUnset}},
     {{IN_COLOR0("vtx"), "0"}, {IN_COLOR0("tex1_alpha"), "0"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}}},
    {"MatFogQuilWordsShowTheirBitsAndAreStored",
     "mat_1",
     {{kExt + 12, 0}, {kExt + 13, 0x00010003}},
     {{IN_QUIL_FOG0("vtx"), "1"},
      {IN_QUIL_FOG0("tri"), "1"},
      {IN_QUIL_FOG0("prim"), "0"},
      {IN_QUIL_FOG0("vtx_alpha"), "1"},
      {IN_FOG0("cc_a"), "(no such item)"}},
     {{IN_QUIL_FOG0("tex1_alpha"), "1"}, {IN_QUIL_FOG0("tri"), "0"}},
     {{kExt + 13, 0x00110001}, {kExt + 14, 0x000F0012}, {kExt + 15, 0x00150001}, {kExt + 16, kUnset}}},
    {"MatMainKavoWordShowsItsInputsAndReadsBack",
     "mat_1",
     {{4, 0x01010101}, {6, 0x01030405}, {7, 0x01030405}, {8, 0x01030405}, {9, 0x01030405}},
     {{IN_KAVO0("cc_a"), "Tex0"},
      {IN_KAVO0("cc_b"), "prim"},
      {IN_KAVO0("cc_c"), "Shade"},
      {IN_KAVO0("cc_d"), "Env"},
      {kColor0, "(no such item)"}},
     {{"cc_g.cc_kavo.kavo_alpha_type1.cc_d", "K4"}},
     {{9, 0x01030414}}},
    {"MatKavoWordShowsItsInputs",
     "mat_1",
     {{kExt + 13, 0x01030405}},
     {{IN_FOG0("cc_a"), "Tex0"},
      {IN_FOG0("cc_b"), "prim"},
      {IN_FOG0("cc_c"), "Shade"},
      {IN_FOG0("cc_d"), "Env"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}}},
    {"MatKavoByte20IsK4",
     "mat_1",
     {{kExt + 13, 0x14141414}},
     {{IN_FOG0("cc_a"), "K4"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}}},
    {"MatKavoByte19IsK4AndBecomes20",
     "mat_1",
     {{kExt + 13, 0x13000000}},
     {{IN_FOG0("cc_a"), "K4"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}, {kExt + 13, 0x14000000}}},
    {"MatKavoByte255IsNoneAndBecomes22",
     "mat_1",
     {{kExt + 13, 0xFF000000}},
     {{IN_FOG0("cc_a"), "None"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}, {kExt + 13, 0x16000000}}},
    {"MatUnsetKavoWordShowsK5",
     "mat_1",
     {{kExt + 13, kUnset}},
     {{IN_FOG0("cc_a"), "K5"}, {IN_FOG0("cc_b"), "K5"}, {IN_FOG0("cc_c"), "K5"}, {IN_FOG0("cc_d"), "K5"}},
     {},
     {}},
    {"MatFourTimesNoneIsUnset",
     "mat_1",
     {{kExt + 13, 0}},
     {},
     {{IN_FOG0("cc_a"), "None"},
      {IN_FOG0("cc_b"), "None"},
      {IN_FOG0("cc_c"), "None"},
      {IN_FOG0("cc_d"), "None"}},
     {{kExt + 13, kUnset}}},
    {"MatKavoBytesBeyondTheMenuKeepTheirIndex",
     "mat_1",
     {{kExt + 14, 0x1617FE00}},
     {{IN_FOG1("cc_a"), "22"}, {IN_FOG1("cc_b"), "23"}, {IN_FOG1("cc_c"), "254"}},
     {{"prim_color.alpha", "1"}},
     {{13, f(1)}, {kExt + 14, 0x1718FF00}},
     {{IN_FOG1("cc_a"), "22"}}},
    {"MatColoursAreAtMostOne",
     "mat_1",
     {},
     {},
     {{"prim_color.red", "1.5"},
      {"prim_color.green", "-0.25"},
      {"prim_color.blue", "white"},
      {"prim_color.alpha", "1e300"}},
     {{10, f(1)}, {11, f(-0.25f)}, {12, 0}, {13, f(1)}}},
    {"MatChangedColourRewritesAllFour",
     "mat_1",
     {{11, f(0.1234567f)}, {kExt, f(7)}},
     {{"ambient.red", "7"}},
     {{"prim_color.red", "0"}},
     {{10, 0}, {11, f(0.123457f)}}},
    {"MatFlagsAreHexadecimal",
     "mat_1",
     {},
     {},
     {{"u_flags0.usr_flag0", "0xff"}, {"u_flags0.usr_flag1", "10"}, {"u_flags1.usr_flag7", "zero"}},
     {{14, 0xff}, {15, 0x10}, {21, 0}}},
};

INSTANTIATE_TEST_SUITE_P(Values, MatRule, testing::ValuesIn(kMatRules), CaseName());

std::unique_ptr<Item> panel(ItemKind kind, const std::vector<int>& values) {
  auto group = std::make_unique<Item>(ItemKind::group, "panel");
  for (const int value : values) group->add(kind, "item").set_value({.on = value != 0, .option = value});
  return group;
}

TEST(CombinerWord, OfToggles) {
  EXPECT_EQ(values::getCCvalue(*panel(ItemKind::toggle, {0, 0, 0, 0, 0, 0, 0, 0, 0, 1})), 0x00100000u);
  EXPECT_EQ(values::getCCvalue(*panel(ItemKind::toggle, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0})), 0xFFFFFFFFu);
  EXPECT_EQ(values::getCCvalue(*panel(ItemKind::toggle, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1})), 0x001F001Fu);
  EXPECT_EQ(values::getCCvalue(*panel(ItemKind::toggle, {1, 0, 0, 0, 1, 1, 0, 0, 0, 0})), 0x00010011u);
}

TEST(CombinerWord, OfMenus) {
  EXPECT_EQ(values::get64Value(*panel(ItemKind::option, {18, 19, 20, 21})), 0x12141516u);
  EXPECT_EQ(values::get64Value(*panel(ItemKind::option, {21, 21, 21, 21})), 0xFFFFFFFFu);
  EXPECT_EQ(values::get64Value(*panel(ItemKind::option, {0, 1, 2, 18})), 0x00010212u);
}

TEST(CombinerWord, OfPanelsThatLackItems) {
  EXPECT_EQ(values::getCCvalue(*panel(ItemKind::toggle, {1})), 1u);
  EXPECT_EQ(values::get64Value(*panel(ItemKind::option, {1})), 0x01000000u);
  QisRGBA color{1, 1, 1, 1};
  values::colorChanged(Item(ItemKind::group, "color"), color);
  EXPECT_EQ(color.red, 0);
  EXPECT_EQ(color.alpha, 0);
}

TEST_F(ValuesTest, OfTwoDialogsOnOneRecordTheLaterApplyWins) {
  Opened first = open("mat_1"), second = open("mat_1");
  edit(first, "prim_color.red", "0.125");
  edit(first, "u_flags0.usr_flag0", "1");
  edit(second, "prim_color.red", "0.75");
  apply(second);
  apply(first);
  EXPECT_EQ(qis->mat_list.records[1].fixed.prim_color.red, 0.125f);
  edit(second, "u_flags1.usr_flag4", "9");
  second.top->find("prim_color")->applied();
  apply(second);
  EXPECT_EQ(qis->mat_list.records[1].fixed.prim_color.red, 0.125f) << "unchanged in the second dialog";
  EXPECT_EQ(qis->mat_list.records[1].fixed.usr_flags[0], 1u);
  EXPECT_EQ(qis->mat_list.records[1].fixed.usr_flags[4], 9u);
}

/// A dialog that is open goes on showing the panels of the old style.
TEST_F(ValuesTest, PanelsOfANewStyleAppearWhenTheDialogIsOpenedAgain) {
  Opened mat = open("mat_1");
  edit(mat, "mat_type.kavo", "1");
  edit(mat, "mat_type_fog.quil_fog", "1");
  apply(mat);
  EXPECT_EQ(shown(mat, IN_KAVO0("cc_a")), "(no such item)");
  EXPECT_EQ(shown(mat, IN_QUIL_FOG0("vtx")), "(no such item)");

  Opened again = open("mat_1");
  EXPECT_EQ(shown(again, kColor0), "(no such item)");
  EXPECT_EQ(shown(again, IN_FOG0("cc_a")), "(no such item)");
  for (const char* word : {"color_type0", "color_type1", "alpha_type0", "alpha_type1"}) {
    EXPECT_EQ(shown(again, std::string("cc_g.cc_kavo.kavo_") + word + ".cc_d"), "comb") << word;
    EXPECT_EQ(shown(again, std::string("cc_g_fog.cc_quil.quil_") + word + ".tex1_alpha"), "0") << word;
  }
  edit(again, IN_KAVO0("cc_a"), "Tex0");
  edit(again, IN_QUIL_FOG0("vtx"), "1");
  apply(again);
  EXPECT_EQ(qis->mat_list.records[1].fixed.combiner.color_type0, 0x01000000u);
  EXPECT_EQ(qis->mat_list.records[1].ext->head.combiner_fog.color_type0, 1u);
}

/// The other dialog still shows the panels of the style that the first one changed.
TEST_F(ValuesTest, PanelsOfAStyleThatTheRecordLeftAreNotStored) {
  Opened quil = open("mat_1");
  change("mat_1", "mat_type.kavo", "1");
  edit(quil, "prim_color.red", "1");
  edit(quil, IN_COLOR0("prim"), "1");
  apply(quil);
  EXPECT_EQ(qis->mat_list.records[1].fixed.mat_type, 0x01010101u);
  EXPECT_EQ(qis->mat_list.records[1].fixed.combiner.color_type0, 0u);
}

}  // namespace
