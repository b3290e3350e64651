/// @file
/// The light dialog: ambient colour.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kLightLines[] = {
    "*titleLabel.labelString:\tLight",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*light_typeLabel.labelString:      light type",
    "*type_dirBase.labelString:        Directional",
    "*type_posBase.labelString:        Positional",
    "*ambiLabel.labelString:    ambient light",
    "*ambi_rLabel.labelString:  ambi_r",
    "*ambi_gLabel.labelString:  ambi_g",
    "*ambi_bLabel.labelString:  ambi_b",
    "*dir_light_numLabel.labelString:   number of dir/pos lights",
};

std::string light_count(const qi::Light& light) {
  return "number of dir/pos lights = " + std::to_string(light.fixed.sub_count);
}

std::string light_type(const qi::Light& light) {
  return light.fixed.type == qi::Light::kDirectional ? "light type = Directional" : "light type = Positional";
}

// The colour may be brighter than 1, unlike a material's.
struct LightRows : Rows<qi::Light> {
  static std::vector<Row> all() {
    return {title("light", &F::name),
            separator("sep1"),
            group("ambi", kVertical,
                  {number("ambi_r", 20, &F::ambient_red), number("ambi_g", 20, &F::ambient_green),
                   number("ambi_b", 20, &F::ambient_blue)}),
            separator("sep2"),
            label("dir_light_num", light_count),
            label("light_type", light_type)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Light>) {
  static const RecordDialog<qi::Light> dialog({.lines = kLightLines, .traces_node_index = true},
                                              LightRows::all());
  return dialog;
}

}  // namespace values
