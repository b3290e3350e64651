/// @file
/// Rows and columns from the tree of items: gathered first, then measured, then placed.
#include "viewkit/preflayout.h"

#include <X11/IntrinsicP.h>
#include <Xm/ToggleB.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "viewkit/longcolumns.h"
#include "viewkit/xraii.h"

using items::ItemKind;

namespace viewkit {
namespace {

// Pixels.
constexpr int kSeparatorGap = 9;   // above and below the line
constexpr int kSectionGap = 18;    // between the column of groups' labels and the rows
constexpr int kCellGap = 12;       // between a field and what follows
constexpr int kWideSection = 140;  // a group's label that has no place in a column before the rows
constexpr int kWideLabel = 170;    // a label that doesn't move the fields of other parts away from theirs

struct Rect {
  int x = 0, y = 0, width = 0, height = 0;
};
using Places = std::map<Widget, Rect>;

/// The label widget; null when it shows no text.
Widget visibleLabel(Widget label) {
  return label && !textResource(label, XmNlabelString).empty() ? label : nullptr;
}

struct Grid;

/// A label with a field, or either alone; or a grid of its own.
struct Cell {
  Widget label = nullptr;
  Widget field = nullptr;
  Widget tail = nullptr;
  std::unique_ptr<Grid> block = nullptr;
};

/// What stands side by side.
struct Row {
  Widget separator = nullptr;  // if there is one, there is nothing else
  Widget section = nullptr;    // the label of the group that begins here
  Widget label = nullptr;      // of the row; without one, the cells begin in the column of labels
  std::vector<Cell> cells{};
  std::string shape{};  // what kinds of cells there are, one letter each
};

struct CellWidth {
  int label = 0, field = 0;
};

/// The distance from the left edge of a cell to its field.
int fieldOffset(const CellWidth& width) { return width.label > 0 ? width.label + kPrefLabelGap : 0; }

/// Rows whose cells stand below each other.
struct Columns {
  std::string shape;
  bool labelled;
  std::size_t part;  // of the rows that share them, see partsOf; 0: of all
  std::vector<CellWidth> widths;
};

struct Grid {
  std::vector<Row> rows;
  bool sectionsAbove = false;  // no column of groups' labels
  int sectionWidth = 0;
  std::vector<int> labelWidth;  // per row
  std::vector<Columns> columns;
  std::vector<std::size_t> columnsOf;  // per row
  int width = 0, height = 0;
};

// ---- gathering

void gather(const VkPrefGroup& group, Grid& grid, Widget section, bool nested);

bool isColumn(const VkPrefItem& item) {
  const VkPrefGroup* const group = item.asGroup();
  return group && !group->horizontal();
}

/// The letter of a cell in the shape of its row. The first cell's label may be the row's.
char shapeOf(const Cell& cell, bool first) {
  if (cell.block) return 'b';
  if (!cell.field) return 'l';
  if (XmIsToggleButton(cell.field)) return 't';
  if (cell.label && !first) return 'F';
  return XtIsComposite(cell.field) ? 'o' : 'f';
}

void gatherCells(const VkPrefItem& item, Row& row, Widget label) {
  if (const VkPrefGroup* const group = item.asGroup()) {
    if (viewkit::LongColumns::isOne(item)) {
      row.cells.push_back({.label = label, .field = item.baseWidget()});
    } else if (isColumn(item)) {
      Cell cell{.block = std::make_unique<Grid>()};
      gather(*group, *cell.block, label, true);
      if (!cell.block->rows.empty()) row.cells.push_back(std::move(cell));
    } else {
      for (int i = 0; i < group->size(); ++i) {
        const VkPrefItem& inner = *group->item(i);
        const Widget own = visibleLabel(inner.labelWidget());
        gatherCells(inner, row, i == 0 && !own ? label : own);
      }
    }
  } else if (item.model().kind() == ItemKind::label) {
    if (const Widget text = visibleLabel(item.baseWidget())) row.cells.push_back({.label = text});
  } else if (item.model().kind() != ItemKind::separator) {
    row.cells.push_back({.label = label, .field = item.baseWidget(), .tail = item.tail()});
  }
}

/// A line for a label alone.
Row heading(Widget label) {
  Row row{.shape = "l"};
  row.cells.push_back({.label = label});
  return row;
}

/// Appends the row of a group or a single item.
/// @param nested  whether a group's own label goes into the column of labels; otherwise it is the label of a
///                section, to the left of that.
void gatherRow(const VkPrefItem& item, Grid& grid, Widget section, bool nested) {
  Row row{.section = section};
  const Widget label = visibleLabel(item.labelWidget());
  const VkPrefGroup* const group = item.asGroup();
  if (!group) {
    gatherCells(item, row, label);
  } else {
    if (label && nested)
      row.label = label;
    else if (label)
      row.section = label;
    for (int i = 0; i < group->size(); ++i)
      gatherCells(*group->item(i), row, visibleLabel(group->item(i)->labelWidget()));
    if (group->longColumns()) row.cells.push_back({.field = group->longColumns()->bar()});
    if (group->tail() && !row.cells.empty()) row.cells.push_back({.field = group->tail()});
  }
  if (row.cells.empty()) {
    if (label) grid.rows.push_back(heading(label));
    return;
  }
  if ((group && group->longColumns()) ||
      std::ranges::any_of(row.cells, [](const Cell& cell) { return cell.block != nullptr; })) {
    // Too much for one line: its label gets a line of its own.
    if (const Widget head = row.section ? std::exchange(row.section, nullptr) : row.label) {
      row.label = nullptr;
      grid.rows.push_back(heading(head));
    }
  } else if (!row.label && row.cells.front().label && (row.cells.front().field || row.cells.size() > 1)) {
    row.label = std::exchange(row.cells.front().label, nullptr);
    if (!row.cells.front().field) row.cells.erase(row.cells.begin());
  }
  for (const Cell& cell : row.cells) row.shape += shapeOf(cell, &cell == &row.cells.front());
  grid.rows.push_back(std::move(row));
}

void gather(const VkPrefGroup& group, Grid& grid, Widget section, bool nested) {
  for (int i = 0; i < group.size(); ++i) {
    const VkPrefItem& item = *group.item(i);
    if (item.model().kind() == ItemKind::separator) {
      grid.rows.push_back({.separator = item.baseWidget()});
      continue;
    }
    if (grid.rows.empty() && item.model().kind() == ItemKind::label) {
      // A label at the very top is the title of the dialog.
      grid.rows.push_back({.section = item.baseWidget()});
      continue;
    }
    const std::size_t before = grid.rows.size();
    if (isColumn(item)) {
      const Widget label = visibleLabel(item.labelWidget());
      if (label && section) grid.rows.push_back(heading(std::exchange(section, nullptr)));
      gather(*item.asGroup(), grid, label ? label : section, nested || item.labelWidget());
    } else {
      gatherRow(item, grid, section, nested);
    }
    if (grid.rows.size() > before) section = nullptr;
  }
}

/// The parts of a dialog between its separators, as the numbers of their first rows and of those after them.
std::vector<std::pair<std::size_t, std::size_t>> partsOf(const Grid& grid) {
  std::vector<std::pair<std::size_t, std::size_t>> parts{{0, 0}};
  for (std::size_t i = 0; i < grid.rows.size(); ++i) {
    if (grid.rows[i].separator) parts.emplace_back(i + 1, i + 1);
    parts.back().second = i + 1;
  }
  return parts;
}

int widthOf(Widget widget) { return naturalSize(widget).width; }

/// Whether a row is a label with a toggle.
bool isLoneToggle(const Row& row) {
  return row.label && row.cells.size() == 1 && !row.cells[0].block && row.cells[0].field &&
         XmIsToggleButton(row.cells[0].field);
}

/// In parts where a toggle has a long label, the labels of such toggles come after them, so that they don't
/// move the other fields away from their labels.
void putLongLabelsLast(Grid& grid) {
  for (const auto& [first, end] : partsOf(grid)) {
    const std::span rows(grid.rows.begin() + static_cast<std::ptrdiff_t>(first), end - first);
    const auto isLong = [](const Row& row) { return isLoneToggle(row) && widthOf(row.label) > kWideLabel; };
    if (std::ranges::none_of(rows, isLong)) continue;
    for (Row& row : rows) {
      if (!isLoneToggle(row)) continue;
      row.cells.push_back({.label = std::exchange(row.label, nullptr)});
      row.shape = "tl";
    }
  }
}

/// Where a group has a wide label, the labels of all groups get lines of their own.
void putWideSectionsAbove(Grid& grid) {
  const auto isWide = [](const Row& row) {
    return !row.cells.empty() && widthOf(row.section) > kWideSection;
  };
  grid.sectionsAbove = std::ranges::any_of(grid.rows, isWide);
  if (!grid.sectionsAbove) return;
  std::vector<Row> rows;
  for (Row& row : grid.rows) {
    if (row.section && !row.cells.empty()) rows.push_back({.section = std::exchange(row.section, nullptr)});
    rows.push_back(std::move(row));
  }
  grid.rows = std::move(rows);
}

// ---- measuring

void measure(Grid& grid);

PrefSize sizeOf(const Cell& cell) {
  if (cell.block) return {cell.block->width, cell.block->height};
  PrefSize size = naturalSize(cell.field);
  if (const PrefSize tail = naturalSize(cell.tail); tail.width > 0) {
    size.width += kPrefLabelGap + tail.width;
    size.height = std::max(size.height, tail.height);
  }
  return size;
}

int heightOf(const Row& row) {
  int height = std::max(naturalSize(row.section).height, naturalSize(row.label).height);
  for (const Cell& cell : row.cells)
    height = std::max({height, naturalSize(cell.label).height, sizeOf(cell).height});
  return height;
}

/// The distance from the top of a row to the top of the next.
int advanceOf(const Row& row) {
  return row.separator ? naturalSize(row.separator).height + 2 * kSeparatorGap - kPrefRowGap
                       : heightOf(row) + kPrefRowGap;
}

/// The columns for a row of a part. It shares those of earlier rows whose cells are of the same kinds as its
/// own, as far as both rows go.
std::size_t columnsFor(Grid& grid, const Row& row, std::size_t part) {
  for (std::size_t i = 0; i < grid.columns.size(); ++i) {
    Columns& columns = grid.columns[i];
    if (columns.labelled != (row.label != nullptr) || columns.part != part) continue;
    if (row.shape.starts_with(columns.shape)) columns.shape = row.shape;
    if (columns.shape.starts_with(row.shape)) return i;
  }
  grid.columns.push_back({.shape = row.shape, .labelled = row.label != nullptr, .part = part, .widths = {}});
  return grid.columns.size() - 1;
}

/// Where each cell of a row begins (with its label or, when no cell in its column has one, its field) and, at
/// the end, where the row ends.
std::vector<int> cellStarts(const Grid& grid, std::size_t rowNumber) {
  const Row& row = grid.rows[rowNumber];
  const std::vector<CellWidth>& widths = grid.columns[grid.columnsOf[rowNumber]].widths;
  std::vector<int> starts;
  int x = grid.sectionWidth + (row.label ? grid.labelWidth[rowNumber] + kPrefLabelGap : 0);
  for (std::size_t c = 0; c < row.cells.size(); ++c) {
    starts.push_back(x);
    const int field = c + 1 < row.cells.size() ? widths[c].field : sizeOf(row.cells[c]).width;
    x += fieldOffset(widths[c]) + field + kCellGap;
  }
  starts.push_back(x - kCellGap);
  return starts;
}

void measure(Grid& grid) {
  for (const Row& row : grid.rows) {
    int& widest = grid.sectionsAbove ? grid.width : grid.sectionWidth;
    widest = std::max(widest, widthOf(row.section));
  }
  if (grid.sectionWidth > 0) grid.sectionWidth += kSectionGap;

  // The rows above the first separator, the head of a dialog, have a column of labels of their own, so that
  // a wide label further down does not move its fields away from theirs; so have parts with very wide ones.
  grid.labelWidth.resize(grid.rows.size());
  const auto parts = partsOf(grid);
  const auto widestLabel = [&](const std::pair<std::size_t, std::size_t>& part) {
    int widest = 0;
    for (std::size_t i = part.first; i < part.second; ++i)
      widest = std::max(widest, widthOf(grid.rows[i].label));
    return widest;
  };
  int width = 0;
  for (const auto& part : std::span(parts).subspan(1))
    if (const int widest = widestLabel(part); widest <= kWideLabel) width = std::max(width, widest);
  std::vector<std::size_t> partOf(grid.rows.size());  // where parts have columns of their own
  for (const auto& part : parts) {
    const int own = widestLabel(part);
    const bool shares = &part != &parts.front() && own <= kWideLabel;
    for (std::size_t i = part.first; i < part.second; ++i) grid.labelWidth[i] = shares ? width : own;
    if (grid.sectionsAbove)
      std::fill_n(partOf.begin() + static_cast<std::ptrdiff_t>(part.first), part.second - part.first,
                  part.first);
  }

  for (std::size_t i = 0; i < grid.rows.size(); ++i) {
    Row& row = grid.rows[i];
    grid.columnsOf.push_back(columnsFor(grid, row, partOf[i]));
    std::vector<CellWidth>& widths = grid.columns[grid.columnsOf.back()].widths;
    widths.resize(std::max(widths.size(), row.cells.size()));
    for (std::size_t c = 0; c < row.cells.size(); ++c) {
      if (row.cells[c].block) measure(*row.cells[c].block);
      widths[c].label = std::max(widths[c].label, naturalSize(row.cells[c].label).width);
      // Nothing stands in line after the last cell of a row: it does not widen its column.
      if (c + 1 < row.cells.size()) widths[c].field = std::max(widths[c].field, sizeOf(row.cells[c]).width);
    }
  }
  for (std::size_t i = 0; i < grid.rows.size(); ++i) {
    grid.height += advanceOf(grid.rows[i]);
    if (!grid.rows[i].separator) grid.width = std::max(grid.width, cellStarts(grid, i).back());
  }
  grid.height -= kPrefRowGap;
}

// ---- placing

/// Puts a widget into a line of the given height, centred.
void put(Places& places, Widget widget, int x, int y, int height) {
  if (!widget) return;
  const PrefSize size = naturalSize(widget);
  places[widget] = {x, y + (height - size.height) / 2, size.width, size.height};
}

void place(const Grid& grid, Places& places, int x, int y, int width) {
  for (std::size_t r = 0; r < grid.rows.size(); ++r) {
    const Row& row = grid.rows[r];
    if (row.separator) {
      places[row.separator] = {x, y + kSeparatorGap - kPrefRowGap, width, naturalSize(row.separator).height};
      y += advanceOf(row);
      continue;
    }
    const int height = heightOf(row);
    put(places, row.section, x, y, height);
    put(places, row.label, x + grid.sectionWidth, y, height);
    const std::vector<int> starts = cellStarts(grid, r);
    const std::vector<CellWidth>& widths = grid.columns[grid.columnsOf[r]].widths;
    for (std::size_t c = 0; c < row.cells.size(); ++c) {
      const Cell& cell = row.cells[c];
      if (cell.block) {
        place(*cell.block, places, x + starts[c], y, cell.block->width);
        continue;
      }
      put(places, cell.label, x + starts[c], y, height);
      const int field = x + starts[c] + fieldOffset(widths[c]);
      put(places, cell.field, field, y, height);
      put(places, cell.tail, field + naturalSize(cell.field).width + kPrefLabelGap, y, height);
    }
    y += advanceOf(row);
  }
}

/// Moves the widget into its rectangle. Both rectangles are in the coordinates of the dialog; `origin` is
/// that of the widget's parent.
void configure(Widget widget, const Rect& rect, const Rect& origin) {
  XtConfigureWidget(widget, static_cast<Position>(rect.x - origin.x),
                    static_cast<Position>(rect.y - origin.y), static_cast<Dimension>(std::max(rect.width, 1)),
                    static_cast<Dimension>(std::max(rect.height, 1)), 0);
}

/// The smallest rectangle around two.
Rect around(const Rect& a, const Rect& b) {
  if (a.width == 0) return b;
  const int x = std::min(a.x, b.x), y = std::min(a.y, b.y);
  return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

/// Widgets that have a place, and the smallest rectangle around them.
struct Placed {
  std::vector<std::pair<Widget, Rect>> widgets;
  Rect whole;

  void add(Widget widget, const Rect& rect) {
    widgets.emplace_back(widget, rect);
    whole = around(whole, rect);
  }
};

void collect(const VkPrefItem& item, const Places& places, Placed& placed);

/// Manages the widgets that a group holds, inside the rectangle that is given or else the smallest around
/// them.
/// @returns that rectangle, which the group's base widget has to take.
Rect fill(const VkPrefGroup& group, const Places& places, const Rect* given) {
  Placed inside;
  for (int i = 0; i < group.size(); ++i) collect(*group.item(i), places, inside);
  if (group.longColumns())
    if (const auto bar = places.find(group.longColumns()->bar()); bar != places.end())
      inside.add(bar->first, bar->second);
  const Rect whole = given ? *given : inside.whole;
  std::vector<Widget> children;
  for (const auto& [widget, rect] : inside.widgets) {
    configure(widget, rect, whole);
    children.push_back(widget);
  }
  XtManageChildren(children.data(), static_cast<Cardinal>(children.size()));
  return whole;
}

void collect(const VkPrefItem& item, const Places& places, Placed& placed) {
  for (const Widget widget : {item.labelWidget(), item.baseWidget(), item.tail()})
    if (const auto found = places.find(widget); found != places.end()) placed.add(widget, found->second);
  if (const VkPrefGroup* const group = item.asGroup())
    if (const Rect rect = fill(*group, places, nullptr); rect.width > 0) placed.add(item.baseWidget(), rect);
}

/// Text fields of a group become wider when they show longer numbers than they have columns for, along with
/// all fields of the group that have the same number of columns.
void widenTexts(const VkPrefGroup& group) {
  std::map<int, int> wanted;  // by the columns that the items ask for
  const auto forTexts = [&](auto what) {
    for (int i = 0; i < group.size(); ++i)
      if (auto* const text = dynamic_cast<VkPrefText*>(group.item(i))) what(*text, wanted[text->columns()]);
  };
  forTexts([](const VkPrefText& text, int& columns) { columns = std::max(columns, text.wantedColumns()); });
  forTexts([](VkPrefText& text, int columns) { text.widen(columns); });
  for (int i = 0; i < group.size(); ++i)
    if (const VkPrefGroup* const inner = group.item(i)->asGroup()) widenTexts(*inner);
}

/// The rendition "bold" as a render table, made once: a resource that is converted stays in memory to the end
/// of the program.
XmRenderTable boldFonts(Widget widget) {
  static XmRenderTable fonts = nullptr;
  if (!fonts) {
    while (XtParent(widget)) widget = XtParent(widget);
    std::string name = "bold";
    XmRenderTable converted = nullptr;
    XrmValue from{static_cast<unsigned>(name.size() + 1), name.data()};
    XrmValue to{sizeof converted, reinterpret_cast<XPointer>(&converted)};
    if (XtConvertAndStore(widget, XmRString, &from, XmRRenderTable, &to))
      fonts = XmRenderTableCopy(converted, nullptr, 0);
  }
  return fonts;
}

void embolden(const Grid& grid) {
  for (const Row& row : grid.rows)
    if (row.section) XtVaSetValues(row.section, XmNrenderTable, boldFonts(row.section), nullptr);
}

}  // namespace

PrefSize naturalSize(Widget widget) {
  if (!widget) return {0, 0};
  XtWidgetGeometry wanted{};
  XtQueryGeometry(widget, nullptr, &wanted);
  Dimension width = 0, height = 0;
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  return {wanted.request_mode & CWWidth ? wanted.width : width,
          wanted.request_mode & CWHeight ? wanted.height : height};
}

PrefSize placeItems(const VkPrefGroup& top) {
  widenTexts(top);
  Grid grid;
  gather(top, grid, nullptr, false);
  putLongLabelsLast(grid);
  embolden(grid);
  putWideSectionsAbove(grid);
  measure(grid);
  Places places;
  place(grid, places, kPrefMargin, kPrefMargin, grid.width);
  const Rect whole{0, 0, grid.width + 2 * kPrefMargin, grid.height + 2 * kPrefMargin};
  fill(top, places, &whole);
  return {whole.width, whole.height};
}

}  // namespace viewkit
