/// @file
/// The property dialogs without their windows: what each shows of a record of a scene, and what it writes
/// back.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "editor/model/kinds.h"
#include "items/item.h"

namespace values {

using items::Item;
using items::ItemKind;
using items::Look;

/// A dialog's label lines: X resource lines that hold all its label texts, to be installed for it alone.
using LabelLines = std::span<const char* const>;

/// What is the same for every record that a dialog is opened on, beside what its kind says.
struct DialogFacts {
  LabelLines lines;
  const char* traced_call = nullptr;  ///< the write-back's name, where the dispatch prints it
  bool traces_node_index = false;     ///< prints the record's number when it opens on one with a name
  bool traces_top = false;            ///< a write-back says the name and number of items of the list first
};

/// The dialog for the nodes of a kind. Records are given by their number in their list; the scene's is 0.
class Dialog {
 public:
  Dialog(const NodeKind& kind, DialogFacts facts) : kind_(kind), facts_(facts) {}
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  const NodeKind& kind() const { return kind_; }
  const char* name() const { return kind_.dialog; }
  LabelLines lines() const { return facts_.lines; }
  const char* traced_call() const { return facts_.traced_call; }

  bool has_record(Qis& scene, Word number) const;
  /// The same, with a line on standard error when there is none.
  bool require_record(Qis& scene, Word number) const;

  /// A number that tells the contents of the record and its name: it changes with them and comes back with
  /// them. 0 when there is no such record.
  std::uint64_t fingerprint(Qis& scene, Word number) const;

  /// The dialog's items, filled from the record; null, and a line on standard error, when there is none.
  std::unique_ptr<Item> items(Qis& scene, Word number) const;
  /// The same, with the traces that opening a dialog prints on standard output.
  std::unique_ptr<Item> open(Qis& scene, Word number) const;

  /// Writes back what the items of `top` show, unless none has changed. Prints the traces of it, and changes
  /// what a write-back changes of the items (which are activated); they still count as changed afterwards.
  /// @returns 1; 0, with a line on standard error and nothing written, when the record is there no more, or
  ///          when it would get a name although its name index is out of range.
  int write_back(Qis& scene, Item& top, Word number) const;

 protected:
  /// Of the records' list.
  virtual Word record_tag() const = 0;
  /// The items of a record that exists.
  virtual std::unique_ptr<Item> make_items(Qis& scene, Word number) const = 0;
  /// Writes the items back to a record that exists.
  virtual void store_items(Qis& scene, Item& top, Word number) const = 0;

  static void trace_item(const Item& item);

 private:
  bool can_take_name(Qis& scene, const Item& top, Word number) const;

  const NodeKind& kind_;
  DialogFacts facts_;
};

/// The text that the dialog's lines give the widget `<item><widget>` ("Label" or "Base"); null without one.
const char* label_line(LabelLines lines, std::string_view item, std::string_view widget);

}  // namespace values
