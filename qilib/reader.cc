/// @file
/// Reading: a list's way from the file into the scene.
#include "qilib/reader.h"

#include <cerrno>
#include <memory>

#include "qilib/files.h"
#include "qilib/lists.h"

namespace qi {

namespace {

/// Fills the list of that name from its words; without words it is absent, and reset.
int set_up(Qis& scene, std::string_view list_name, std::span<const Word> words, const MessageSink& sink) {
  int result = 0;
  for_each_list(scene, [&]<class L>(const ListInfo& info, L& list) {
    if (info.name == list_name)
      result =
          words.empty() ? ResetList<L>{info.extension}(list) : SetupList<L>{info.name}(words, list, sink);
  });
  return result;
}

}  // namespace

int read_list(std::FILE* file, Word size, Qis& scene, std::string_view list_name, const MessageSink& sink) {
  const std::uint64_t begin = position(file);
  const MessageSink placing_sink = [&](Message message) {
    message.base = begin;
    sink(message);
  };
  if (size == 0) return set_up(scene, list_name, {}, placing_sink);
  Message message{.code = MessageCode::too_large,
                  .list = list_name,
                  .what = "list",
                  .found = size,
                  .expected = bytes_left(file),
                  .offset = begin,
                  .base = 0};
  if (size % sizeof(Word) != 0) {
    message.code = MessageCode::no_whole_words;
  } else if (size <= message.expected) {
    const auto words = std::make_unique_for_overwrite<Word[]>(size / sizeof(Word));
    errno = 0;
    message.expected = freadEndianSwap4(words.get(), size, file);
    if (message.expected == size)
      return set_up(scene, list_name, {words.get(), size / sizeof(Word)}, placing_sink);
    if (std::ferror(file))
      message = {.code = MessageCode::input_failed, .found = static_cast<unsigned>(errno)};
  }
  sink(message);
  return 0;
}

}  // namespace qi

int qiReadArray(qi::ListCursor& cursor, Words& destination, std::uint64_t word_count, std::string_view what) {
  const auto words = cursor.take(word_count, what);
  destination.assign(words.begin(), words.end());
  return !cursor.error();
}

int qiReadExtBlk1(qi::ListCursor& cursor, Words& destination1, Word size1, Words& destination2, Word size2) {
  const auto read = [&cursor](Words& destination, Word size, std::string_view what) {
    const auto words = cursor.take_bytes(size, what);
    destination.assign(words.begin(), words.end());
    return !cursor.error();
  };
  return read(destination1, size1, "extension block 1") && read(destination2, size2, "extension block 2");
}

int qiReadList(std::FILE* file, Word size, Qis& scene, std::string_view list_name) {
  return qi::read_list(file, size, scene, list_name, qi::print_message);
}
