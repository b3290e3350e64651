/// @file
/// A property dialog described by rows: the loops that fill it and write it back.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/values/dialog.h"
#include "dialogs/values/rows.h"
#include "qilib/references.h"

namespace values {

/// A word that a write-back makes anew from the items: every bit that no item stands for is lost.
template <class R>
struct WholeWord {
  Word R::Fixed::*place;
  const char* trace;               ///< format that prints it when it is complete
  void (*complete)(R&) = nullptr;  ///< corrects the record before the word is traced
};

/// The dialog for the kind of nodes with this key.
template <class Key>
class RecordDialog : public Dialog {
 public:
  using R = typename KindRowOf<Key>::Record;

  RecordDialog(DialogFacts facts, std::vector<Row<R>> rows, std::vector<WholeWord<R>> whole_words = {})
      : Dialog(kNodeKind<Key>, facts), rows_(std::move(rows)), whole_words_(std::move(whole_words)) {}

 protected:
  Word record_tag() const override { return qi::list_info(KindRowOf<Key>::kList).record_tag; }
  std::unique_ptr<Item> make_items(Qis& scene, Word number) const override {
    auto top = std::make_unique<Item>(ItemKind::list, "prefList");
    add_items(*top, rows_, scene, record(scene, number));
    return top;
  }
  void store_items(Qis& scene, Item& top, Word number) const override {
    R& stored = record(scene, number);
    for (const WholeWord<R>& word : whole_words_) stored.fixed.*word.place = 0;
    for (std::size_t i = 0; i < top.size(); ++i) {
      Item& item = top.item(i);
      trace_item(item);
      const auto row = std::ranges::find(rows_, item.name(), &Row<R>::name);
      if (row != rows_.end()) store_item(*row, scene, stored, item, top);
    }
    for (const WholeWord<R>& word : whole_words_) {
      if (word.complete) word.complete(stored);
      std::printf(word.trace, stored.fixed.*word.place);
    }
  }

 private:
  static R& record(Qis& scene, Word number) { return *qi::record_in(scene, KindRowOf<Key>::kList, number); }

  std::vector<Row<R>> rows_;
  std::vector<WholeWord<R>> whole_words_;
};

}  // namespace values
