/// @file
/// From a node to its dialog, and the dialogs' classes.
#pragma once

#include <memory>
#include <type_traits>

#include "dialogs/propertydialog.h"
#include "dialogs/values/dispatch.h"
#include "dialogs/values/kinds.h"
#include "editor/model/nodenames.h"

/// There is one scene record, so its dialog needs no number.
template <class Key>
using KindDialogBase = std::conditional_t<std::is_same_v<Key, qi::Scene>, PropertyDialog, QuilNodeDialog>;

/// The dialog for the nodes of a kind.
template <class Key>
class KindDialog final : public KindDialogBase<Key> {
 public:
  using Base = KindDialogBase<Key>;
  using Base::Base;
  const char* className() const override { return kNodeKind<Key>.dialog_class; }
  std::string node() const override { return node_name(kNodeKind<Key>, static_cast<Word>(this->index())); }

 protected:
  Widget createDialog(Widget parent) override {
    const Widget dialog = this->createFrom(values::dialog_of<Key>(), parent);
    showMore(dialog);
    return dialog;
  }

 private:
  /// What the dialog shows beside its items.
  void showMore(Widget /*dialog*/) {}
};

template <>
void KindDialog<qi::Env>::showMore(Widget dialog);
template <>
void KindDialog<qi::Mat>::showMore(Widget dialog);
template <>
void KindDialog<qi::Joint>::showMore(Widget dialog);

using SceneDialog = KindDialog<qi::Scene>;
using ObjDialog = KindDialog<qi::Obj>;
using ShapeDialog = KindDialog<qi::Shape>;
using TexDialog = KindDialog<qi::Tex>;
using MatDialog = KindDialog<qi::Mat>;
using CamDialog = KindDialog<qi::Cam>;
using EnvDialog = KindDialog<qi::Env>;
using LightDialog = KindDialog<qi::Light>;
using PartDialog = KindDialog<qi::Part>;
using AnimDialog = KindDialog<qi::Anim>;
using ChainrootDialog = KindDialog<qi::ChainRoot>;
using JointDialog = KindDialog<qi::Joint>;
using EffectorDialog = KindDialog<qi::Effector>;
using LodDialog = KindDialog<LevelsOfDetail>;

/// A dialog of the kind, with the kind's name, for the record; null when there is no such record, with a line
/// on standard error.
std::unique_ptr<PropertyDialog> makePropertyDialog(const values::DialogOn& on);
