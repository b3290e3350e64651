/// @file
/// The sizes that a scene holds about itself: keeping them current, and the counts they are made of.
#pragma once

#include <cstdint>

#include "qilib/qis.h"

/// Adds `delta` bytes to every size word that contains the given record or list, the file's included.
/// @param record_number  record in its list, from 0; used with record tags only.
/// @param tag  a record's tag, such as 0x20100 (its size, its entry in the size table, its list, the
///             directory), or a list's, such as 0x20000 (the list and the directory). Tags of kinds whose
///             size no edit changes (see lists.h) change the file's size alone.
/// A record number outside its list changes nothing at all.
void qiAdjustListSizeData(Qis& scene, Word record_number, std::int32_t delta, Word tag);

/// The format version, 0x0100 or 0x0200 in a scene that could be opened: the low half of the version word.
Word qiQUILver(const qi::Header& header);

/// Bytes of the version-1 part: header, header blocks and core lists. Extension lists begin right there.
std::uint64_t qiSizeofQUIL1file(const qi::Header& header);

/// Tiles of a texture: 1 for an untiled one.
Word qiCiTileNum(const qi::Tex& tex);

namespace qi {

/// Whether the scene has an extension list size table, and so may have extension lists: version 2, and a
/// header block 1 that is long enough for the table.
bool has_ext_sizes(const Header& header);

}  // namespace qi
