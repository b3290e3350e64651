/// @file
/// The dialogs of a skeleton: just the name of a chain root, name and type of joints and effectors.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kChainRootLines[] = {
    "*titleLabel.labelString:\tChainRoot",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*tabLable.background: white",
};

constexpr const char* kJointLines[] = {
    "*titleLabel.labelString:\tJoint",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:Joint Type",
    "*tabLable.background: white",
};

constexpr const char* kEffectorLines[] = {
    "*titleLabel.labelString:\tEffector",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:Effector Type",
};

/// The head of the joint and effector dialogs: a name and a type, one below the other.
template <class R>
Row<R> typed_title(const std::string& record_word) {
  using F = typename R::Fixed;
  Row<R> type = Rows<R>::text("type", 5, &F::type, kPrefixedHex).stored_if_changed();
  type.store = [store = type.store](Qis& scene, R& record, Item& item, const Item& top) {
    std::printf("effector type = %s\n", item.text().c_str());  // a joint's, too
    store(scene, record, item, top);
  };
  return Rows<R>::group("title", kVertical, {Rows<R>::node_name(record_word, &F::name), std::move(type)});
}

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::ChainRoot>) {
  static const RecordDialog<qi::ChainRoot> dialog(
      {.lines = kChainRootLines, .traces_node_index = true},
      {Rows<qi::ChainRoot>::title("chainroot", &qi::ChainRoot::Fixed::name)});
  return dialog;
}

const Dialog& dialog_of(std::type_identity<qi::Joint>) {
  static const RecordDialog<qi::Joint> dialog({.lines = kJointLines, .traces_node_index = true},
                                              {typed_title<qi::Joint>("joint")});
  return dialog;
}

const Dialog& dialog_of(std::type_identity<qi::Effector>) {
  static const RecordDialog<qi::Effector> dialog({.lines = kEffectorLines, .traces_node_index = true},
                                                 {typed_title<qi::Effector>("effector")});
  return dialog;
}

}  // namespace values
