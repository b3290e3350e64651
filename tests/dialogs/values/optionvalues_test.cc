/// @file
/// The converters' dialogs without windows: what they show of the options, and what they write back.
#include "dialogs/values/optionvalues.h"

#include <gmock/gmock.h>

#include "dialogs/values/itemtext.h"
#include "tests/support/scratch_home.h"
#include "tests/tools/options_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;
using values::Item;
using values::OptionsDialog;

class OptionValues : public CommandLines {
 protected:
  /// Changes items and applies the dialog. @returns the trace.
  std::string apply(const OptionsDialog& dialog,
                    const std::vector<std::pair<std::string, std::string>>& changes) {
    const auto top = dialog.items();
    for (const auto& [path, text] : changes) EXPECT_EQ(values::edit_text(*top, path, text), std::nullopt);
    CaptureStdout();
    CaptureStderr();
    dialog.apply(*top);
    GetCapturedStderr();
    return GetCapturedStdout();
  }
  std::string kept() const { return read_file(home_.options_file()); }

  static std::vector<std::string> namesIn(const Item& group) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < group.size(); ++i) names.push_back(group.item(i).name());
    return names;
  }
  static std::string shown(const Item& top, const std::string& path) {
    const Item* const item = top.find(path);
    return item ? values::shown_text(*item, {}) : "no " + path;
  }

  const ScratchHome home_;
  const OptionsDialog& gfx_ = values::quil2gfx_dialog();
  const OptionsDialog& zex_ = values::quil2zex_dialog();
};

TEST_F(OptionValues, DisplayListDialogHasItsItemsInOrder) {
  const auto top = gfx_.items();
  EXPECT_STREQ(gfx_.name, "quil2gfxDialog");
  EXPECT_EQ(top->name(), "prefList");
  EXPECT_THAT(namesIn(*top), ElementsAre("title", "sep1", "options", "sep2", "regmask", "sep3", "outmask",
                                         "sep4", "segment"));
  EXPECT_THAT(namesIn(*top->find("options")),
              ElementsAre("dirName", "output", "header", "label", "scale", "quilinfo", "nocomdef", "vtxshare",
                          "vtxcache", "vtxload", "strictflat", "noalignpad", "outobj", "nogeomclr",
                          "strictcidx", "noreduct"));
  EXPECT_THAT(namesIn(*top->find("regmask")), ElementsAre("bit0", "bit1", "bit2", "bit3", "bit4"));
  EXPECT_THAT(namesIn(*top->find("outmask")), ElementsAre("maskh", "tlut", "bitmap", "deform", "shape",
                                                          "vtxlst", "gfxlst", "objs", "anims", "scene"));
  EXPECT_THAT(namesIn(*top->find("segment")), ElementsAre("vtxseg", "imgseg", "tlutseg"));
  EXPECT_EQ(top->find("options.scale")->look().columns, 20);
  EXPECT_EQ(top->find("segment.vtxseg")->look().columns, 5);
  for (const char* group : {"regmask", "outmask", "segment"})
    EXPECT_TRUE(top->find(group)->look().horizontal) << group;
}

TEST_F(OptionValues, ViewerDialogHasItsItemsInOrder) {
  const auto top = zex_.items();
  EXPECT_STREQ(zex_.name, "quil2zexDialog");
  EXPECT_THAT(namesIn(*top), ElementsAre("title", "sep1", "options", "sep2", "segment"));
  EXPECT_THAT(namesIn(*top->find("options")),
              ElementsAre("dirName", "output", "scale", "vtxcache", "vtxload", "noreduct", "fogoff"));
  EXPECT_THAT(namesIn(*top->find("segment")), ElementsAre("vtxseg", "envseg", "imgseg", "tlutseg"));
}

