/// @file
/// From an applied dialog back to its record.
#pragma once

#include "viewkit/vkprefdialog.h"

/// Writes what the items of a property dialog show into its record, if any has changed, and greys items as
/// the record now says. The dialog's name says which kind it is of.
/// @returns 1, or 0 when there is no such kind or record, or the dialog has no items.
int applyChanges(VkPrefDialog& dialog);
