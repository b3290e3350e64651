/// @file
/// The material dialog: shading, colour combiner, colours, user flags.
#include "dialogs/values/combiner.h"
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kMatLines[] = {
    "*titleLabel.labelString:\tMat",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*shade_typeLabel.labelString:",
    "*lightLabel.labelString: shade_type",
    "*shadingLabel.labelString:",
    "*useLabel.labelString:",
    "*mat_typeLabel.labelString:",
    "*mat_type_fogLabel.labelString:",
    "*quilBase.labelString: QUIL style",
    "*kavoBase.labelString: KAVO style",
    "*quil_fogBase.labelString: QUIL style for fog",
    "*kavo_fogBase.labelString: KAVO style for fog",
    "*cc_gLabel.labelString:\t",
    "*cc_quilLabel.labelString:\tQUIL",
    "*cc_kavoLabel.labelString:\tKAVO",
    "*cc_g_fogLabel.labelString:\t",
    "*quil_color_type0Label.labelString:\tcolor type0",
    "*vtxBase.labelString:\tVTX",
    "*triBase.labelString:\tTRI",
    "*primBase.labelString:\tPRIM",
    "*tex0Base.labelString:\tTEX0",
    "*tex1Base.labelString:\tTEX1",
    "*vtx_alphaBase.labelString:\tvtx alpha",
    "*tri_alphaBase.labelString:\ttri alpha",
    "*prim_alphaBase.labelString:\tprim alpha",
    "*tex0_alphaBase.labelString:\ttex0 alpha",
    "*tex1_alphaBase.labelString:\ttex1 alpha",
    "*quil_color_type1Label.labelString:\tcolor type1",
    "*quil_alpha_type0Label.labelString:\talpha type0",
    "*quil_alpha_type1Label.labelString:\talpha type1",
    "*kavo_color_type0Label.labelString:color type0",
    "*cc_aLabel.labelString:cc_a",
    "*cc_bLabel.labelString:cc_b",
    "*cc_cLabel.labelString:cc_c",
    "*cc_dLabel.labelString:cc_d",
    "*kavo_color_type1Label.labelString:color type1",
    "*kavo_alpha_type0Label.labelString:alpha type0",
    "*kavo_alpha_type1Label.labelString:alpha type1",
    "*prim_colorLabel.labelString:",
    "*prim_colorBase.labelString: prim_color",
    "*prim_color_fogLabel.labelString:",
    "*prim_color_fogBase.labelString: prim_color_fog",
    "*ambientLabel.labelString:",
    "*ambientBase.labelString: ambient",
    "*emissionLabel.labelString:",
    "*emissionBase.labelString: emission",
    "*diffuseLabel.labelString:",
    "*diffuseBase.labelString: diffuse",
    "*redLabel.labelString: red",
    "*greenLabel.labelString:\tgreen",
    "*blueLabel.labelString:\tblue",
    "*alphaLabel.labelString:\talpha",
    "*usr_flag0Label.labelString: usr_flag0",
    "*usr_flag1Label.labelString: usr_flag1",
    "*usr_flag2Label.labelString: usr_flag2",
    "*usr_flag3Label.labelString: usr_flag3",
    "*usr_flag4Label.labelString: usr_flag4",
    "*usr_flag5Label.labelString: usr_flag5",
    "*usr_flag6Label.labelString: usr_flag6",
    "*usr_flag7Label.labelString: usr_flag7",
    "*usr_flag0Label.labelString: usr_flag0",
};

void store_shade_type(qi::Mat& mat, const Item& shade, const Item& /*top*/) {
  const auto index = [&](const char* name) { return static_cast<Word>(option_at(shade, name)); };
  mat.fixed.shade_type = index("light") + 16 * index("shading") + 256 * index("use");
}

struct MatRows : Rows<qi::Mat> {
  using Ext = qi::MatExt::Head;

  static Row shading(std::string name, std::vector<std::string> entries, Word shift) {
    return option(std::move(name), std::move(entries), &F::shade_type, 0xF, shift);
  }

  /// A colour. When one component has changed, all four are written, each at most 1.
  template <class Place>
  static Row color(std::string name, Place place) {
    return made(name, [=](const qi::Mat& mat) { return std::make_unique<MatColor>(name, at(mat, place)); })
        .stored_by([=](qi::Mat& mat, const Item& item, const Item&) { colorChanged(item, at(mat, place)); })
        .stored_if_changed();
  }

