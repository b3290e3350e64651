/// @file
/// The property dialogs without their windows: what each shows of a record of the current scene, and what it
/// writes back.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/values/item.h"
#include "qilib/words.h"

namespace values {

/// A dialog's label lines: X resource lines that hold all its label texts, to be installed for it alone.
using LabelLines = std::span<const char* const>;

/// What is the same for every record that a dialog is opened on.
struct DialogFacts {
  const char* name;       ///< "matDialog"
  const char* kind_word;  ///< what the trace of a write-back begins with: "Mat"
  Word kind;              ///< of the nodes that open it (a record tag); 0 for level-of-detail nodes
  LabelLines lines;
  const char* traced_call = nullptr;  ///< the write-back's name, where the dispatch prints it
  bool traces_node_index = false;     ///< prints the record's number when it opens on one with a name
  bool traces_top = false;            ///< a write-back says the name and number of items of the list first
};

/// One of the 14 dialogs. Records are given by their number in their list; the scene's is 0.
class Dialog {
 public:
  explicit Dialog(DialogFacts facts) : facts_(facts) {}
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  const char* name() const { return facts_.name; }
  Word kind() const { return facts_.kind; }
  LabelLines lines() const { return facts_.lines; }
  const char* traced_call() const { return facts_.traced_call; }

  virtual bool has_record(Word number) const = 0;

  /// The name of the node that opens the dialog on a record: "mat_3", "lod_3".
  std::string node_name(Word number) const;

  /// The dialog's items, filled from the record; nothing, and a line on standard error, when there is none.
  std::optional<Item> items(Word number) const;
  /// The same, with the traces that opening a dialog prints on standard output.
  std::optional<Item> open(Word number) const;

  /// Writes back what the items of `top` show, unless none has changed. Prints the traces of it, and changes
  /// what a write-back changes of the items (which are activated); they still count as changed afterwards.
  /// @returns 1; 0, with a line on standard error, when the record is there no more.
  int write_back(Item& top, Word number) const;

 protected:
  /// The items of a record that exists.
  virtual Item make_items(Word number) const = 0;
  /// Writes the items back to a record that exists.
  virtual void store_items(Item& top, Word number) const = 0;
  /// The name index of a record that exists.
  virtual Word name_index(Word number) const = 0;

  static void trace_item(const Item& item);

 private:
  bool require_record(Word number) const;

  DialogFacts facts_;
};

/// The text that the dialog's lines give the widget `<item><widget>` ("Label" or "Base"); null without one.
const char* label_line(LabelLines lines, std::string_view item, std::string_view widget);

}  // namespace values