TEST_F(OptionValues, EveryItemHasALabel) {
  for (const OptionsDialog* dialog : {&gfx_, &zex_}) {
    values::for_each_shown(*dialog->items(), [&](const std::string& path, const Item& item) {
      const bool on_base = item.kind() == values::ItemKind::label ||
                           (item.kind() == values::ItemKind::toggle && !item.look().force_label_format);
      EXPECT_NE(values::label_line(dialog->lines, item.name(), on_base ? "Base" : "Label"), nullptr) << path;
    });
  }
  EXPECT_STREQ(values::label_line(gfx_.lines, "title", "Base"), "Convert Options");
  EXPECT_STREQ(values::label_line(zex_.lines, "title", "Base"), "Convert Options for quil2zex");
  EXPECT_STREQ(values::label_line(gfx_.lines, "output", "Label"), "Output File Name (*.c)");
  EXPECT_STREQ(values::label_line(zex_.lines, "output", "Label"), "Output ZEX File Name");
  EXPECT_STREQ(values::label_line(gfx_.lines, "segment", "Label"), " Segment Number of Gfx Data");
  EXPECT_STREQ(values::label_line(zex_.lines, "segment", "Label"), " Segment Number Used");
  for (const OptionsDialog* dialog : {&gfx_, &zex_})
    EXPECT_STREQ(values::label_line(dialog->lines, "fname", "Label"),
                 "Ignore this dialog, Read Options from File");
}

TEST_F(OptionValues, ItemsShowTheOptions) {
  set_all();
  const auto gfx = gfx_.items();
  EXPECT_EQ(shown(*gfx, "options.dirName"), "out");
  EXPECT_EQ(shown(*gfx, "options.label"), "my label");
  EXPECT_EQ(shown(*gfx, "options.noalignpad"), "1");
  EXPECT_EQ(shown(*gfx, "segment.tlutseg"), "7");
  const auto zex = zex_.items();
  EXPECT_EQ(shown(*zex, "options.fogoff"), "1");
  EXPECT_EQ(shown(*zex, "segment.envseg"), "4");
  EXPECT_FALSE(gfx->changed());
}

TEST_F(OptionValues, AFlagIsOnWhenItsFieldHoldsItsName) {
  set_option(ngops.nocomdef, "x-nocomdefy");
  set_option(ngops.strictflat, "yes");
  EXPECT_EQ(shown(*gfx_.items(), "options.nocomdef"), "1");
  EXPECT_EQ(shown(*gfx_.items(), "options.strictflat"), "0");
}

TEST_F(OptionValues, MasksShowTheirBits) {
  set_option(ngops.regmask, "9");
  set_option(ngops.outmask, "513 and more");
  const auto top = gfx_.items();
  EXPECT_EQ(shown(*top, "regmask.bit0") + shown(*top, "regmask.bit1") + shown(*top, "regmask.bit2") +
                shown(*top, "regmask.bit3") + shown(*top, "regmask.bit4"),
            "10010");
  EXPECT_EQ(shown(*top, "outmask.maskh") + shown(*top, "outmask.tlut") + shown(*top, "outmask.scene"), "101");
  set_option(ngops.regmask, "junk");
  EXPECT_EQ(shown(*gfx_.items(), "regmask.bit0"), "0");
}

TEST_F(OptionValues, CycleModeAndPrimitiveColorAreStoredAsNine) {
  apply(gfx_, {{"regmask.bit0", "1"}, {"regmask.bit3", "1"}});
  EXPECT_STREQ(ngops.regmask, "9");
  EXPECT_STREQ(ngops.outmask, "") << "a group that has not changed is not written";
}

TEST_F(OptionValues, EveryToggleOfTheOutputMaskHasItsBit) {
  const auto top = gfx_.items();
  int value = 1;
  for (const std::string& name : namesIn(*top->find("outmask"))) {
    ngops = NgOps{};
    apply(gfx_, {{"outmask." + name, "1"}});
    EXPECT_EQ(ngops.outmask, std::to_string(value)) << name;
    value *= 2;
  }
  apply(gfx_, {{"outmask.scene", "0"}});
  EXPECT_STREQ(ngops.outmask, "0");
}

