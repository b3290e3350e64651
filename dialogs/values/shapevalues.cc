/// @file
/// The shape dialog: drawing flags, and what geometry the shape has.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kShapeLines[] = {
    "*titleLabel.labelString:\tShape",     "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",    "*aliasLabel.labelString: ALIAS",
    "*aaBase.labelString:\t    ANTI",      "*raBase.labelString:\t    REDUCED",
    "*no_aliasBase.labelString:\tNONE",    "*z_bufferBase.labelString:\tZ-Buffer",
    "*frontBase.labelString:\tFRONT",      "*backBase.labelString:\tBACK",
    "*cullingLabel.labelString:\tCulling", "*vtxalphaBase.labelString:\tUse Vtx Alpha when using Fog",
};

std::string geometry(const Qis& scene, const qi::Shape& shape) {
  const Word tag = has_ext(scene, shape) ? shape.ext->head.deformer_tag : 0;
  const char* const kind = tag == qi::kEnvelopeTag  ? "Envelope"
                           : tag == qi::kClusterTag ? "ClusterShape"
                                                    : "TriGroup";
  return "link to " + std::string(kind) + "[" + shown(shape.fixed.geometry, kDecimal) + "]";
}

struct ShapeRows : Rows<qi::Shape> {
  static std::vector<Row> all() {
    return {
        title("shape", &F::name, 30),
        separator("sep1"),
        flag_radio("alias", &F::flags, {{"aa", 0x1}, {"ra", 0x2}, {"no_alias", 0}}, lowest_bit, trace_value),
        separator("sep2"),
        flag("z_buffer", 0x4, &F::flags),
        separator("sep3"),
        group("culling", kHorizontal, {flag("front", 0x20, &F::flags), flag("back", 0x10, &F::flags)}),
        separator("sep4"),
        flag("vtxalpha", 0x100, &F::flags),
        separator("sep5"),
        label("kind", geometry)};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Shape>) {
  static const RecordDialog<qi::Shape> dialog({.lines = kShapeLines, .traced_call = "shapeChanged"},
                                              ShapeRows::all(), {{&ShapeRows::F::flags, "type = %x\n"}});
  return dialog;
}

}  // namespace values
