/// @file
/// Reading: a list's way from the file into the scene.
#include "qilib/reader.h"

#include <algorithm>
#include <cerrno>

#include "qilib/files.h"
#include "qilib/lists.h"

namespace qi {

bool ListCursor::read_on(std::size_t words) {
  constexpr std::size_t kPiece = 1 << 16;  // words
  Words piece(words_.begin() + static_cast<std::ptrdiff_t>(pos_), words_.end());
  const std::size_t kept = piece.size();
  piece_ = {};  // before more is taken: it may have been large
  before_ += pos_;
  pos_ = 0;
  const std::size_t more = std::min(unread_, std::max(words - kept, kPiece));
  piece.resize(kept + more);
  const std::size_t bytes = more * sizeof(Word);
  errno = 0;
  const std::size_t read = freadEndianSwap4(piece.data() + kept, bytes, file_);
  if (read == bytes) {
    unread_ -= more;
  } else if (std::ferror(file_)) {
    fail({.code = MessageCode::input_failed, .found = static_cast<unsigned>(errno)});
  } else {
    fail({.code = MessageCode::too_large, .what = "list", .found = bytes, .expected = read});
  }
  piece_ = std::move(piece);
  words_ = piece_;
  return !error_;
}

int read_list(std::FILE* file, Word size, Qis& scene, std::string_view list_name, const MessageSink& sink) {
  const std::uint64_t begin = position(file);
  const MessageSink placing_sink = [&](Message message) {
    message.base = begin;
    sink(message);
  };
  Message message{.code = MessageCode::too_large,
                  .list = list_name,
                  .what = "list",
                  .found = size,
                  .expected = bytes_left(file),
                  .offset = begin,
                  .base = 0};
  if (size % sizeof(Word) != 0) message.code = MessageCode::no_whole_words;
  if (size % sizeof(Word) != 0 || size > message.expected) {
    sink(message);
    return 0;
  }
  int result = 0;
  for_each_list(scene, [&]<class L>(const ListInfo& info, L& list) {
    if (info.name == list_name)
      result = size == 0 ? ResetList<L>{info.extension}(list)
                         : SetupList<L>{info.name}(file, size, list, placing_sink);
  });
  return result;
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
