/// @file
/// Sizes held against sizes written.
#include "qilib/checksizes.h"

#include <utility>

#include "qilib/lists.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"

namespace {

class SizeCheck {
 public:
  SizeCheck(Qis& scene, int mode, const qi::MessageSink& sink) : scene_(scene), mode_(mode), sink_(sink) {}

  int corrected() const { return corrected_; }

  void check_all() {
    qi::Header::Fixed& header = scene_.header.fixed;
    std::uint64_t lists = 0;
    qi::for_each_list(scene_, [&](const qi::ListInfo& info, auto& list) { lists += check_list(info, list); });

    about_list("FileHeader");
    const bool table_alone = mode_ == qi::kFromStructures && qi::has_ext_sizes(scene_.header);
    if (table_alone && header.ext_block1_size != 0)
      correct("ext_block1_size", header.ext_block1_size, sizeof(qi::Header::ExtSizes));
    const std::uint64_t header_bytes =
        sizeof header + std::uint64_t{header.ext_block1_size} + header.ext_block2_size;
    correct("header_size", header.header_size, header_bytes);
    correct("file_size", header.file_size, header_bytes + lists);
  }

 private:
  /// The next corrections are about a list, or the header.
  void about_list(std::string_view name) { about_ = {.code = qi::MessageCode::size_corrected, .list = name}; }

  void correct(std::string_view what, Word& held, std::uint64_t written) {
    if (held == static_cast<Word>(written)) return;
    about_.what = what;
    about_.found = held;
    about_.expected = written;
    sink_(about_);
    held = static_cast<Word>(written);
    ++corrected_;
  }

  /// @returns the bytes that the list takes in the file: none when it is absent.
  template <class L>
  std::uint64_t check_list(const qi::ListInfo& info, L& list) {
    Word& listed = qi::list_bytes(scene_.header, info);
    if (listed == 0 || (info.extension && !qi::has_ext_sizes(scene_.header))) return 0;
    about_list(info.name);
    check_records(list);
    about_list(info.name);
    qi::CountSink count;
    qi::Emitter emitter(count, mode_);
    walk_list(emitter, static_cast<const L&>(list));
    if constexpr (requires { list.header.size; }) correct("size", list.header.size, count.total());
    check_entry(info, listed, count.total());
    return count.total();
  }

  /// The list's entry in the directory or in the extension table, which header block 1 begins with.
  void check_entry(const qi::ListInfo& info, Word& listed, std::uint64_t bytes) {
    if (!info.extension) {
      correct("size in the directory", listed, bytes);
      return;
    }
    Word& in_block = scene_.header.block1[info.entry];
    const bool in_step = in_block == listed;
    correct("size in the extension table", listed, bytes);
    if (in_step) in_block = listed;
    correct("size in header block 1", in_block, listed);
  }

  void check_records(qi::Scene& scene) { check_record(scene); }
  template <qi::OneKindList L>
  void check_records(L& list) {
    check_kind(list.records, list.sizes);
  }
  template <qi::TwoKinds L>
  void check_records(L& list) {
    check_kind(list.records1, list.sizes1);
    check_kind(list.records2, list.sizes2);
  }
  template <class R>
  void check_kind(std::vector<R>& records, Words& sizes) {
    for (std::size_t i = 0; i < records.size(); ++i) {
      about_.record = i;
      check_record(records[i]);
      if (i < sizes.size()) correct("size in the size table", sizes[i], records[i].fixed.size);
    }
  }

  template <class R>
  void check_record(R& record) {
    const std::uint64_t bytes = check_block1_and_count(record);
    correct("size", record.fixed.size, bytes);
  }
  void check_record(qi::Envelope& envelope) {
    const auto parts = [&](std::string_view kind, auto& records) {
      about_.part = kind;
      for (about_.part_number = 0; about_.part_number < records.size(); ++about_.part_number)
        check_record(records[about_.part_number]);
    };
    parts("full-weighted part", envelope.full_weighted);
    parts("weighted part", envelope.weighted);
    parts("morph part", envelope.morphs);
    about_.part = {};
    correct("size", envelope.fixed.size, check_block1_and_count(envelope));
  }

  /// @returns the bytes that the record takes in the file.
  template <class R>
  std::uint64_t check_block1_and_count(R& record) {
    const auto count = [this](const auto& emit) {
      qi::CountSink sink;
      emit(qi::Emitter(sink, mode_));
      return sink.total();
    };
    // Counted first: what is left for texels follows from the sizes as they are now.
    const std::uint64_t bytes = count([&](auto emitter) { walk(emitter, std::as_const(record)); });
    if constexpr (requires { record.ext; })
      if (qi::writes_structure(record, mode_))
        correct("extension block 1", record.fixed.block1_size,
                count([&](auto emitter) { emitter.block1(std::as_const(record)); }));
    return bytes;
  }

  Qis& scene_;
  int mode_;
  const qi::MessageSink& sink_;
  int corrected_ = 0;
  qi::Message about_;  ///< what the next correction is about
};

}  // namespace

int qi::correct_sizes(Qis& scene, int mode, const MessageSink& sink) {
  SizeCheck check(scene, mode, sink);
  check.check_all();
  return check.corrected();
}

int qiCheckSizes(Qis& scene, int mode) { return qi::correct_sizes(scene, mode, qi::print_message); }
