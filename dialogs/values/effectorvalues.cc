/// @file
/// The effector dialog: name and type.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"
#include "dialogs/values/typedtitle.h"

namespace values {
namespace {

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tEffector",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:Effector Type",
};

constexpr DialogFacts kFacts{.name = "effectorDialog",
                             .kind_word = "Effector",
                             .kind = qi::kEffectorTag,
                             .lines = kLines,
                             .traces_node_index = true};

}  // namespace

const Dialog& effector_dialog() {
  static const RecordDialog<qi::Effector, &qi::ExtLists::effector_list> dialog(
      kFacts, {typed_title<qi::Effector>("effector")});
  return dialog;
}

}  // namespace values
