/// @file
/// The parts of a dialog's description: rows that say of each item what it shows of a record and what it
/// writes back.
#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dialogs/values/dialog.h"
#include "dialogs/values/numbers.h"
#include "editor/model/recordnames.h"
#include "qilib/qis.h"
#include "qilib/sizes.h"

namespace values {

/// A hook as one that is given the scene first, which few ask for.
template <class Hook>
auto in_scene(Hook hook) {
  return [hook = std::move(hook)](auto& scene, auto&... rest) {
    if constexpr (std::is_invocable_v<const Hook&, decltype(scene), decltype(rest)...>) {
      return hook(scene, rest...);
    } else {
      return hook(rest...);
    }
  };
}

/// One item of the dialog for records of type R, with the rows of the items in it. Its hooks may leave out
/// the scene.
template <class R>
struct Row {
  using Condition = std::function<bool(const Qis& scene, const R& record)>;
  using Make = std::function<std::unique_ptr<Item>(const R& record)>;
  using Show = std::function<void(const Qis& scene, const R& record, Item& item)>;
  using Store = std::function<void(Qis& scene, R& record, Item& item, const Item& top)>;

  std::string name;
  Make make;
  std::vector<Row> rows = {};
  Condition condition = {};  ///< whether the record has such an item
  Show show = {};            ///< fills the item, and may give it items of its own
  Store store = {};          ///< writes the item back, with all in it; without one, `rows` do
  bool only_if_changed = false;
  bool is_greyed = false;

  template <class Hook>
  Row only_when(Hook holds) && {
    condition = in_scene(std::move(holds));
    return std::move(*this);
  }
  template <class Hook>
  Row shown_by(Hook hook) && {
    show = in_scene(std::move(hook));
    return std::move(*this);
  }
  template <class Hook>
  Row stored_by(Hook hook) && {
    store = in_scene(std::move(hook));
    return std::move(*this);
  }
  /// It is never written, with all that is in it, and looks it.
  Row only_shown() && {
    is_greyed = true;
    return std::move(*this).stored_by([](R&, const Item&, const Item&) {});
  }
  /// Nothing of it is written unless something in it changed; then all of it is.
  Row stored_if_changed() && {
    only_if_changed = true;
    return std::move(*this);
  }
};

/// Gives a group those items that the record has, filled from it.
template <class R>
void add_items(Item& group, const std::vector<Row<R>>& rows, const Qis& scene, const R& record) {
  for (const Row<R>& row : rows) {
    if (row.condition && !row.condition(scene, record)) continue;
    Item& item = group.add(row.make(record));
    add_items(item, row.rows, scene, record);
    if (row.show) row.show(scene, record, item);
    if (row.is_greyed) item.set_activated(false);
  }
}

template <class R>
void store_rows(const std::vector<Row<R>>& rows, Qis& scene, R& record, Item& group, const Item& top);

/// Writes an item back as its row says. Nothing happens when the record, since the item was made, has become
/// one that has no such item.
template <class R>
void store_item(const Row<R>& row, Qis& scene, R& record, Item& item, const Item& top) {
  if (row.condition && !row.condition(scene, record)) return;
  if (row.only_if_changed && !item.changed()) return;
  if (row.store) return row.store(scene, record, item, top);
  store_rows(row.rows, scene, record, item, top);
}

/// Writes back those items of a group that are there.
template <class R>
void store_rows(const std::vector<Row<R>>& rows, Qis& scene, R& record, Item& group, const Item& top) {
  for (const Row<R>& row : rows)
    if (Item* const found = group.find(row.name)) store_item(row, scene, record, *found, top);
}

inline const Look kHorizontal{.horizontal = true};
inline const Look kVertical{};
inline const Look kHorizontalNoLabel{.horizontal = true, .no_label = true};
inline const Look kVerticalNoLabel{.no_label = true};

/// The word or number of a record that an item is about. A place is a member of the record's fixed words, or
/// a function from the record to it.
template <class R, class Place>
auto& at(R& record, const Place& place) {
  if constexpr (std::is_member_object_pointer_v<Place>) {
    return record.fixed.*place;
  } else {
    return place(record);
  }
}

/// The place of a member of a version-2 structure's head. Only for rows of records that have the structure.
template <class Head, class T>
auto ext(T Head::*member) {
  return [member](auto& record) -> auto& { return record.ext->head.*member; };
}

/// Whether the scene is of version 2 and the record has its version-2 structure; one that was made in
/// memory may have none.
template <class R>
bool has_ext(const Qis& scene, const R& record) {
  return qiQUILver(scene.header) >= qi::kVersion2 && record.ext.has_value();
}

/// Shows which of a radio's two toggles is on.
inline void show_first_or_second(Item& radio, bool first) {
  radio.item(0).set_value({.on = first});
  radio.item(1).set_value({.on = !first});
}

/// One toggle of a radio that shows bits of a word, and what it adds to the word.
struct FlagToggle {
  std::string name;
  Word value;
};

/// How a radio finds the value of one toggle in the bits that its toggles stand for: as a whole, or by the
/// lowest bit that is set.
constexpr Word whole_value(Word bits) { return bits; }
constexpr Word lowest_bit(Word bits) { return bits & (~bits + 1); }

inline void trace_value(const Item& toggle) { std::printf("value = %x\n", Word{toggle.on()}); }

/// A group of a toggle and a text that together show one word: a number, or none.
struct ToggleOrNumber {
  const char *group, *toggle, *text;
  int columns;
  NumberForm form;
  Word none;                    ///< what the word holds when there is no number
  bool on_means_none = false;   ///< whether the toggle is on when there is no number, or when there is one
  const char* trace = nullptr;  ///< format that prints a number as it is stored
};

/// The rows for records of type R, made by kind of item.
template <class R>
struct Rows {
  using Row = values::Row<R>;
  using F = typename R::Fixed;

