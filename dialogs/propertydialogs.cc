/// @file
/// The dialogs by their kinds, and what three of them show beside their items.
#include "dialogs/propertydialogs.h"

#include <Xm/Form.h>

#include "dialogs/values/numbers.h"
#include "editor/model/currentscene.h"
#include "viewkit/preflayout.h"
#include "viewkit/vktabpanel.h"

namespace {

template <class Key>
std::unique_ptr<PropertyDialog> make(const char* name, unsigned long index) {
  if constexpr (std::is_constructible_v<KindDialog<Key>, const char*, unsigned long>) {
    return std::make_unique<KindDialog<Key>>(name, index);
  } else {
    return std::make_unique<KindDialog<Key>>(name);
  }
}

constexpr auto kMakers = per_kind([]<class Key>() { return &make<Key>; });

/// The colour that a text gives as RRGGBBAA or, without `alpha`, as RRGGBB. A number too large for RRGGBB is
/// read as RRGGBBAA in either case.
QisRGBA colorOf(const std::string& hex, bool alpha) {
  const Word word = values::word_of(hex, values::kHex.base);
  const int blue = alpha || word > 0xFFFFFF ? 8 : 0;
  const auto component = [&](int shift) { return static_cast<float>(word >> shift & 0xFF) / 255; };
  return {component(blue + 16), component(blue + 8), component(blue), 1};
}

}  // namespace

template <>
void EnvDialog::showMore(Widget) {
  addSwatch("fog.fog_color", [](const items::Item& fog) { return colorOf(fog.text(), true); });
  addSwatch("fill_color.fill_color_rgb", [](const items::Item& fill) { return colorOf(fill.text(), false); });
}

template <>
void MatDialog::showMore(Widget) {
  for (const char* name : {"ambient", "emission", "diffuse", "prim_color", "prim_color_fog"})
    addSwatch(name, [](const items::Item& color) {
      QisRGBA shown;
      values::colorChanged(color, shown);
      return shown;
    });
}

/// A tab panel, which carries no values.
template <>
void JointDialog::showMore(Widget dialog) {
  const Widget form = XtVaCreateManagedWidget("form", xmFormWidgetClass, dialog, nullptr);
  VkTabPanel& tab = keep(std::make_unique<VkTabPanel>("tab", form, true));
  tab.addTab("default");
  tab.show();
  XtVaSetValues(tab.baseWidget(), XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
                XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  XtVaSetValues(form, XmNheight, viewkit::naturalSize(tab.baseWidget()).height, nullptr);
  addBelowItems(form);
}

std::unique_ptr<PropertyDialog> makePropertyDialog(const values::DialogOn& on) {
  const auto& [dialog, number] = on;
  if (!dialog->require_record(*qis, number)) return nullptr;
  const NodeKind& kind = dialog->kind();
  auto made = kMakers[kind_place(kind)](kind.dialog, number);
  made->setTitle(made->node().c_str());
  return made;
}