  /// The style of a combiner. Changing it clears the combiner's words, which mean nothing in the other style.
  template <class Style, class Combiner>
  static Row style(std::string name, std::string quil, std::string kavo, Style style, Combiner combiner) {
    return radio(std::move(name), {toggle(std::move(quil)), toggle(std::move(kavo))})
        .shown_by(
            [=](const qi::Mat& mat, Item& item) { show_first_or_second(item, at(mat, style) == kQuilStyle); })
        .stored_by([=](qi::Mat& mat, const Item& item, const Item&) {
          at(mat, combiner) = {};
          at(mat, style) = item.item(1).on() ? kKavoStyle : kQuilStyle;
        })
        .stored_if_changed();
  }

  /// One panel for each of the four combiner words.
  template <class Panel, class Style, class Combiner>
  static Row panels(const std::string& prefix, Word shown_style, Style style, Combiner combiner) {
    return group("cc_" + prefix, kVertical, {})
        .shown_by([=](const qi::Mat& mat, Item& item) {
          for (const CombinerWord& word : kCombinerWords)
            item.add(std::make_unique<Panel>(prefix + "_" + word.name, at(mat, combiner).*word.member));
        })
        .stored_by([=](qi::Mat& mat, const Item& item, const Item&) {
          for (const CombinerWord& word : kCombinerWords)
            if (const Item* const panel = item.find(prefix + "_" + word.name))
              at(mat, combiner).*word.member = Panel::word(*panel);
        })
        .only_when([=](const qi::Mat& mat) { return at(mat, style) == shown_style; });
  }

  /// The panels of the style that the record has. They are written whenever anything in the dialog has
  /// changed, except when the style has: then they still show words of the old one.
  template <class Style, class Combiner>
  static Row combiner(std::string name, std::string style_radio, Style style, Combiner words) {
    Row group = Rows::group(std::move(name), kVerticalNoLabel,
                            {panels<quilCCpanel>("quil", kQuilStyle, style, words),
                             panels<kavoCCpanel>("kavo", kKavoStyle, style, words)});
    group.store = [radio = std::move(style_radio), rows = group.rows](Qis& scene, qi::Mat& mat, Item& item,
                                                                      const Item& top) {
      const Item* const style_item = top.find(radio);
      if (style_item && style_item->changed()) return;
      store_rows(rows, scene, mat, item, top);
    };
    return group;
  }

  static Row user_flags(std::string name, std::size_t first) {
    std::vector<Row> texts;
    for (std::size_t i = first; i < first + 4; ++i)
      texts.push_back(text(
          "usr_flag" + std::to_string(i), 10, [i](auto& mat) -> auto& { return mat.fixed.usr_flags[i]; },
          kPrefixedHex));
    return group(std::move(name), kHorizontalNoLabel, std::move(texts)).stored_if_changed();
  }

  static std::vector<Row> all() {
    const auto version2 = has_ext<qi::Mat>;
    return {title("mat", &F::name),
            separator("sep"),
            group("shade_type", kHorizontal,
                  {shading("light", {"OFF", "LOCAL", "GLOBAL"}, 0), shading("shading", {"FLAT", "SMOOTH"}, 4),
                   shading("use", {"NO USE", "USE HILIGHTf", "USE REFLECT"}, 8)})
                .stored_by(store_shade_type),
            separator("sep"),
            color("ambient", ext(&Ext::ambient)).only_when(version2),
            color("emission", ext(&Ext::emission)).only_when(version2),
            color("diffuse", ext(&Ext::diffuse)).only_when(version2),
            separator("sep").only_when(version2),
            style("mat_type", "quil", "kavo", &F::mat_type, &F::combiner),
            combiner("cc_g", "mat_type", &F::mat_type, &F::combiner),
            separator("sep").only_when(version2),
            style("mat_type_fog", "quil_fog", "kavo_fog", ext(&Ext::mat_type_fog), ext(&Ext::combiner_fog))
                .only_when(version2),
            combiner("cc_g_fog", "mat_type_fog", ext(&Ext::mat_type_fog), ext(&Ext::combiner_fog))
                .only_when(version2),
            separator("sep"),
            color("prim_color", &F::prim_color),
            separator("sep"),
            color("prim_color_fog", ext(&Ext::prim_color_fog)).only_when(version2),
            separator("sep").only_when(version2),
            user_flags("u_flags0", 0),
            user_flags("u_flags1", 4)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Mat>) {
  static const RecordDialog<qi::Mat> dialog({.lines = kMatLines, .traced_call = "matChanged"},
                                            MatRows::all());
  return dialog;
}

}  // namespace values
