/// @file
/// The animation dialog: loop count, and the channels and constraints, which are only shown.
#include <map>

#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"
#include "editor/model/nodenames.h"

namespace values {
namespace {

constexpr const char* kAnimLines[] = {
    "*titleLabel.labelString:\tAnim",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*anim_loopLabel.labelString: number of loop times of animation",
    "*infLabel.labelString:\tEndless",
    "*loop_numLabel.labelString: loop number",
    "*quil2Label.labelString:",
    "*rotate_axisLabel.labelString:Rotate Axis",
    "*rotateLabel.labelString:Rotate",
    "*rotate_xLabel.labelString:X",
    "*rotate_yLabel.labelString:Y",
    "*rotate_zLabel.labelString:Z",
    "*orientation_xyLabel.labelString:Orientation XY",
    "*translationLabel.labelString:Translation",
    "*scaleLable.labelString:Scale",
    "*uniqueBase.labelString:Unique",
    "*classicBase.labelString:Classic",
    "*no_useBase.labelString:No use QUIL2",
    "*orient_cLabel.labelString:",
    "*orient_c_onLabel.labelString:Orientation Constraint",
    "*orient_c_nodeLabel.labelString:",
    "*dir_cLabel.labelString:",
    "*dir_c_onLabel.labelString:Direction Constraint",
    "*dir_c_nodeLabel.labelString:",
    "*upv_cLabel.labelString:",
    "*upv_c_onLabel.labelString:Upvector Constraint",
    "*upv_c_nodeLabel.labelString:",
    "*pref_axis_cLabel.labelString:",
    "*pref_axis_c_onLabel.labelString:Preferred Axis Constraint",
    "*pref_axis_c_nodeLabel.labelString:",
    "*pos_cLabel.labelString:",
    "*pos_c_onLabel.labelString:Position Constraint",
    "*pos_c_nodeLabel.labelString:",
    "*scale_c_gLabel.labelString:",
    "*scale_cLabel.labelString:",
    "*scale_c_uniqBase.labelString:Unique Scale Constraint",
    "*scale_c_classicBase.labelString:Classic Scale Constraint",
    "*scale_c_nodeLabel.labelString:",
};

// What an animation drives itself, and the constraints for what it leaves free.
enum Flag : Word {
  kRotateAxis = 0x1,
  kRotateX = 0x2,
  kRotateY = 0x4,
  kRotateZ = 0x8,
  kRotateAny = kRotateX | kRotateY | kRotateZ,
  kOrientationXY = 0x10,
  kTranslation = 0x20,
  kUniqueScale = 0x40,
  kClassicScale = 0x80,
  kOrientationConstraint = 0x100,
  kDirectionConstraint = 0x200,
  kUpVectorConstraint = 0x400,
  kPreferredAxisConstraint = 0x800,
  kPositionConstraint = 0x1000,
  kUniqueScaleConstraint = 0x2000,
  kClassicScaleConstraint = 0x4000
};

Word flags(const qi::Anim& anim) { return anim.ext->head.flags; }

auto any_of(Word bits, Word but_none_of = 0) {
  return [=](const qi::Anim& anim) { return (flags(anim) & bits) != 0 && (flags(anim) & but_none_of) == 0; };
}
auto none_of(Word bits) {
  return [=](const qi::Anim& anim) { return flags(anim) != 0 && (flags(anim) & bits) == 0; };
}

std::string type_text(const qi::Anim& anim) {
  static const std::map<Word, std::string> kTypes{
      {0, "STATIC"}, {2, "FULL FRAME"}, {3, "KEY FRAME"}, {4, "BILLBOARD OBJECT"}};
  const auto type = kTypes.find(anim.fixed.type);
  return "animation type = " + (type == kTypes.end() ? "" : type->second);
}

std::string frame_rate(const qi::Anim& anim) {
  return "frame rate = " + shown(anim.fixed.frame_rate, kDecimal);
}

/// Of the two scale constraints, the unique one counts.
void show_scale_constraint(const qi::Anim& anim, Item& group) {
  Item& radio = group.item(0);
  Item& node = group.item(1);
  if (flags(anim) & kUniqueScaleConstraint) {
    radio.item(0).set_value({.on = true});
    node.set_value({.text = nodename(anim.ext->head.unique_scale.node)});
  } else if (flags(anim) & kClassicScaleConstraint) {
    radio.item(1).set_value({.on = true});
    node.set_value({.text = nodename(anim.ext->head.classic_scale.node)});
  }
}

struct AnimRows : Rows<qi::Anim> {
  /// A toggle that shows a flag; what is below "quil2" is never stored.
  static Row shown_flag(std::string name, Word bit) {
    return toggle(std::move(name)).shown_by([bit](const qi::Anim& anim, Item& item) {
      item.set_value({.on = (flags(anim) & bit) != 0});
    });
  }

