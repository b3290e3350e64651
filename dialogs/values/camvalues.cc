/// @file
/// The camera dialog: projection, clipping volume, control objects.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kCamLines[] = {
    "*titleLabel.labelString:\tCam",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:\tCAMERA TYPE",
    "*perspBase.labelString:\tperspective",
    "*orthoBase.labelString:\tortho",
    "*clipLabel.labelString:    clipping plane",
    "*nearLabel.labelString:    near",
    "*farLabel.labelString:     far",
    "*rightLabel.labelString:   right",
    "*leftLabel.labelString:    left",
    "*topLabel.labelString:     top",
    "*bottomLabel.labelString:  bottom",
    "*valuesLabel.labelString:",
    "*fovyLabel.labelString:    fovy",
    "*aspectLabel.labelString:  aspect",
    "*scaleLabel.labelString:   scale",
    "*objectsLabel.labelString:\tCamera Control Objects",
    "*lookatLabel.labelString:  lookat",
    "*eyeLabel.labelString:\teye",
    "*upLabel.labelString:\tup",
};

constexpr Word kPerspective = 0, kOrthographic = 1;

void show_type(const qi::Cam& cam, Item& type) { show_first_or_second(type, cam.fixed.type == kPerspective); }

void store_type(qi::Cam& cam, const Item& type, const Item& /*top*/) {
  cam.fixed.type = on_at(type, "persp") ? kPerspective : kOrthographic;
}

struct CamRows : Rows<qi::Cam> {
  static std::vector<Row> all() {
    return {
        title("cam", &F::name),
        separator("sep1"),
        radio("type", {toggle("persp"), toggle("ortho")}).shown_by(show_type).stored_by(store_type),
        separator("sep2"),
        group("clip", kVertical,
              {number("near", 5, &F::near), number("far", 5, &F::far), number("right", 5, &F::right),
               number("left", 5, &F::left), number("top", 5, &F::top), number("bottom", 5, &F::bottom)})
            .stored_if_changed(),
        separator("sep"),
        group("values", kVertical,
              {number("fovy", 5, &F::fovy), number("aspect", 5, &F::aspect), number("scale", 5, &F::scale)})
            .stored_if_changed(),
        separator("sep"),
        group("objects", kVertical,
              {text("lookat", 5, &F::lookat, kDecimal), text("eye", 5, &F::eye, kDecimal),
               text("up", 5, &F::up, kDecimal)})
            .stored_if_changed()};
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Cam>) {
  static const RecordDialog<qi::Cam> dialog({.lines = kCamLines, .traces_node_index = true}, CamRows::all());
  return dialog;
}

}  // namespace values
