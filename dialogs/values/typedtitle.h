/// @file
/// The head of the joint and effector dialogs: a name and a type, one below the other.
#pragma once

#include "dialogs/values/rows.h"

namespace values {

template <class R>
Row<R> typed_title(const std::string& record_word) {
  using F = typename R::Fixed;
  Row<R> type = Rows<R>::text("type", 5, &F::type, kPrefixedHex).stored_if_changed();
  type.store = [store = type.store](R& record, Item& item, const Item& top) {
    std::printf("effector type = %s\n", item.text().c_str());  // a joint's, too
    store(record, item, top);
  };
  return Rows<R>::group("title", kVertical, {Rows<R>::node_name(record_word, &F::name), std::move(type)});
}

}  // namespace values
