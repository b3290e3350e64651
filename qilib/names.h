/// @file
/// Names: the NameList's records as texts, new names, renaming.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Length of a name's text in bytes.
Word qiGetNamelen(const qi::Name& name);

/// The text of a name, up to its first zero byte, with every blank turned into an underscore.
std::string qiGetName(const qi::Name& name);

/// The bytes of a name's text as they stand in the file, but for zero bytes at its end.
std::string qiNameBytes(const qi::Name& name);

/// Turns every blank of a text into an underscore.
void qiSp2_(std::string& text);

/// Appends a name of three blanks to the NameList, which comes into being if the scene has none.
/// @returns the new count of names, so the new name's number plus 1.
Word qiAddName(Qis& scene);

/// Replaces the text of name `index`. Blanks become underscores in `text` itself, too.
/// The text takes (length + 3) / 4 words, without a word for a terminator; an empty one takes none.
/// @returns 1, or 0 with the scene unchanged when there is no such name. Sizes change with the word count.
int qiSetName(Qis& scene, Word index, std::string& text);