  /// A constraint that is offered while the animation drives none of `driven` itself.
  static Row constraint(const std::string& name, Word driven, Word bit,
                        qi::AnimExt::Target qi::AnimExt::Head::*target) {
    Row node = text(name + "_node", 5).shown_by([=](const qi::Anim& anim, Item& item) {
      if (flags(anim) & bit) item.set_value({.text = nodename((anim.ext->head.*target).node)});
    });
    return group(name, kHorizontal, {shown_flag(name + "_on", bit), std::move(node)})
        .only_when(none_of(driven));
  }

  static std::vector<Row> channels() {
    using Head = qi::AnimExt::Head;
    return {
        label("no_use").only_when([](const qi::Anim& anim) { return flags(anim) == 0; }),
        shown_flag("rotate_axis", kRotateAxis).only_when(any_of(kRotateAxis)),
        group("rotate", kHorizontal,
              {shown_flag("rotate_x", kRotateX), shown_flag("rotate_y", kRotateY),
               shown_flag("rotate_z", kRotateZ)})
            .only_when(any_of(kRotateAny, kRotateAxis)),
        shown_flag("orientation_xy", kOrientationXY)
            .only_when(any_of(kOrientationXY, kRotateAxis | kRotateAny)),
        shown_flag("translation", kTranslation).only_when(any_of(kTranslation)),
        radio("scale", {shown_flag("unique", kUniqueScale), shown_flag("classic", kClassicScale)})
            .only_when(any_of(kUniqueScale | kClassicScale)),
        // Which rotations rule out which constraint differs from row to row, on purpose.
        constraint("orient_c", kRotateAxis | kRotateY | kRotateZ, kOrientationConstraint, &Head::orientation),
        constraint("dir_c", kRotateAxis | kRotateX | kRotateY, kDirectionConstraint, &Head::direction),
        constraint("upv_c", kRotateAxis | kRotateX | kRotateZ, kUpVectorConstraint, &Head::up_vector),
        constraint("pref_axis_c", kRotateAxis | kRotateX | kRotateY, kPreferredAxisConstraint,
                   &Head::preferred_axis),
        constraint("pos_c", kTranslation, kPositionConstraint, &Head::position),
        group(
            "scale_c_g", kHorizontal,
            {radio("scale_c", {toggle("scale_c_uniq"), toggle("scale_c_classic")}), text("scale_c_node", 5)})
            .shown_by(show_scale_constraint)
            .only_when(none_of(kUniqueScale | kClassicScale)),
    };
  }

  static std::vector<Row> all() {
    return {title("anim", &F::name),
            separator("sep1"),
            label("anim_type", type_text),
            label("frame_rate", frame_rate),
            separator("sep2"),
            toggle_or_number({.group = "anim_loop",
                              .toggle = "inf",
                              .text = "loop_num",
                              .columns = 4,
                              .form = kDecimal,
                              .none = 0,
                              .on_means_none = true},
                             &F::anim_loop),
            separator("sep3").only_when(has_ext<qi::Anim>),
            group("quil2", kVertical, channels()).only_shown().only_when(has_ext<qi::Anim>)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Anim>) {
  static const RecordDialog<qi::Anim> dialog({.lines = kAnimLines}, AnimRows::all());
  return dialog;
}

}  // namespace values
