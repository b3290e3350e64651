/// @file
/// The part dialog: just the name.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kPartLines[] = {
    "*titleLabel.labelString:\tPart",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Part>) {
  static const RecordDialog<qi::Part> dialog({.lines = kPartLines, .traces_node_index = true},
                                             {Rows<qi::Part>::title("part", &qi::Part::Fixed::name)});
  return dialog;
}

}  // namespace values
