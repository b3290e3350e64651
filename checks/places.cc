/// @file
/// Counting the bytes before a record.
#include "checks/places.h"

#include "qilib/lists.h"
#include "qilib/listwalk.h"
#include "qilib/writer.h"

namespace checks {

std::optional<std::uint64_t> Places::record(Word list_tag, std::size_t number) {
  if (list_tag != list_tag_) go_over(list_tag);
  if (number >= begins_.size()) return std::nullopt;
  return begins_[number];
}

void Places::go_over(Word list_tag) {
  list_tag_ = list_tag;
  begins_.clear();
  std::uint64_t begin = scene_.header.fixed.header_size;
  qi::for_each_list(scene_, [&](const qi::ListInfo& info, const auto& list) {
    if (info.tag == list_tag && begins_.empty() && qi::list_bytes(scene_.header, info) != 0) {
      qi::CountSink count;
      qi::Emitter emitter(count, qi::kBlocksAsRead);
      if constexpr (requires { list.records; }) {
        emitter.fixed(list.header);
        emitter.words(list.sizes, list.header.count);
        for (const auto& record : list.records) {
          begins_.push_back(begin + count.total());
          walk(emitter, record);
        }
      } else {
        begins_.assign(qi::record_count(list), begin);
      }
    }
    begin += qi::list_bytes(scene_.header, info);
  });
}

}  // namespace checks