TEST_F(OptionValues, EveryTextAndFlagGoesToItsOwnField) {
  for (const OptionsDialog* dialog : {&gfx_, &zex_}) {
    for (const values::OptionGroup& group : dialog->groups) {
      if (group.mask) continue;
      for (const values::OptionRow& row : group.rows) {
        ngops = NgOps{};
        apply(*dialog, {{std::string(group.name) + "." + row.name, row.flag ? "1" : "12"}});
        std::vector<std::string> set;
        for (const NamedOption& option : named_options())
          if (!option.text.empty()) set.push_back(std::string(option.name) + "=" + std::string(option.text));
        if (row.only_shown)
          EXPECT_THAT(set, testing::IsEmpty());
        else
          EXPECT_THAT(set, ElementsAre(row.name + std::string("=") +
                                       (row.flag ? "-" + std::string(row.name) : "12")));
      }
    }
  }
}

TEST_F(OptionValues, FlagsAreClearedWithTheirToggle) {
  set_all();
  apply(gfx_, {{"options.noreduct", "0"}});
  EXPECT_STREQ(ngops.noreduct, "");
  EXPECT_STREQ(ngops.nocomdef, "-nocomdef");
}

TEST_F(OptionValues, TheOutputFileIsTracedAndTheFileWritten) {
  set_option(ngops.output, "old.c");
  const std::string trace = apply(gfx_, {{"options.output", "new.c"}});
  EXPECT_THAT(
      trace, StartsWith("ngops(before) = old.c\nngops(after) = new.c\nGet Values from Dialog.\n\n\nnew.c\n"));
  EXPECT_THAT(kept(), StartsWith("\nnew.c\n-header \n"));
}

TEST_F(OptionValues, NothingChangedStillEchoesAndWrites) {
  const std::string trace = apply(zex_, {});
  EXPECT_THAT(trace, StartsWith("Get Values from Dialog.\n"));
  EXPECT_THAT(trace, Not(HasSubstr("ngops(")));
  EXPECT_THAT(kept(), HasSubstr("-envseg \n"));
}

TEST_F(OptionValues, TheDirectoryIsNotWrittenBackWhateverIsTyped) {
  set_option(ngops.output_dir, "out/");
  apply(gfx_, {{"options.dirName", "/elsewhere"}});
  apply(zex_, {{"options.dirName", "/elsewhere"}});
  EXPECT_STREQ(ngops.output_dir, "out/");
}

TEST_F(OptionValues, NamesWhatTheFileCantGiveBack) {
  set_option(ngops.output_dir, "out/");
  set_option(ngops.output, "model.c");
  const auto lost = [&](const char* path, const char* text) {
    const auto top = gfx_.items();
    EXPECT_FALSE(values::edit_text(*top, path, text));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto labels = gfx_.apply(*top);
    testing::internal::GetCapturedStdout();
    std::string told;
    for (const std::string& label : labels) told += "The options file can't give this back: " + label + "\n";
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::EndsWith(told));
    return labels;
  };
  EXPECT_THAT(lost("options.label", "two words"), ElementsAre());
  EXPECT_THAT(lost("options.output", "my model.c"), ElementsAre("Output File Name (*.c)"));
  EXPECT_THAT(lost("options.output", "model.c"), ElementsAre());
  EXPECT_THAT(lost("options.header", "model.h"), ElementsAre());
  EXPECT_THAT(lost("options.output", ""), ElementsAre("Header File Name (*.h)", "Output File Name (*.c)"));
  EXPECT_THAT(lost("options.output", "model.c"), ElementsAre());
  EXPECT_THAT(lost("options.outobj", std::string(120, 'x').c_str()), ElementsAre("Output Specific Object"));
}

TEST_F(OptionValues, PastedLinesAndLongTextsAreCut) {
  apply(gfx_, {{"options.label", "one\n-scale 9"}, {"options.scale", std::string(100, '1')}});
  EXPECT_STREQ(ngops.label, "one");
  EXPECT_EQ(ngops.scale, std::string(31, '1'));
}

}  // namespace
