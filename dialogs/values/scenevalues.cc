/// @file
/// The scene dialog: video configuration.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kSceneLines[] = {
    "*titleLabel.labelString:\tScene",  "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:", "*videoLabel.labelString:\tSCENE_CFG_VIDEO",
    "*ntscBase.labelString:\tNTSC",     "*palBase.labelString:\tPAL",
    "*mpalBase.labelString:\tMPAL",     "*gammaBase.labelString:\tGAMMA",
    "*ditherBase.labelString:\tDITHER", "*divotBase.labelString:\tDIVOT",
};

void trace_video(const Item& toggle) {
  std::printf(" %s .\n", toggle.name().c_str());
  trace_value(toggle);
}

struct SceneRows : Rows<qi::Scene> {
  static std::vector<Row> all() {
    return {
        title("scene", &F::name, 20),
        separator("sep1"),
        flag_radio("video", &F::video, {{"ntsc", 0}, {"pal", 0x1}, {"mpal", 0x2}}, lowest_bit, trace_video),
        separator("sep2"),
        flag("gamma", 0x4, &F::video),
        flag("dither", 0x8, &F::video),
        flag("divot", 0x10, &F::video)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Scene>) {
  static const RecordDialog<qi::Scene> dialog({.lines = kSceneLines, .traced_call = "sceneChanged"},
                                              SceneRows::all(), {{&SceneRows::F::video, "cfg = %x\n"}});
  return dialog;
}

}  // namespace values