  /// An item of a kind.
  static Row item(ItemKind kind, std::string name, Look look = {}) {
    return made(name, [=](const R&) { return std::make_unique<Item>(kind, name, look); });
  }
  /// An item of a class of its own, which fills itself.
  static Row made(std::string name, typename Row::Make make) {
    return {.name = std::move(name), .make = std::move(make)};
  }

  static Row separator(std::string name) { return item(ItemKind::separator, std::move(name)); }

  /// A label whose text is one of the dialog's label lines.
  static Row label(std::string name) { return item(ItemKind::label, std::move(name)); }
  /// A label whose text is computed from the record.
  template <class Text>
  static Row label(std::string name, Text text) {
    return label(std::move(name))
        .shown_by([text = in_scene(text)](const Qis& scene, const R& record, Item& item) {
          item.set_label(text(scene, record));
        });
  }

  static Row group(std::string name, Look look, std::vector<Row> rows) {
    return holding(item(ItemKind::group, std::move(name), std::move(look)), std::move(rows));
  }
  static Row radio(std::string name, std::vector<Row> rows) {
    return holding(item(ItemKind::radio, std::move(name), kHorizontal), std::move(rows));
  }

  /// An item without a place: its group's hooks fill it and read it.
  static Row toggle(std::string name) { return item(ItemKind::toggle, std::move(name)); }
  static Row text(std::string name, int columns) {
    return item(ItemKind::text, std::move(name), {.columns = columns});
  }

  /// A toggle that is on when the word is not 0, and stores 0 or 1.
  template <class Place>
  static Row toggle(std::string name, Place place) {
    return toggle(std::move(name))
        .shown_by([place](const R& record, Item& item) { item.set_value({.on = at(record, place) != 0}); })
        .stored_by([place](R& record, const Item& item, const Item&) { at(record, place) = item.on(); });
  }
  /// A toggle that shows a bit of a word and adds it, when on, to a word that was cleared before.
  template <class Place>
  static Row flag(std::string name, Word bit, Place place) {
    return toggle(std::move(name))
        .shown_by(
            [=](const R& record, Item& item) { item.set_value({.on = (at(record, place) & bit) != 0}); })
        .stored_by([=](R& record, const Item& item, const Item&) {
          if (item.on()) at(record, place) |= bit;
        });
  }

