/// @file
/// Scenes built in memory, record by record, for tests of what edits them; and what an edit changed of their
/// sizes.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "qilib/qis.h"

/// How many records of each kind the scenes below have, and so a number that none of them bears.
inline constexpr Word kOutside = 6;

/// A consistent version-2 scene: one scene record and `count` records of every kind that links or names
/// touch, no references, every version-2 structure present and empty, no names.
std::unique_ptr<Qis> built_scene(Word count = kOutside);

/// The same as version 1: no extension lists, no version-2 structures.
std::unique_ptr<Qis> built_version1_scene(Word count = kOutside);

/// Every size word of a scene, by name: "file", "ObjList" (as its header says), "ObjList entry" (as the
/// directory or table says), "obj 3" (as the record says), "obj 3 table" (as the size table says), "obj 3
/// block" (its block 1).
using SizeWords = std::map<std::string, Word>;
SizeWords size_words(const Qis& scene);

/// What changed from one to the other, by name; a word that only one of them has counts as 0 in the other.
std::map<std::string, std::int32_t> size_changes(const SizeWords& before, const SizeWords& after);

/// The changes by `bytes` that belong to one record or, for "scene", to the scene record.
/// @param record  such as "obj 3".
/// @param block   whether its version-2 block grows as well.
std::map<std::string, std::int32_t> record_growth(const std::string& list, const std::string& record,
                                                  std::int32_t bytes, bool block = false);
