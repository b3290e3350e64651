/// @file
/// What the library has to say, as values: each goes to a sink, and printing it is one of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "storage/writeerror.h"

namespace qi {

/// What a message is about. After each, what its figures `found` and `expected` are.
enum class MessageCode {
  out_of_memory,
  no_input,       ///< a file that can't be read. found: the reason, as errno tells it; 0: `what` says it
  input_failed,   ///< a file that could not be read to its end. found: the reason, as errno tells it
  input_changed,  ///< a file that was replaced or changed while it was read
  no_output,      ///< a file that can't be written
  output_failed,  ///< a file that could not be written to its end

  // What opening finds wrong with the header.
  unknown_version,     ///< found: the version word
  missing_data,        ///< the file's bytes, and those that its header tells of
  extra_data,          ///< the same
  wrong_header_size,   ///< the header's size, and what its parts take
  wrong_sum_of_lists,  ///< bytes of header and lists, and those of the file, by the header's words
  wrong_header_tag,    ///< found: the tag

  // What opening finds wrong with a piece of a list, or with the list as a whole.
  too_large,       ///< bytes of the piece, and those that are left
  no_whole_words,  ///< found: bytes of the piece; below 0 as a signed number
  wrong_length,    ///< bytes of a fixed part, and those that it must have, or have at least
  no_structure,    ///< bytes of a piece that version 2 needs, and those that it must have at least
  wrong_tag,       ///< the tags
  wrong_name_tag,  ///< the tag of the list of names, and the one that is wrong, which may be a record's

  size_corrected,  ///< a size that was held, and what the writer writes
  size_carried,    ///< a size as the file had it, and what the contents take
  bytes_dropped,   ///< bytes that a save does not keep, and the mode of that save

  // Why an edit was refused, or a part of it.
  no_link,          ///< found: the record number that is not among an array's entries
  already_changed,  ///< found: the same
  already_linked,   ///< found: the record number that is among them already
  unexpected_link,  ///< found: a kind of parent that has no such child
};

enum class Severity {
  error,       ///< a file could not be opened or saved
  correction,  ///< something was wrong and has been put right
  hint,        ///< something is odd and stays
  trace,       ///< how an edit went
};
Severity severity_of(MessageCode code);

/// One thing that there is to say. Its texts are the library's own, and names of lists that it was called
/// with: they outlive any sink.
struct Message {
  MessageCode code;
  std::string_view list = {};              ///< "ObjList", "FileHeader"; empty: it is about neither
  std::optional<std::size_t> record = {};  ///< number of the record in the list
  std::string_view part = {};              ///< a kind of part in the record: "weighted part"; empty: none
  std::size_t part_number = 0;
  std::string_view what = {};  ///< the piece or size word: "array", "size in the directory"
  std::uint64_t found = 0, expected = 0;
  /// Where the piece begins, in bytes from the beginning of what was being read: the file for the header and
  /// for whole lists, the list for what is in it, extension block 1 for a version-2 structure.
  std::optional<std::uint64_t> offset = {};
  /// Where what was being read begins in the file; unknown when it is read from memory.
  std::optional<std::uint64_t> base = {};
  WriteError write_error = {};  ///< of a file that can't be written or not to its end; else it is none
};

/// Is told what there is to say, as it turns up. Whoever calls the library owns it; nothing keeps it for
/// longer than the call.
using MessageSink = std::function<void(const Message&)>;

/// The list, record and part that a message is about: "ObjList: record 3".
std::string place_of(const Message& message);

/// The message in words: a line, or several with line breaks between them.
std::string text_of(const Message& message);

/// A further line about a file that can't be opened: why, or where in it (list, record, byte of the file),
/// what was found and what expected. Empty where the words say all that is known. Of a version-2 structure
/// that is missing there is nothing but this line.
std::string reason_of(const Message& message);

/// The sink that prints: traces on standard output, all else on standard error. Takes memory only for
/// `write_error`.
void print_message(const Message& message);

}  // namespace qi
