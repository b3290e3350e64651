/// @file
/// Sizes held against sizes written.
#include "qilib/checksizes.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "qilib/lists.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"

namespace qi {
namespace {

/// By how much a size that nothing reads differed when the file was opened.
Word carried_difference(const Qis& scene, const SizeWord& word) {
  const auto& carried = scene.carried_sizes;
  const auto found = std::ranges::lower_bound(carried, word, {}, &CarriedSize::word);
  return found != carried.end() && found->word == word ? found->difference : 0;
}

/// Goes through every size word of a scene, with what a save in that mode writes. What `judge` offers:
///  - `needed(message, held, written)`: a word without which what is saved could not be opened;
///  - `stated(message, word, held, written)`: one that nothing reads.
/// The message says what it is about.
template <class S, class Judge>
class SizeWalk {
 public:
  SizeWalk(S& scene, int mode, Judge& judge) : scene_(scene), mode_(mode), judge_(judge) {}

  void run() {
    auto& header = scene_.header.fixed;
    std::uint64_t lists = 0;
    for_each_list(scene_, [&](const ListInfo& info, auto& list) {
      lists += walk_one(info, list);
      ++word_.list;
    });

    about_list("FileHeader");
    const std::uint64_t as_held = std::span(scene_.header.block1).size_bytes();
    const std::uint64_t block1 = writes_table_alone(scene_.header, mode_)
                                     ? sizeof(Header::ExtSizes)
                                     : std::max<std::uint64_t>(header.ext_block1_size, as_held);
    if (header.ext_block1_size != 0) needed("ext_block1_size", header.ext_block1_size, block1);
    const std::uint64_t header_bytes =
        sizeof header + std::uint64_t{header.ext_block1_size} + header.ext_block2_size;
    needed("header_size", header.header_size, header_bytes);
    needed("file_size", header.file_size, header_bytes + lists + scene_.trailing.size());
  }

 private:
  /// The next words are about a list, or the header.
  void about_list(std::string_view name) { about_ = {.code = MessageCode::size_corrected, .list = name}; }

  template <class W>
  Message& message(std::string_view what, W& held, std::uint64_t written) {
    about_.what = what;
    about_.found = held;
    about_.expected = written;
    return about_;
  }
  template <class W>
  void needed(std::string_view what, W& held, std::uint64_t written) {
    judge_.needed(message(what, held, written), held, static_cast<Word>(written));
  }
  template <class W>
  void stated(std::string_view what, SizeWord::Sort sort, W& held, std::uint64_t written) {
    word_.sort = sort;
    judge_.stated(message(what, held, written), word_, held, static_cast<Word>(written));
  }

  /// @returns the bytes that the list takes in the file: none when it is absent.
  template <class L>
  std::uint64_t walk_one(const ListInfo& info, L& list) {
    auto& listed = list_bytes(scene_.header, info);
    if (listed == 0 || (info.extension && !has_ext_sizes(scene_.header))) return 0;
    about_list(info.name);
    records_of(list);
    about_list(info.name);
    word_.record = SizeWord::kNone;
    CountSink count;
    Emitter emitter(count, mode_);
    walk_list(emitter, std::as_const(list));
    if constexpr (requires { list.header.size; })
      stated("size", SizeWord::kRecord, list.header.size, count.total());
    entry_of(info, listed, count.total());
    return count.total();
  }

  /// The list's entry in the directory or in the extension table, which header block 1 begins with.
  template <class W>
  void entry_of(const ListInfo& info, W& listed, std::uint64_t bytes) {
    if (!info.extension) {
      needed("size in the directory", listed, bytes);
      return;
    }
    auto& in_block = scene_.header.block1[info.entry];
    const bool in_step = in_block == listed;
    needed("size in the extension table", listed, bytes);
    if (!in_step) needed("size in header block 1", in_block, listed);
    if constexpr (!std::is_const_v<W>) in_block = listed;
  }

  template <Like<Scene> R>
  void records_of(R& scene) {
    word_.record = 0;
    record(scene);
  }
  template <OneKindList L>
  void records_of(L& list) {
    kind(list.records, list.sizes);
  }
  template <TwoKinds L>
  void records_of(L& list) {
    kind(list.records1, list.sizes1);
    word_.second_kind = true;
    kind(list.records2, list.sizes2);
    word_.second_kind = false;
  }
  void kind(auto& records, auto& sizes) {
    for (std::size_t i = 0; i < records.size(); ++i) {
      about_.record = i;
      word_.record = static_cast<Word>(i);
      const std::uint64_t bytes = record(records[i]);
      if (i < sizes.size()) stated("size in the size table", SizeWord::kTableEntry, sizes[i], bytes);
    }
  }

