/// @file
/// Reading a file into the current scene and writing the current scene into a file.
#pragma once

#include <cstdio>
#include <string>

#include "qilib/messages.h"

/// Reads a scene file into the current scene `qis`. It is read into a fresh scene first, so that after a
/// failure the scene in memory is what it was.
/// @returns 1 when the file is now the current scene; anything else is a failure.
int quilread(const std::string& path, const qi::MessageSink& sink = qi::print_message);

/// Writes the current scene `qis` to `path`, after putting right any size that does not agree with what will
/// be written, so that the file opens again.
/// @param mode  of the writer: 2 with the edits of the version-2 structures, 1 with their blocks as read.
/// @returns 0 when it is written, -1 when it could not be or the scene is of no known version.
int quilsave(const std::string& path, int mode = 2, const qi::MessageSink& sink = qi::print_message);

/// Writes the current scene as `quilsave` does in mode 2, where the file stands, and says nothing.
/// @returns whether all of it was written
bool write_scene(std::FILE* file);

/// Whether the current scene can be saved: before the first Open it is of no version.
bool has_scene();
