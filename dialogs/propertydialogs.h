/// @file
/// From a node to its dialog.
#pragma once

#include <memory>

#include "dialogs/propertydialog.h"
#include "dialogs/values/dispatch.h"

/// A dialog of the kind, with the kind's name, for the record; null when there is no such record, with a line
/// on standard error.
std::unique_ptr<PropertyDialog> makePropertyDialog(const values::DialogOn& on);
