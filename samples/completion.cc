/// @file
/// A visitor of the records' walks that sets what the reader would check.
#include "samples/completion.h"

#include "qilib/lists.h"
#include "qilib/listwalk.h"

namespace samples {

namespace {

/// The Io of the walks (see qilib/walk.h) that sets the words which say how much there is of everything. A
/// count that is a word of the record arrives as one that can be set; a computed one is right already.
class Completer {
 public:
  explicit Completer(bool version2) : version2_(version2) {}

  /// Bytes that what was visited takes in the file.
  Word bytes() const { return bytes_; }

  template <class F>
  void fixed(F&) {
    bytes_ += static_cast<Word>(sizeof(F));
  }
  void tag(Word& found, Word expected) { found = expected; }
  void name_tag(Word& found) {
    if (found == 0) found = qi::Name::kTag;
  }
  void name_list_tag(Word& found) { found = qi::list_of(found == 0 ? qi::Name::kTag : found); }
  template <class F>
  void exact(F& f) {
    f.fixed_size = sizeof f;
  }
  template <class F>
  void longer(F& f, const Words& rest) {
    f.fixed_size = static_cast<Word>(sizeof f) + add(rest);
  }

  template <class Missing>
  void counted(const Words& v, Missing /*missing*/) {
    add(v);
  }
  template <class V, class Count>
  void words(const V& v, Count&& count) {
    set(count, v);
    add(v);
  }
  template <class V, class Count>
  void items(const V& v, Count&& count) {
    words(v, count);
  }
  template <class V, class Count>
  void pairs(const V& v, Count&& count) {
    words(v, count);
  }
  template <class V, class Count>
  void columns(const V& v, Count&& count) {
    words(v, count);
  }
  template <class V, class Count>
  void slots(const V& v, Count&& count, std::size_t bytes_each) {
    set(count, v);
    bytes_ += static_cast<Word>(v.size() * bytes_each);
  }
  void bytes(const qi::CompactArray<std::byte>& v, std::int64_t) { add(v); }
  void block(const Words& v, std::int64_t) { add(v); }
  void block(const Words& v, Word& size) { size = add(v); }
  void text(const Words& v, std::int64_t) { add(v); }
  template <class Records, class Count>
  void records(Records& v, Count&& count) {
    set(count, v);
    for (auto& record : v) bytes_ += completed(record);
  }
  template <class R>
  void blocks(R& r) {
    r.fixed.block1_size = add(r.block1);
    r.fixed.block2_size = add(r.block2);
  }
  template <class R>
  void structure(R& r) {
    if (!version2_) return blocks(r);
    if (!r.ext) r.ext.emplace();
    if constexpr (std::same_as<R, qi::Tex>) {
      r.ext->palettes.resize(qi::tiles_of(r), kUnset);
      r.ext->words1.resize(qi::tiles_of(r));
    }
    Completer inner(version2_);
    walk(inner, *r.ext, qi::tiles_of(r));
    inner.rest(r.ext->tail);
    r.fixed.block1_size = inner.bytes();
    bytes_ += inner.bytes();
    r.fixed.block2_size = add(r.block2);
  }
  void rest(const Words& v) { add(v); }

  /// Completes one record. @returns the bytes that it takes.
  template <class R>
  Word completed(R& record) {
    Completer inner(version2_);
    walk(inner, record);
    if constexpr (requires { record.fixed.size; }) record.fixed.size = inner.bytes();
    if constexpr (requires { record.fixed.word2; })
      record.fixed.word2 = inner.bytes();  // where others have it
    return inner.bytes();
  }

 private:
  template <class V>
  void set(Word& count, const V& v) {
    count = static_cast<Word>(v.size());
  }
  template <class V>
  void set(const std::uint64_t&, const V&) {}

  template <class V>
  Word add(const V& v) {
    const auto size = static_cast<Word>(v.size() * sizeof(typename V::value_type));
    bytes_ += size;
    return size;
  }

  bool version2_;
  Word bytes_ = 0;
};

template <class R>
void number(std::vector<R>& records) {
  for (std::size_t i = 0; i < records.size(); ++i) records[i].fixed.index = static_cast<Word>(i);
}

/// Numbers the records and fills their size table.
template <class R>
void tabulate(std::vector<R>& records, Words& sizes, bool version2) {
  number(records);
  sizes.clear();
  for (R& record : records) sizes.push_back(Completer(version2).completed(record));
}

/// @returns the bytes that the list takes in the file.
template <class L>
Word complete_list(L& list, bool version2) {
  if (qi::record_count(list) == 0) return 0;
  if constexpr (qi::OneKindList<L>) tabulate(list.records, list.sizes, version2);
  if constexpr (qi::TwoKinds<L>) {
    tabulate(list.records1, list.sizes1, version2);
    tabulate(list.records2, list.sizes2, version2);
  }
  Completer whole(version2);
  walk_list(whole, list);
  if constexpr (std::same_as<L, qi::Scene>) {
    list.fixed.size = whole.bytes();
  } else {
    list.header.size = whole.bytes();
  }
  return whole.bytes();
}

}  // namespace

void complete(Qis& scene, Word version) {
  const bool version2 = version == qi::kVersion2;
  qi::Header::Fixed& header = scene.header.fixed;
  header = {};
  header.version = version;
  header.ext_block1_size = version2 ? Word{sizeof(qi::Header::ExtSizes)} : 0;
  header.file_size = header.header_size = Word{sizeof header} + header.ext_block1_size;
  for (qi::Name& name : scene.ext.external_name_list.records) name.fixed.tag = qi::Name::kExternalTag;
  scene.ext.external_name_list.header.tag = qi::Name::kExternalTag;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, auto& list) {
    if (info.extension && !version2) return;
    const Word bytes = complete_list(list, version2);
    qi::list_bytes(scene.header, info) = bytes;
    header.file_size += bytes;
  });
  scene.header.block1.clear();
  if (version2) scene.header.block1.assign(scene.header.ext_sizes.begin(), scene.header.ext_sizes.end());
}

}  // namespace samples
