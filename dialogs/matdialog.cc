/// @file
/// The material dialog's colours.
#include "dialogs/propertydialogs.h"

#include "dialogs/values/numbers.h"

namespace {

constexpr const char* kColors[] = {"ambient", "emission", "diffuse", "prim_color", "prim_color_fog"};

}  // namespace

template <>
Widget MatDialog::createDialog(Widget parent) {
  const Widget dialog = createFrom(values::dialog_of<qi::Mat>(), parent);
  for (const char* name : kColors)
    addSwatch(name, [](const items::Item& color) {
      QisRGBA shown;
      values::colorChanged(color, shown);
      return shown;
    });
  return dialog;
}
