/// @file
/// Messages in words.
#include "qilib/messages.h"

#include <array>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>

#include "qilib/tags.h"
#include "qilib/words.h"

namespace qi {
namespace {

/// Room for any message, so that there are words even when memory has run out.
using Line = std::array<char, 512>;

/// As std::printf prints it.
[[gnu::format(printf, 1, 2)]] Line line(const char* format, ...) {
  Line text;
  std::va_list values;
  va_start(values, format);
  std::vsnprintf(text.data(), text.size(), format, values);
  va_end(values);
  return text;
}

int length(std::string_view text) { return static_cast<int>(text.size()); }

Line place(const Message& m) {
  const int list_length = length(m.list);
  if (!m.record) return line("%.*s", list_length, m.list.data());
  if (m.part.empty()) return line("%.*s: record %zu", list_length, m.list.data(), *m.record);
  return line("%.*s: record %zu: %.*s %zu", list_length, m.list.data(), *m.record, length(m.part),
              m.part.data(), m.part_number);
}

int signed_word(std::uint64_t figure) { return static_cast<int>(static_cast<Word>(figure)); }

/// The sizes are shown as signed words, unless one of them is none.
Line wrong_file_size(const Message& m, const char* how) {
  constexpr std::uint64_t kMost = std::numeric_limits<Word>::max();
  const Line figures = m.found <= kMost && m.expected <= kMost
                           ? line("%d %d", signed_word(m.found), signed_word(m.expected))
                           : line("%" PRIu64 " %" PRIu64, m.found, m.expected);
  return line("file size %s\nData file size is incorrect - %s data.", figures.data(), how);
}

Line words(const Message& m) {
  const Line where = place(m);
  const auto found = static_cast<Word>(m.found), expected = static_cast<Word>(m.expected);
  switch (m.code) {
    case MessageCode::out_of_memory:
      return line("Out of memory.");
    case MessageCode::no_input:
      return line("Input File Open Error");
    case MessageCode::input_failed:
      return line("Input File Read Error: %s", std::strerror(static_cast<int>(m.found)));
    case MessageCode::input_changed:
      return line("The file was replaced or changed while it was read.");
    case MessageCode::no_output:
      return line("Output File Open Error");
    case MessageCode::output_failed:
      return line("Output File Write Error: %s", std::strerror(m.write_error.number));
    case MessageCode::unknown_version:
      return line("%8x\nUnknown version number.", found);
    case MessageCode::missing_data:
      return wrong_file_size(m, "missing");
    case MessageCode::extra_data:
      return wrong_file_size(m, "extra");
    case MessageCode::wrong_header_size:
      return line("Incorrect file header size.");
    case MessageCode::wrong_sum_of_lists:
      return line("file size=%d,sum of list=%d\nSome of list_num data is incorrect.", signed_word(m.expected),
                  signed_word(m.found));
    case MessageCode::wrong_header_tag:
      return line("tag error.");
    case MessageCode::too_large:
      return line("%s: %.*s of %" PRIu64 " bytes at offset %" PRIu64 " exceeds the %" PRIu64 " bytes left",
                  where.data(), length(m.what), m.what.data(), m.found, m.offset.value_or(0), m.expected);
    case MessageCode::no_whole_words:
      return line("%s: %.*s of %" PRId64 " bytes is no whole number of words", where.data(), length(m.what),
                  m.what.data(), static_cast<std::int64_t>(m.found));
    case MessageCode::wrong_length:
      return line("%s: fixed part of %" PRIu64 " bytes, expected %" PRIu64, where.data(), m.found,
                  m.expected);
    case MessageCode::no_structure:
      break;  // no more than where
    case MessageCode::wrong_tag:
      return line("irregular tag ! %0#10x != %0#10x", found, expected);
    case MessageCode::wrong_name_tag:
      return line("irregular tag ! %0#10x", found);
    case MessageCode::size_corrected:
      return line("%s: %.*s %" PRIu64 " corrected to %" PRIu64, where.data(), length(m.what), m.what.data(),
                  m.found, m.expected);
    case MessageCode::size_carried:
      return line("%s: %.*s is %" PRIu64 ", the contents take %" PRIu64, where.data(), length(m.what),
                  m.what.data(), m.found, m.expected);
    case MessageCode::bytes_dropped:
      return line("%" PRIu64 " bytes of %.*s are not kept by a save in mode %" PRIu64, m.found,
                  length(m.what), m.what.data(), m.expected);
    case MessageCode::no_link:
      return line("Error: no link to index %d.", signed_word(m.found));
    case MessageCode::already_changed:
      return line("already changed ??");
    case MessageCode::already_linked:
      return line("already linked ??");
    case MessageCode::unexpected_link:
      return line("unexpected link, %x", found);
  }
  return line("%s", "");
}

/// Why a file could not be opened, or where in it something was found that was not expected; empty when there
/// is nothing to add to the words.
Line reason(const Message& m) {
  if (m.code == MessageCode::no_input && m.found != 0)
    return line("%s", std::strerror(static_cast<int>(m.found)));
  if (m.code == MessageCode::no_input) return line("%.*s", length(m.what), m.what.data());
  if (!m.base) return line("%s", "");
  const Line at = line("%s, byte %" PRIu64, place(m).data(), *m.base + m.offset.value_or(0));
  const auto found = static_cast<Word>(m.found), expected = static_cast<Word>(m.expected);
  switch (m.code) {
    case MessageCode::unknown_version:
      return line("%s: version %0#10x, expected 0x0100 or 0x0200 in its low half", at.data(), found);
    case MessageCode::missing_data:
    case MessageCode::extra_data:
      return line("%s: file_size %" PRIu64 ", expected %" PRIu64, at.data(), m.expected, m.found);
    case MessageCode::wrong_header_size:
      return line("%s: header_size %" PRIu64 ", expected %" PRIu64, at.data(), m.found, m.expected);
    case MessageCode::wrong_sum_of_lists:
      return line("%s: header and lists of %" PRIu64 " bytes, expected %" PRIu64, at.data(), m.found,
                  m.expected);
    case MessageCode::wrong_header_tag:
      return line("%s: header_tag %0#10x, expected 0", at.data(), found);
    case MessageCode::too_large:
      if (*m.base == 0) break;  // the words say the byte of the file
      return line("%s: %.*s of %" PRIu64 " bytes, expected at most %" PRIu64, at.data(), length(m.what),
                  m.what.data(), m.found, m.expected);
    case MessageCode::no_whole_words:
      return line("%s: %.*s of %" PRId64 " bytes, expected a whole number of words", at.data(),
                  length(m.what), m.what.data(), static_cast<std::int64_t>(m.found));
    case MessageCode::wrong_length:
      return line("%s: fixed part of %" PRIu64 " bytes, expected %" PRIu64, at.data(), m.found, m.expected);
    case MessageCode::no_structure:
      return line("%s: %.*s of %" PRIu64 " bytes, expected at least %" PRIu64, at.data(), length(m.what),
                  m.what.data(), m.found, m.expected);
    case MessageCode::wrong_tag:
      return line("%s: tag %0#10x, expected %0#10x", at.data(), found, expected);
    case MessageCode::wrong_name_tag: {
      const Word record = m.record ? 0x100 : 0;
      return line("%s: tag %0#10x, expected %0#10x or %0#10x", at.data(), expected, 0x110000 + record,
                  0x270000 + record);
    }
    default:
      break;
  }
  return line("%s", "");
}

}  // namespace

Severity severity_of(MessageCode code) {
  switch (code) {
    case MessageCode::size_corrected:
      return Severity::correction;
    case MessageCode::size_carried:
    case MessageCode::bytes_dropped:
      return Severity::hint;
    case MessageCode::no_link:
    case MessageCode::already_changed:
    case MessageCode::already_linked:
    case MessageCode::unexpected_link:
      return Severity::trace;
    default:
      return Severity::error;
  }
}

std::string place_of(const Message& message) { return place(message).data(); }

std::string text_of(const Message& message) {
  std::string text = words(message).data();
  if (message.write_error) text += '\n' + message.write_error.text();
  return text;
}

std::string reason_of(const Message& message) { return reason(message).data(); }

void print_message(const Message& message) {
  std::FILE* const stream = severity_of(message.code) == Severity::trace ? stdout : stderr;
  for (const Line& text : {words(message), reason(message)})
    if (text.front() != '\0') std::fprintf(stream, "%s\n", text.data());
  if (message.write_error) std::fprintf(stream, "%s\n", message.write_error.text().c_str());
}

}  // namespace qi
