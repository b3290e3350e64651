/// @file
/// Between the values of a dialog's items and the widgets that show them.
#pragma once

#include <memory>

#include "dialogs/values/item.h"
#include "viewkit/vkprefgroup.h"

/// The items of a preference dialog that a tree of values describes; empty, without widgets.
std::unique_ptr<VkPrefGroup> makePrefItems(const values::Item& top);

/// Fills items made by makePrefItems for such a tree, which have their widgets by now: values, computed label
/// texts, greyed items.
void showValues(VkPrefGroup& shown, const values::Item& top);

/// Greys the items as the tree says; nothing else.
void showActivation(VkPrefGroup& shown, const values::Item& top);

/// What items show and which of them have changed, as the tree that goes to the write-back.
values::Item valuesOf(const VkPrefItem& item);
