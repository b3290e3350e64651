/// @file
/// The environment dialog's colours.
#include "dialogs/propertydialogs.h"

#include "dialogs/values/numbers.h"

namespace {

/// The colour that stands in a text as RRGGBBAA or, without `alpha`, as RRGGBB. What is too large for that
/// carries an alpha byte all the same.
QisRGBA colorOf(const std::string& hex, bool alpha) {
  const Word word = values::word_of(hex, values::kHex.base);
  const int blue = alpha || word > 0xFFFFFF ? 8 : 0;
  const auto component = [&](int shift) { return static_cast<float>(word >> shift & 0xFF) / 255; };
  return {component(blue + 16), component(blue + 8), component(blue), 1};
}

}  // namespace

template <>
Widget EnvDialog::createDialog(Widget parent) {
  const Widget dialog = createFrom(values::dialog_of<qi::Env>(), parent);
  addSwatch("fog.fog_color", [](const items::Item& fog) { return colorOf(fog.text(), true); });
  addSwatch("fill_color.fill_color_rgb", [](const items::Item& fill) { return colorOf(fill.text(), false); });
  return dialog;
}
