/// @file
/// Whole scene files: opening them into a scene, and saving a scene.
#pragma once

#include <cstdio>
#include <string>

#include "qilib/qis.h"

/// Opens a file of either version. The scene is emptied once the file could be opened, and filled.
/// @returns 1, or 0 after messages on standard error; the scene then holds what was read so far, or what
///          it held before when the file could not be opened at all.
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

/// Stores the name that the scene is saved under. @returns 1.
int qiSetFilename(const std::string& filename, Qis& scene);
