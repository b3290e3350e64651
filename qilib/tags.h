/// @file
/// Tags: the words that begin lists and records, and that name record kinds everywhere else.
#pragma once

#include "qilib/words.h"

namespace qi {

/// The tag that begins a list, from the list's kind number (bits 16 to 23).
constexpr Word list_tag(Word kind) { return kind << 16; }
/// The tag that begins a record of the list (first kind, and the only one in most lists).
constexpr Word record_tag(Word kind) { return (kind << 16) | 0x100; }

inline constexpr Word kSceneTag = list_tag(0x01);  ///< one record, so the list tag is the record's
inline constexpr Word kObjTag = record_tag(0x02);
inline constexpr Word kShapeTag = record_tag(0x03);
inline constexpr Word kPartTag = record_tag(0x09);
inline constexpr Word kMatTag = record_tag(0x0a);
inline constexpr Word kTexTag = record_tag(0x0b);
inline constexpr Word kAnimTag = record_tag(0x0c);
inline constexpr Word kCamTag = record_tag(0x0e);
inline constexpr Word kLightTag = record_tag(0x0f);
inline constexpr Word kEnvTag = record_tag(0x10);
inline constexpr Word kNameTag = record_tag(0x11);
inline constexpr Word kEnvelopeTag = record_tag(0x22);
inline constexpr Word kWeightTag = record_tag(0x23);
inline constexpr Word kChainRootTag = record_tag(0x24);
inline constexpr Word kJointTag = record_tag(0x25);
inline constexpr Word kEffectorTag = record_tag(0x26);
inline constexpr Word kClusterTag = record_tag(0x28);

// What an envelope and a cluster shape hold begins with tags of its own.
inline constexpr Word kFullWeightedPartTag = 0x220110;
inline constexpr Word kWeightedPartTag = 0x220120;
inline constexpr Word kMorphPartTag = 0x220130;
inline constexpr Word kEnvelopeTriTag = 0x220180;
inline constexpr Word kClusterEntryTag = 0x280110;
inline constexpr Word kClusterTriTag = 0x280180;

/// The list that a record tag belongs to: 0x20100 gives 0x20000.
constexpr Word list_of(Word tag) { return tag & 0xFFFF0000; }

}  // namespace qi