  template <class Place>
  static Row text(std::string name, int columns, Place place, NumberForm form) {
    return text(std::move(name), columns)
        .shown_by(
            [=](const R& record, Item& item) { item.set_value({.text = shown(at(record, place), form)}); })
        .stored_by([=](R& record, const Item& item, const Item&) {
          at(record, place) = word_of(item.text(), form.base);
        });
  }
  /// A text that shows a floating-point number.
  template <class Place>
  static Row number(std::string name, int columns, Place place) {
    return text(std::move(name), columns)
        .shown_by([=](const R& record, Item& item) { item.set_value({.text = shown(at(record, place))}); })
        .stored_by(
            [=](R& record, const Item& item, const Item&) { at(record, place) = float_of(item.text()); });
  }

  /// An option that shows some bits of a word, from bit `shift` on, as index, and stores its index as the
  /// whole word. Options that share a word are stored by their group.
  template <class Place>
  static Row option(std::string name, std::vector<std::string> entries, Place place, Word mask = kUnset,
                    Word shift = 0) {
    return item(ItemKind::option, std::move(name), {.entries = std::move(entries)})
        .shown_by([=](const R& record, Item& item) {
          item.set_value({.option = static_cast<int>(at(record, place) >> shift & mask)});
        })
        .stored_by([=](R& record, const Item& item, const Item&) {
          at(record, place) = static_cast<Word>(item.option());
        });
  }

  /// A radio that shows which of its toggles' values a word holds. Each toggle that is on adds its value to
  /// the word, which was cleared before.
  template <class Place>
  static Row flag_radio(std::string name, Place place, const std::vector<FlagToggle>& toggles,
                        Word (*choice)(Word), void (*trace)(const Item& toggle) = nullptr) {
    Word mask = 0;
    for (const FlagToggle& flag : toggles) mask |= flag.value;
    std::vector<Row> rows;
    for (const FlagToggle& flag : toggles)
      rows.push_back(toggle(flag.name)
                         .shown_by([=, value = flag.value](const R& record, Item& item) {
                           item.set_value({.on = choice(at(record, place) & mask) == value});
                         })
                         .stored_by([=, value = flag.value](R& record, const Item& item, const Item&) {
                           if (trace) trace(item);
                           if (item.on()) at(record, place) |= value;
                         }));
    return radio(std::move(name), std::move(rows));
  }

  template <class Place>
  static Row toggle_or_number(const ToggleOrNumber& facts, Place place) {
    return group(facts.group, kHorizontal, {toggle(facts.toggle), text(facts.text, facts.columns)})
        .shown_by([=](const R& record, Item& item) {
          const Word word = at(record, place);
          item.item(0).set_value({.on = (word == facts.none) == facts.on_means_none});
          if (word != facts.none) item.item(1).set_value({.text = shown(word, facts.form)});
        })
        .stored_by([=](R& record, const Item& item, const Item&) {
          Word& word = at(record, place);
          if (on_at(item, facts.toggle) == facts.on_means_none) {
            word = facts.none;
          } else {
            word = word_of(text_at(item, facts.text), facts.form.base);
            if (facts.trace) std::printf(facts.trace, word);
          }
        });
  }

  /// The text that shows the record's name. `record_word` is what the trace of a new name begins with.
  static Row node_name(std::string record_word, Word R::Fixed::*name, int columns = 32) {
    return text("nodeName", columns)
        .shown_by([=](const Qis& scene, const R& record, Item& item) {
          item.set_value({.text = get_name_string(scene, record.fixed.*name)});
        })
        .stored_by([=](Qis& scene, R& record, const Item& item, const Item&) {
          const std::string text = first_line(item.text());
          std::printf("%s name = %s\n", record_word.c_str(), text.c_str());
          record.fixed.*name = set_node_name(scene, text, record.fixed.*name);
        })
        .stored_if_changed();
  }
  /// The head of most dialogs.
  static Row title(std::string record_word, Word R::Fixed::*name, int columns = 32) {
    return group("title", kHorizontal,
                 {label("dialogName"), node_name(std::move(record_word), name, columns)});
  }

 private:
  static Row holding(Row row, std::vector<Row> rows) {
    row.rows = std::move(rows);
    return row;
  }
};

}  // namespace values
