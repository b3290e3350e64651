/// @file
/// The one scene that the program edits.
#include "editor/model/currentscene.h"

#include "qilib/edit.h"

std::unique_ptr<Qis> qis = qiNewQis();
