/// @file
/// The part dialog: just the name.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tPart",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
};

constexpr DialogFacts kFacts{.name = "partDialog",
                             .kind_word = "Part",
                             .kind = qi::kPartTag,
                             .lines = kLines,
                             .traces_node_index = true};

}  // namespace

const Dialog& part_dialog() {
  static const RecordDialog<qi::Part, &Qis::part_list> dialog(
      kFacts, {Rows<qi::Part>::title("part", &qi::Part::Fixed::name)});
  return dialog;
}

}  // namespace values
