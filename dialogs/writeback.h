/// @file
/// From an applied dialog back to its record.
#pragma once

#include "dialogs/values/dialog.h"
#include "viewkit/vkprefitem.h"

/// Writes what the items in `top` show into a record, if any has changed, and greys items as the record now
/// says.
/// @param dialog  the kind of dialog that the items are of.
/// @param index   the record's number in its list.
/// @returns 1, or 0 when there is no such record.
int writeBack(const values::Dialog& dialog, VkPrefItem& top, unsigned long index);
