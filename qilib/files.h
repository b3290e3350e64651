/// @file
/// Opening scene and text files, with the messages for those that can't be opened.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "qilib/filehandle.h"
#include "qilib/messages.h"
#include "storage/replacefile.h"

namespace qi {

/// Opens a regular file for reading. @returns no file, with the reason in errno, when it can't be had or (0)
/// is something else: the program would wait for ever at a pipe that nobody writes to, or read a device
/// without end.
File open_regular(const std::string& path);

/// The same, with a message when there is no file.
File open_to_read(const std::string& path, const MessageSink& sink);

/// Opens a file for writing; it appears under its name when it is committed.
/// @returns no file, after a message, when it can't be written.
std::unique_ptr<ReplacingFile> open_to_write(const std::string& path, const MessageSink& sink);

/// Where the file stands, in bytes from its beginning.
std::uint64_t position(std::FILE* file);

/// Bytes between the place where the file stands and its end; 0 when that can't be told.
std::uint64_t bytes_left(std::FILE* file);

}  // namespace qi

// The same, printing "Input File Open Error" or "Output File Open Error".
qi::File qiQbReadOpen(const std::string& filename);
std::unique_ptr<ReplacingFile> qiQbWriteOpen(const std::string& filename);
