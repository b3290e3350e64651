/// @file
/// The object dialog: state, group, priority, render settings, billboard link.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"
#include "dialogs/values/rendergroup.h"

namespace values {
namespace {

constexpr const char* kObjLines[] = {
    "*titleLabel.labelString:\tObj",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:\tName:",
    "type_gLabel.labelString:",
    "*state_activeLabel.labelString:\tACTIVE",
    "*typeLabel.labelString: type",
    "*groupLabel.labelString:",
    "*group_noneLabel.labelString: group  NONE",
    "*groupidLabel.labelString: group ID# (Hex)",
    "*priLabel.labelString:",
    "*pri_noneLabel.labelString:\tpriority  NONE",
    "*priorityLabel.labelString:\tset: (Hex)",
    "*obj_render_labelBase.labelString: for Fog",
    "*render_cycle_typeLabel.labelString:\trender_cycle_type",
    "*render_priLabel.labelString:",
    "*render_pri_swLabel.labelString:\trender_priority",
    "*render_pri_optLabel.labelString:\t",
    "*render_type0Label.labelString:\trender_type0",
    "*render_type1Label.labelString:\trender_type1",
    "*render_pri_gLabel.labelString:\t",
    "*have_bdLabel.labelString:",
    "*bd_yesBase.labelString:Have Link_Billboard",
};

/// A number that is 0 when the object has none; shown and entered in hexadecimal.
constexpr ToggleOrNumber or_none(const char* group, const char* toggle, const char* text) {
  return {.group = group,
          .toggle = toggle,
          .text = text,
          .columns = 10,
          .form = kPrefixedHex,
          .none = 0,
          .on_means_none = true,
          .trace = "\t%d\n"};
}

struct ObjRows : Rows<qi::Obj> {
  template <class Place>
  static Row render(std::string name, Place place, RenderUse use) {
    return made(name,
                [=](const qi::Obj& obj) {
                  return std::make_unique<objRenderGroup>(name, at(obj, place), use);
                })
        .stored_by(
            [=](qi::Obj& obj, Item& item, const Item&) { objRenderGroup::store(item, at(obj, place)); });
  }

  static std::vector<Row> all() {
    return {
        title("obj", &F::name),
        separator("sep1"),
        group("type_g", kHorizontalNoLabel,
              {toggle("state_active", &F::state).shown_by([](const qi::Obj& obj, Item& item) {
                 item.set_value({.on = (obj.fixed.state & 0xFF) != 0});
               }),
               option("type", {"NULL", "3D", "BILLBOARD"}, &F::type)}),
        separator("sep2"),
        toggle_or_number(or_none("group", "group_none", "groupid"), &F::group).stored_if_changed(),
        separator("sep3"),
        toggle_or_number(or_none("pri", "pri_none", "priority"), &F::priority).stored_if_changed(),
        separator("sep4"),
        render("render", &F::render, RenderUse::plain),
        separator("sep5").only_when(has_ext<qi::Obj>),
        label("obj_render_label").only_when(has_ext<qi::Obj>),
        render("renderfog", ext(&qi::ObjExt::Head::fog_render), RenderUse::fog).only_when(has_ext<qi::Obj>),
        separator("sep5"),
        group("have_bd", kHorizontal, {toggle("bd_yes", &F::billboard_link)})};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Obj>) {
  static const RecordDialog<qi::Obj> dialog({.lines = kObjLines, .traced_call = "objChanged"},
                                            ObjRows::all());
  return dialog;
}

}  // namespace values
