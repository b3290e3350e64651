/// @file
/// The forwards that are more than another name.
#include "qilib/forwards.h"

#include <algorithm>

int qiCheckTag(Word found, Word expected) {
  if (found == expected) return 1;
  qi::print_message({.code = qi::MessageCode::wrong_tag, .found = found, .expected = expected});
  return 0;
}

std::uint64_t qiSizeofTeximg(const qi::List<qi::Teximg>& list, Word record_number) {
  if (record_number >= list.records.size()) return 0;
  const std::int64_t bytes = qi::Teximg::texel_bytes(list.records[record_number].fixed);
  return static_cast<std::uint64_t>(std::max<std::int64_t>(bytes, 0));
}

std::uint64_t qiSizeofPixelIndexArray(const qi::CiImg& image) { return qi::pixel_index_words(image.fixed); }
