/// @file
/// Columns of a dialog that are too long for all their rows to have widgets.
#pragma once

#include <X11/Intrinsic.h>

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "viewkit/vkprefgroup.h"

namespace viewkit {

/// Columns of text fields that stand side by side in a group and are scrolled together, by a bar of their
/// own, by the wheel, and by the focus: Tab leads down one column after the other. A row has widgets while it
/// is in sight; its items hold the values. When the row with the focus goes, its column's nearest one gets
/// it. So a dialog of any number of rows opens at once, and none of its widgets leaves X's coordinates, which
/// have 16 bits.
class LongColumns {
 public:
  /// Whether an item is such a column: it is in a horizontal group, its rows are too many, and all are texts
  /// alike with labels that were given to the items.
  static bool isOne(const VkPrefItem& item);

  /// Makes the first rows of those columns in the group, whose base widgets exist, the bar after them, and
  /// gives the columns their sizes. To be destroyed with the widgets, or after them.
  explicit LongColumns(const VkPrefGroup& group);
  LongColumns(const LongColumns&) = delete;
  LongColumns& operator=(const LongColumns&) = delete;
  ~LongColumns();

  /// The bar; below the group's base widget, and not placed yet.
  Widget bar() const { return bar_; }

 private:
  struct Column {
    const VkPrefGroup* group;
    int textColumns;        ///< characters that every field has room for
    int labelWidth;         ///< pixels
    Widget next = nullptr;  ///< what a new widget has to precede among its siblings; null: nothing
  };
  /// A field, by its column and row.
  struct Place {
    std::size_t column;
    int row;
  };

  void measure(Column& column);
  void makeRow(int row);
  void placeRow(int row) const;
  void releaseRow(int row) const;
  /// The place of a field that is made.
  std::optional<Place> placeOf(Widget field) const;
  bool focus(Place place) const;
  bool isInSight(int row) const { return row >= first_ && row < first_ + inSight_; }
  /// Makes the row `first` the first in sight.
  void show(int first);
  /// Releases the rows out of sight. It waits until there are no events left: those that a quick turn of the
  /// wheel makes have been sent to them already.
  static Boolean releaseProc(XtPointer self);
  void scrolled();
  void reveal(int row);
  /// Gives the focus to the next field, or the one before. @returns whether there is one.
  bool moveFocus(Place from, bool forward);
  static void keyHandler(Widget field, XtPointer self, XEvent* event, Boolean* goOn);
  static Cardinal position(Widget child);

  std::vector<Column> columns_;
  Widget bar_ = nullptr;
  int rows_ = 0;       // of the longest column
  int inSight_ = 0;    // rows
  int rowHeight_ = 0;  // pixels
  int first_ = 0;      // the first row in sight
  std::set<int> made_;
  std::optional<XtWorkProcId> releasing_;
};

}  // namespace viewkit
