/// @file
/// The environment dialog's colours.
#include "dialogs/propertydialogs.h"

#include "dialogs/values/numbers.h"

namespace {

/// The text of a group in the list that is named so; null when there is none.
VkPrefText* textIn(const VkPrefGroup* list, const char* group, const char* text) {
  const auto* const found = list ? dynamic_cast<VkPrefGroup*>(list->item(std::string(group))) : nullptr;
  return found ? dynamic_cast<VkPrefText*>(found->item(std::string(text))) : nullptr;
}

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
  VkPrefText* const fog = textIn(item(), "fog", "fog_color");
  addSwatch(fog, {fog}, [fog] { return colorOf(fog->getValue(), true); });
  VkPrefText* const fill = textIn(item(), "fill_color", "fill_color_rgb");
  addSwatch(fill, {fill}, [fill] { return colorOf(fill->getValue(), false); });
  return dialog;
}
