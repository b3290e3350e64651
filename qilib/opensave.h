/// @file
/// Whole scene files: opening one into a scene, and saving a scene.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "qilib/messages.h"
#include "qilib/qis.h"

namespace qi {

/// Opens a file of either version. The scene is emptied once the file could be opened, and filled.
/// @returns 1, or 0 after messages; the scene then holds what was read so far, or what it held before when
///          the file could not be opened at all.
int open_scene(const std::string& filename, Qis& scene, const MessageSink& sink);

/// What came of a file that may be damaged.
struct Salvaged {
  bool whole = false;         ///< whether it could have been opened
  std::vector<Word> damaged;  ///< the tags of the lists that were not read to their end
};

/// Opens a file as far as that goes: where a list can't be read, its whole records are kept, and reading goes
/// on where the directory says that the next one begins. For looking at it: what is missing is missing from
/// a save, too.
Salvaged salvage_scene(const std::string& filename, Qis& scene, const MessageSink& sink);

/// Saves the scene to its file name. The file that was there is untouched until the new one is complete.
/// @param mode  1 for the records' extension blocks as they were read, 2 for the edits of the version-2
///              structures.
/// @returns 1, or 0 after a message when the file can't be written.
int save_scene(const Qis& scene, int mode, const MessageSink& sink);

/// Tells what a save in that mode would not keep of what was opened, if it is so: mode 2 writes the extension
/// list size table alone in place of a longer header block 1. A save tells it, too.
/// @returns the bytes.
std::uint64_t tell_dropped_bytes(const Qis& scene, int mode, const MessageSink& sink);

}  // namespace qi

// Everything below prints its messages, on standard error.

/// As qi::open_scene.
int qiOpenQb(const std::string& filename, Qis& scene);

/// The version-1 part of opening: header and core lists.
int qiOpenQb1(const std::string& filename, Qis& scene);

/// The extension lists of a version-2 file, which is opened again by the scene's file name.
int qiOpenQb2Ext(Qis& scene);

/// Reads and checks the header and its two extension blocks. Every check runs and reports.
int qiReadFileHeader(std::FILE* file, Qis& scene);

/// Makes the extension list size table of a version-2 header from its block 1.
/// @returns 0 when block 1 is empty.
int qiSetupFileHeaderExt(qi::Header& header);

// As qi::save_scene, in mode 1 and in mode 2.
int qiWriteQb(const Qis& scene);
int qiWriteQb2(const Qis& scene);

/// Give the scene the file name, then save it in mode 1 or mode 2.
int qiSaveAsQb(Qis& scene, const std::string& filename);
int qiSaveAsQb2(Qis& scene, const std::string& filename);

/// Writes the whole scene, with what followed the last list of its file, where the file stands. @returns 1,
/// or 0 when a write failed.
int qiWriteScene(std::FILE* file, const Qis& scene, int mode);

/// Writes the header and its extension blocks. @returns 1, or 0 when a write failed.
int qiWriteFileHeader(std::FILE* file, const qi::Header& header, int mode);

/// Writes header extension block 1: as it is held, or in mode 2 the extension list size table in its place.
int qiWriteFileHeaderExt(std::FILE* file, const qi::Header& header, int mode);

/// Writes the extension lists that the scene has. @returns 1, or 0 when a write failed.
int qiWriteQb2Ext(std::FILE* file, const Qis& scene);

/// Stores the name that the scene is saved under. @returns 1, or 0 when there is no memory for it.
int qiSetFilename(const std::string& filename, Qis& scene);
