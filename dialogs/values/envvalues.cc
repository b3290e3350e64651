/// @file
/// The environment dialog: fog, fills, backgrounds.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kEnvLines[] = {
    "*titleLabel.labelString:\tEnv",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*fogLabel.labelString: fog",
    "*usefogLabel.labelString: USE FOG",
    "*fog_colorLabel.labelString: fog color : RRGGBBAA(Hex)",
    "*fog_nearLabel.labelString: for near (0 - 1000)",
    "*fog_farLabel.labelString: fog far (0 - 1000)",
    "*fill_colorLabel.labelString: Fill frame buffer with color",
    "*do_fill_colorLabel.labelString: Fill Frame",
    "*fill_color_rgbLabel.labelString: RRGGBB(Hex)",
    "*fill_depthLabel.labelString: Fill Z-buffer with color",
    "*do_fill_depthLabel.labelString: Fill Z-Buffer",
    "*fill_depth_rgbLabel.labelString: RRGGBB(Hex)",
    "*bg_sprite_imgLabel.labelString: BG color",
    "*bg_color_texLabel.labelString: USE Texture",
    "*bg_color_indexLabel.labelString: ID# in TexList",
    "*bg_depth_imgLabel.labelString: BG depth",
    "*bg_depth_texLabel.labelString: USE Texture",
    "*bg_depth_indexLabel.labelString: ID# in TexList",
};

constexpr Word kFarthestFog = 1000;

/// Without fog, its colour and distances stay as they were.
void store_fog(qi::Env& env, const Item& fog, const Item& /*top*/) {
  env.fixed.use_fog = on_at(fog, "usefog");
  if (!env.fixed.use_fog) return;
  env.fixed.fog_color = word_of(text_at(fog, "fog_color"), kHex.base);
  env.fixed.fog_near = std::min(word_of(text_at(fog, "fog_near"), kDecimal.base), kFarthestFog);
  env.fixed.fog_far = std::min(word_of(text_at(fog, "fog_far"), kDecimal.base), kFarthestFog);
}

/// A toggle, and the value that counts while it is on.
constexpr ToggleOrNumber optional(const char* group, const char* toggle, const char* text, int columns,
                                  NumberForm form) {
  return {.group = group, .toggle = toggle, .text = text, .columns = columns, .form = form, .none = kUnset};
}

struct EnvRows : Rows<qi::Env> {
  static std::vector<Row> all() {
    return {
        title("env", &F::name),
        separator("sep1"),
        group("fog", kVertical,
              {toggle("usefog", &F::use_fog), text("fog_color", 5, &F::fog_color, kHex),
               text("fog_near", 5, &F::fog_near, kDecimal), text("fog_far", 5, &F::fog_far, kDecimal)})
            .stored_by(store_fog),
        separator("sep2"),
        toggle_or_number(optional("fill_color", "do_fill_color", "fill_color_rgb", 10, kHex), &F::fill_color),
        separator("sep"),
        toggle_or_number(optional("fill_depth", "do_fill_depth", "fill_depth_rgb", 10, kHex), &F::fill_depth),
        separator("sep"),
        toggle_or_number(optional("bg_sprite_img", "bg_color_tex", "bg_color_index", 5, kDecimal),
                         &F::bg_color_image),
        separator("sep"),
        toggle_or_number(optional("bg_depth_img", "bg_depth_tex", "bg_depth_index", 5, kDecimal),
                         &F::bg_depth_image)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Env>) {
  static const RecordDialog<qi::Env> dialog({.lines = kEnvLines, .traces_node_index = true}, EnvRows::all());
  return dialog;
}

}  // namespace values
