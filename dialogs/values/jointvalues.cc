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

constexpr DialogFacts kFacts{.name = "jointDialog",
                             .kind_word = "Joint",
                             .kind = qi::kJointTag,
                             .lines = kLines,
                             .traces_node_index = true};

}  // namespace

const Dialog& joint_dialog() {
  static const RecordDialog<qi::Joint, &qi::ExtLists::joint_list> dialog(kFacts,
                                                                         {typed_title<qi::Joint>("joint")});
  return dialog;
}

}  // namespace values
