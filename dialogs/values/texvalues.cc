/// @file
/// The texture dialog: image form, texel depth, wrap modes, filter.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kTexLines[] = {
    "*titleLabel.labelString:\tTex",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:\tName:",
    "*formLabel.labelString: Form",
    "*form_iBase.labelString:\tI",
    "*form_iaBase.labelString:\tIA",
    "*form_ciBase.labelString:\tCI",
    "*form_yuvBase.labelString:\tYUV",
    "*form_rgbBase.labelString:\tRGB",
    "*form_rgbaBase.labelString:\tRGBA",
    "*depthLabel.labelString: Depth",
    "*depth_4Base.labelString:\t4bit",
    "*depth_8Base.labelString:\t8bit",
    "*depth_16Base.labelString:\t16bit",
    "*depth_32Base.labelString:\t32bit",
    "*tex_wrap_sLabel.labelString:\tWrap_S",
    "*wrap_sBase.labelString:\tWRAP",
    "*clamp_sBase.labelString:\tCLAMP",
    "*mirror_sBase.labelString:\tMIRROR",
    "*tex_wrap_tLabel.labelString:\tWrap_T",
    "*wrap_tBase.labelString:\tWRAP",
    "*clamp_tBase.labelString:\tCLAMP",
    "*mirror_tBase.labelString:\tMIRROR",
    "*quil2Label.labelString:",
    "*texfilterLabel.labelString: Texture Filter",
    "*persLabel.labelString: Perspective Correction",
};

enum Form : Word { kI, kIA, kCI, kYUV, kRGB, kRGBA };
enum Depth : Word { k4Bit = 0, k8Bit = 0x100, k16Bit = 0x200, k32Bit = 0x400 };
constexpr Word kFormBits = 0x7;

/// The depth nearest to the wanted one that images of this form can have.
Word possible_depth(Word form, Word depth) {
  switch (form) {
    case kI:
    case kCI:
      return depth > k8Bit ? Word{k8Bit} : depth;
    case kIA:
      return depth > k16Bit ? Word{k16Bit} : depth;
    case kYUV:
      return k16Bit;
    default:
      return depth < k16Bit ? Word{k16Bit} : depth;
  }
}

/// Corrects the depth in the record alone: the dialog goes on showing what was picked.
void correct_depth(qi::Tex& tex) {
  Word& type = tex.fixed.tex_type;
  const Word form = type & kFormBits;
  type = form | possible_depth(form, type & ~kFormBits);
}

std::string mipmap_level(const qi::Tex& tex) {
  return "mipmap level = " + shown(tex.ext->head.mipmap_level, kDecimal);
}

std::string palette_use(const qi::Tex& tex) {
  return tex.ext->head.color_palette != 0 ? "Use Color Palette" : "No Use Color Palette";
}

/// "wrap_s" adds nothing to the word and is not traced.
void trace_clamp_or_mirror(const Item& toggle) {
  if (toggle.name() != "wrap_s") trace_value(toggle);
}

struct TexRows : Rows<qi::Tex> {
  using Ext = qi::TexExt::Head;

  static std::vector<Row> all() {
    return {title("tex", &F::name),
            separator("sep1"),
            flag_radio("form", &F::tex_type,
                       {{"form_i", kI},
                        {"form_ia", kIA},
                        {"form_ci", kCI},
                        {"form_yuv", kYUV},
                        {"form_rgb", kRGB},
                        {"form_rgba", kRGBA}},
                       whole_value, trace_value),
            separator("sep2"),
            flag_radio("depth", &F::tex_type,
                       {{"depth_4", k4Bit}, {"depth_8", k8Bit}, {"depth_16", k16Bit}, {"depth_32", k32Bit}},
                       lowest_bit, trace_value),
            separator("sep3"),
            flag_radio("tex_wrap_s", &F::wrap_s, {{"wrap_s", 0}, {"clamp_s", 0x1}, {"mirror_s", 0x2}},
                       lowest_bit, trace_clamp_or_mirror),
            separator("sep4"),
            flag_radio("tex_wrap_t", &F::wrap_t, {{"wrap_t", 0}, {"clamp_t", 0x100}, {"mirror_t", 0x200}},
                       lowest_bit),
            separator("sep5").only_when(has_ext<qi::Tex>),
            group("quil2", kVertical,
                  {option("texfilter", {"POINT", "BILERP", "AVERAGE"}, ext(&Ext::filter)),
                   toggle("pers", ext(&Ext::perspective))})
                .only_when(has_ext<qi::Tex>),
            label("mipmaplevel", mipmap_level).only_when(has_ext<qi::Tex>),
            label("usepalette", palette_use).only_when(has_ext<qi::Tex>)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Tex>) {
  static const RecordDialog<qi::Tex> dialog(
      {.lines = kTexLines, .traced_call = "texChanged", .traces_top = true}, TexRows::all(),
      {{&TexRows::F::tex_type, "tex_type = %x\n", correct_depth},
       {&TexRows::F::wrap_s, "wrap_s = %x\n"},
       {&TexRows::F::wrap_t, "wrap_t = %x\n"}});
  return dialog;
}

}  // namespace values
