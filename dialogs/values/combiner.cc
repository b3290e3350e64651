/// @file
/// Combiner words in and out of panels.
#include "dialogs/values/combiner.h"

#include <utility>

#include "dialogs/values/numbers.h"

namespace values {

using items::Item;
using items::ItemKind;

namespace {

constexpr int kToggles = 10;
/// The bit of toggle k: five colour sources in the low half, five alpha sources in the high half.
constexpr Word toggle_bit(int k) { return Word{1} << (k < kToggles / 2 ? k : 16 + k - kToggles / 2); }

constexpr int kCodeOfK5 = 21;
constexpr int kSkippedCode = 19;  // no menu has an entry that writes it
constexpr Word kAllNone = 0x16161616;

}  // namespace

Word getCCvalue(const Item& group) {
  Word word = 0;
  for (int k = 0; k < kToggles && static_cast<std::size_t>(k) < group.size(); ++k)
    if (group.item(static_cast<std::size_t>(k)).on()) word |= toggle_bit(k);
  return word == 0 ? kUnset : word;
}

Word get64Value(const Item& group) {
  Word word = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const int index = i < group.size() ? group.item(i).option() : 0;
    const int code = index < kSkippedCode ? index : index + 1;
    word = word << 8 | (static_cast<Word>(code) & 0xFF);
  }
  return word == kAllNone ? kUnset : word;
}

MatColor::MatColor(const std::string& name, const QisRGBA& color)
    : Item(ItemKind::group, name, {.horizontal = true}) {
  add(ItemKind::label, name);
  const std::pair<const char*, float> components[] = {
      {"red", color.red}, {"green", color.green}, {"blue", color.blue}, {"alpha", color.alpha}};
  for (const auto& [component, value] : components)
    add(ItemKind::text, component, {.columns = 10}).set_value({.text = shown(value)});
}

quilCCpanel::quilCCpanel(std::string name, Word word)
    : Item(ItemKind::group, std::move(name), {.horizontal = true}) {
  const char* const toggles[kToggles] = {"vtx",       "tri",       "prim",       "tex0",       "tex1",
                                         "vtx_alpha", "tri_alpha", "prim_alpha", "tex0_alpha", "tex1_alpha"};
  for (int k = 0; k < kToggles; ++k)
    add(ItemKind::toggle, toggles[k]).set_value({.on = word != kUnset && (word & toggle_bit(k)) != 0});
}

kavoCCbutton::kavoCCbutton(std::string name)
    : Item(ItemKind::option, std::move(name),
           {.entries = {"comb",     "Tex0",     "Tex1",    "prim",  "Shade", "Env",      "comb_a", "Tex0_a",
                        "Tex1_a",   "Prim_a",   "shade_a", "Env_a", "Lod",   "Prim lod", "1",      "0",
                        "key cent", "key scal", "Noise",   "K4",    "K5",    "None"}}) {}

void kavoCCbutton::setValue(Word code) {
  switch (code & 0xFF) {
    case 20:
      return set_value({.option = 19});
    case 21:
      return set_value({.option = 20});
    case 255:
      return set_value({.option = 21});
    default:
      return set_value({.option = static_cast<int>(code & 0xFF)});
  }
}

kavoCCpanel::kavoCCpanel(std::string name, Word word)
    : Item(ItemKind::group, std::move(name), {.horizontal = true}) {
  Word shift = 24;
  for (const char* input : {"cc_a", "cc_b", "cc_c", "cc_d"}) {
    auto button = std::make_unique<kavoCCbutton>(input);
    button->setValue(word == kUnset ? kCodeOfK5 : word >> shift);
    shift -= 8;
    add(std::move(button));
  }
}

}  // namespace values
