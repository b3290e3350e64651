/// @file
/// The material dialog's colours.
#include "dialogs/propertydialogs.h"

#include "dialogs/prefitems.h"
#include "dialogs/values/numbers.h"

namespace {

constexpr const char* kColors[] = {"ambient", "emission", "diffuse", "prim_color", "prim_color_fog"};

}  // namespace

template <>
Widget MatDialog::createDialog(Widget parent) {
  const Widget dialog = createFrom(values::dialog_of<qi::Mat>(), parent);
  for (const char* name : kColors) {
    auto* const color = item() ? dynamic_cast<VkPrefGroup*>(item()->item(std::string(name))) : nullptr;
    if (!color) continue;
    addSwatch(color, {color->item(1), color->item(2), color->item(3)}, [color] {
      QisRGBA shown;
      values::colorChanged(valuesOf(*color), shown);
      return shown;
    });
  }
  return dialog;
}
