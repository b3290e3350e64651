/// @file
/// The panels of the material dialog: colours, and colour-combiner words in the QUIL and the KAVO style.
#pragma once

#include <string>

#include "items/item.h"
#include "qilib/extstructs.h"

namespace values {

/// What a material type says of the combiner words. Any other type counts as KAVO style, but has no panels.
inline constexpr Word kQuilStyle = 0;
inline constexpr Word kKavoStyle = 0x01010101;

/// One of a material's four combiner words.
struct CombinerWord {
  const char* name;
  Word qi::CombinerWords::*member;
};
inline constexpr CombinerWord kCombinerWords[] = {{"color_type0", &qi::CombinerWords::color_type0},
                                                  {"color_type1", &qi::CombinerWords::color_type1},
                                                  {"alpha_type0", &qi::CombinerWords::alpha_type0},
                                                  {"alpha_type1", &qi::CombinerWords::alpha_type1}};

/// The word that ten toggles stand for: bits 0 to 4, then bits 16 to 20; 0xFFFFFFFF when none is on.
Word getCCvalue(const items::Item& group);

/// The word that four menus of combiner inputs stand for, a in the most significant byte; 0xFFFFFFFF when
/// all four are on "None".
Word get64Value(const items::Item& group);

/// A colour as four numbers, after a label with the group's own name.
struct MatColor : items::Item {
  MatColor(const std::string& name, const QisRGBA& color);
};

/// A QUIL-style combiner word: a toggle for each colour source, then for each alpha source.
struct quilCCpanel : items::Item {
  quilCCpanel(std::string name, Word word);
  static Word word(const items::Item& panel) { return getCCvalue(panel); }
};

/// A menu of the console's combiner inputs.
struct kavoCCbutton : items::Item {
  explicit kavoCCbutton(std::string name);
  /// Shows an input code, of which the low byte counts. A code without an entry becomes an index beyond the
  /// menu.
  void setValue(Word code);
};

/// A KAVO-style combiner word: inputs a, b, c and d of the combiner's equation. A word that is not set shows
/// as "K5" in all four menus; only when all four are on "None" is it stored as not set.
struct kavoCCpanel : items::Item {
  kavoCCpanel(std::string name, Word word);
  static Word word(const items::Item& panel) { return get64Value(panel); }
};

}  // namespace values
