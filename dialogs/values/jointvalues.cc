/// @file
/// The joint dialog: name and type.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"
#include "dialogs/values/typedtitle.h"

namespace values {
namespace {

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tJoint",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:Joint Type",
    "*tabLable.background: white",
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Joint>) {
  static const RecordDialog<qi::Joint> dialog({.lines = kLines, .traces_node_index = true},
                                              {typed_title<qi::Joint>("joint")});
  return dialog;
}

}  // namespace values