  /// @returns the bytes that the record takes in the file.
  template <class R>
  std::uint64_t record(R& record, SizeWord::Sort sort = SizeWord::kRecord) {
    if constexpr (Like<R, Envelope>) {
      parts("full-weighted part", SizeWord::kFullWeightedPart, record.full_weighted);
      parts("weighted part", SizeWord::kWeightedPart, record.weighted);
      parts("morph part", SizeWord::kMorphPart, record.morphs);
    }
    const std::uint64_t bytes = block1_and_count(record);
    if constexpr (Like<R, Teximg> || Like<R, Name>) {
      needed("size", record.fixed.size, bytes);  // it says how much data there is
    } else if constexpr (requires { record.fixed.size; }) {
      stated("size", sort, record.fixed.size, bytes);
    }
    return bytes;
  }
  void parts(std::string_view what, SizeWord::Sort sort, auto& records) {
    about_.part = what;
    for (word_.part = 0; word_.part < records.size(); ++word_.part) {
      about_.part_number = word_.part;
      record(records[word_.part], sort);
    }
    about_.part = {};
    word_.part = 0;
  }

  /// Bytes of a record, once the size of its extension block 1 has been looked at.
  template <class R>
  std::uint64_t block1_and_count(R& record) {
    const auto count = [this](const auto& emit) {
      CountSink sink;
      emit(Emitter(sink, mode_));
      return sink.total();
    };
    // Counted first: what is left for texels follows from the sizes as they are now.
    const std::uint64_t bytes = count([&](auto emitter) { walk(emitter, std::as_const(record)); });
    if constexpr (requires { record.ext; })
      if (writes_structure(record, mode_))
        needed("extension block 1", record.fixed.block1_size,
               count([&](auto emitter) { emitter.block1(std::as_const(record)); }));
    return bytes;
  }

  S& scene_;
  int mode_;
  Judge& judge_;
  Message about_;  ///< what the next word is about
  SizeWord word_;
};

template <class S, class Judge>
void walk_sizes(S& scene, int mode, Judge judge) {
  SizeWalk<S, Judge>(scene, mode, judge).run();
}

/// Notes what a file states. Where a size is needed and wrong (a name whose length is no whole number of
/// words), those that contain it will be corrected with it.
template <class Note>
class Noting {
 public:
  explicit Noting(Note note) : note_(note) {}

  void needed(const Message& message, Word held, Word written) {
    if (held == written) return;
    spoilt_list_ = message.list;
    spoilt_record_ = message.record;
  }
  void stated(const Message& message, const SizeWord& word, Word held, Word written) {
    const bool spoilt = message.list == spoilt_list_ && (!message.record || message.record == spoilt_record_);
    if (held != written && !spoilt) note_(CarriedSize{word, held - written});
  }

 private:
  Note note_;
  std::string_view spoilt_list_;
  std::optional<std::size_t> spoilt_record_;
};

struct Telling {
  const Qis& scene;
  const MessageSink& sink;

  void needed(const Message& /*message*/, Word /*held*/, Word /*written*/) {}
  void stated(Message& message, const SizeWord& word, Word held, Word written) {
    const Word difference = carried_difference(scene, word);
    if (difference == 0 || held != written + difference) return;
    message.code = MessageCode::size_carried;
    sink(message);
  }
};

struct Correcting {
  const Qis& scene;
  const MessageSink& sink;
  int& corrected;

  void needed(Message& message, Word& held, Word written) {
    if (held == written) return;
    sink(message);
    held = written;
    ++corrected;
  }
  void stated(Message& message, const SizeWord& word, Word& held, Word written) {
    const Word difference = carried_difference(scene, word);
    if (difference != 0) message.expected = Word{written + difference};
    needed(message, held, written + difference);
  }
};

}  // namespace

void carry_sizes(Qis& scene) {
  const auto walk_with = [&](auto note) { walk_sizes(std::as_const(scene), kFromStructures, Noting(note)); };
  std::size_t count = 0;  // known first: a list that grows would take twice its memory
  walk_with([&](const CarriedSize& /*size*/) { ++count; });
  std::vector<CarriedSize> carried;
  carried.reserve(count);
  if (count != 0) walk_with([&](const CarriedSize& size) { carried.push_back(size); });
  std::ranges::sort(carried, {}, &CarriedSize::word);
  scene.carried_sizes = std::move(carried);
}

void tell_carried_sizes(const Qis& scene, const MessageSink& sink) {
  if (!scene.carried_sizes.empty()) walk_sizes(scene, kFromStructures, Telling{scene, sink});
}

int correct_sizes(Qis& scene, int mode, const MessageSink& sink) {
  int corrected = 0;
  walk_sizes(scene, mode, Correcting{scene, sink, corrected});
  return corrected;
}

}  // namespace qi

int qiCheckSizes(Qis& scene, int mode) { return qi::correct_sizes(scene, mode, qi::print_message); }
