/// @file
/// Opening scene files: header, core lists, version-2 structures, extension lists.
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <optional>

#include "qilib/checksizes.h"
#include "qilib/files.h"
#include "qilib/guarded.h"
#include "qilib/lists.h"
#include "qilib/opensave.h"
#include "qilib/reader.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"

namespace qi {
namespace {

constexpr std::string_view kFileHeader = "FileHeader";

/// The checks of the header's words against each other and the file's length. Every one runs.
bool check_header(const Header& header, std::uint64_t file_length, const MessageSink& sink) {
  using Fixed = Header::Fixed;
  const Fixed& fixed = header.fixed;
  bool good = true;
  const auto check = [&](bool holds, MessageCode code, std::size_t offset, std::uint64_t found,
                         std::uint64_t expected) {
    if (holds) return;
    good = false;
    sink({.code = code,
          .list = kFileHeader,
          .found = found,
          .expected = expected,
          .offset = offset,
          .base = 0});
  };
  const Word version = qiQUILver(header);
  check(version == kVersion1 || version == kVersion2, MessageCode::unknown_version, offsetof(Fixed, version),
        fixed.version, 0);
  check(file_length >= fixed.file_size, MessageCode::missing_data, offsetof(Fixed, file_size), file_length,
        fixed.file_size);
  check(file_length <= fixed.file_size, MessageCode::extra_data, offsetof(Fixed, file_size), file_length,
        fixed.file_size);
  const std::uint64_t parts = sizeof fixed + std::uint64_t{fixed.ext_block1_size} + fixed.ext_block2_size;
  check(fixed.header_size == parts, MessageCode::wrong_header_size, offsetof(Fixed, header_size),
        fixed.header_size, parts);
  // In version 2 the extension lists lie outside the directory, so there the sum says nothing.
  const std::uint64_t sum = qiSizeofQUIL1file(header);
  check(version != kVersion1 || sum == fixed.file_size, MessageCode::wrong_sum_of_lists,
        offsetof(Fixed, list_num), sum, fixed.file_size);
  check(fixed.header_tag == 0, MessageCode::wrong_header_tag, offsetof(Fixed, header_tag), fixed.header_tag,
        0);
  return good;
}

/// Whether a piece of the header of so many bytes stands in the file; a message when it doesn't.
bool has_bytes(std::FILE* file, std::uint64_t bytes, std::string_view what, const MessageSink& sink) {
  const std::uint64_t left = bytes_left(file);
  if (bytes > left)
    sink({.code = MessageCode::too_large,
          .list = kFileHeader,
          .what = what,
          .found = bytes,
          .expected = left,
          .offset = position(file),
          .base = 0});
  return bytes <= left;
}

bool read_block(std::FILE* file, Words& block, Word size, std::string_view what, const MessageSink& sink) {
  if (size % sizeof(Word) != 0) {
    sink({.code = MessageCode::no_whole_words,
          .list = kFileHeader,
          .what = what,
          .found = size,
          .offset = position(file),
          .base = 0});
    return false;
  }
  if (!has_bytes(file, size, what, sink)) return false;
  block.resize(size / sizeof(Word));
  errno = 0;
  if (freadEndianSwap4(block.data(), size, file) == size) return true;
  sink({.code = MessageCode::input_failed, .found = static_cast<unsigned>(errno)});
  return false;
}

/// Makes the extension list size table; a message when a version-2 file has nothing to make it from.
bool has_table(Header& header, const MessageSink& sink) {
  if (qiSetupFileHeaderExt(header)) return true;
  sink({.code = MessageCode::no_structure,
        .list = kFileHeader,
        .what = "extension block 1",
        .expected = sizeof(Header::ExtSizes),
        .offset = offsetof(Header::Fixed, ext_block1_size),
        .base = 0});
  return false;
}

int read_file_header(std::FILE* file, Header& header, const MessageSink& sink) {
  header = {};
  const std::uint64_t file_length = bytes_left(file);
  const bool whole = freadEndianSwap4(&header.fixed, sizeof header.fixed, file) == sizeof header.fixed;
  const bool good = check_header(header, file_length, sink);
  if (!whole) has_bytes(file, sizeof header.fixed, "fixed part", sink);
  return whole && read_block(file, header.block1, header.fixed.ext_block1_size, "extension block 1", sink) &&
         read_block(file, header.block2, header.fixed.ext_block2_size, "extension block 2", sink) &&
         has_table(header, sink) && good;
}

/// Whether the file is still the one that the scene's core lists were read from; a message when it isn't.
bool is_unchanged(std::FILE* file, const Qis& scene, const MessageSink& sink) {
  if (!scene.read_from || storage::identity_of(fileno(file)) == scene.read_from) return true;
  sink({.code = MessageCode::input_changed});
  return false;
}

/// Is told of a list that can't be read. @returns whether to go on with the next one.
using ListFailure = std::function<bool(const ListInfo&)>;
bool stop_there(const ListInfo& /*info*/) { return false; }

/// Reads the core lists or the extension lists, up to the first that fails or on from where the directory
/// says that the next one begins.
int read_lists(std::FILE* file, Qis& scene, bool extension, const MessageSink& sink,
               const ListFailure& failed) {
  int result = 1;
  bool reading = true;
  for_each_list(scene, [&](const ListInfo& info, auto& /*list*/) {
    const Word size = list_bytes(scene.header, info);
    if (info.extension != extension) return;
    if (!reading) {
      if (size != 0) failed(info);
      return;
    }
    const std::uint64_t begin = position(file), left = bytes_left(file);
    if (read_list(file, size, scene, info.name, sink)) return;
    result = 0;
    reading = failed(info) && size <= left && fseeko(file, static_cast<off_t>(begin + size), SEEK_SET) == 0;
  });
  return result;
}

/// Keeps what follows the last list of a version-2 file.
bool read_trailing(std::FILE* file, Qis& scene, const MessageSink& sink) {
  Message message{.code = MessageCode::too_large,
                  .list = kFileHeader,
                  .what = "data after the last list",
                  .found = bytes_left(file),
                  .offset = position(file),
                  .base = 0};
  scene.trailing.resize(static_cast<std::size_t>(message.found));
  errno = 0;
  message.expected = std::fread(scene.trailing.data(), 1, scene.trailing.size(), file);
  if (message.expected == scene.trailing.size()) return true;
  if (std::ferror(file)) message = {.code = MessageCode::input_failed, .found = static_cast<unsigned>(errno)};
  sink(message);
  return false;
}

/// Empties the scene, once the file could be opened, and reads the version-1 part into it.
/// @returns nothing when the file could not be opened: what the scene holds is not this file's.
/// @param file  is opened, and stays so that no other file can get its inode before it is opened again
std::optional<int> open_version1(const std::string& filename, Qis& scene, File& file, const MessageSink& sink,
                                 const ListFailure& failed = stop_there) {
  file = open_to_read(filename, sink);
  if (!file) return std::nullopt;
  Qis empty;
  empty.filename = filename;  // aside: the name may be the scene's own
  empty.read_from = storage::identity_of(fileno(file.get()));
  scene = std::move(empty);
  if (!read_file_header(file.get(), scene.header, sink)) {
    for_each_list(scene, [&](const ListInfo& info, const auto& /*list*/) {
      if (!info.extension) failed(info);
    });
    return 0;
  }
  if (!read_lists(file.get(), scene, false, sink, failed)) return 0;
  const bool ends_here = qiQUILver(scene.header) == kVersion2 && !has_ext_sizes(scene.header);
  return (!ends_here || read_trailing(file.get(), scene, sink)) && is_unchanged(file.get(), scene, sink);
}

/// Where the extension block 1 of a record stands in the file.
std::uint64_t block1_offset(const Qis& scene, std::string_view list_name, std::size_t number) {
  std::uint64_t offset = scene.header.fixed.header_size;
  bool reached = false;
  for_each_list(scene, [&](const ListInfo& info, const auto& list) {
    reached = reached || info.name == list_name;
    if (!reached) offset += list_bytes(scene.header, info);
    if (info.name != list_name) return;
    CountSink count;
    Emitter emitter(count, kBlocksAsRead);
    const auto up_to_block1 = [&](const auto& record) {
      walk(emitter, record);
      if constexpr (requires { record.ext; })
        offset -= std::uint64_t{record.fixed.block1_size} + record.fixed.block2_size;
    };
    if constexpr (requires { list.fixed; }) {
      up_to_block1(list);
    } else if constexpr (requires { list.records; }) {
      emitter.fixed(list.header);
      emitter.words(list.sizes, list.header.count);
      for (std::size_t i = 0; i < number; ++i) walk(emitter, list.records[i]);
      up_to_block1(list.records[number]);
    }
    offset += count.total();
  });
  return offset;
}

/// Makes the version-2 structures, list by list, up to the first list that fails or of all.
int setup_version2_structures(Qis& scene, const MessageSink& sink, const ListFailure& failed) {
  const MessageSink placing_sink = [&](Message message) {
    message.base = block1_offset(scene, message.list, message.record.value_or(0));
    sink(message);
  };
  int result = 1;
  bool going = true;
  for_each_list(scene, [&]<class L>(const ListInfo& info, L& list) {
    using Record = typename RecordIn<L>::Type;
    if constexpr (requires(Record r) { r.ext; }) {
      if (!going || SetupExt<Record>{info.name}(list, placing_sink)) return;
      result = 0;
      going = failed(info);
    }
  });
  return result;
}

/// Opens the file again by its name: another one, or a new version, may stand there by now.
int open_extension_lists(Qis& scene, const MessageSink& sink, const ListFailure& failed = stop_there) {
  const File file = open_to_read(scene.filename, sink);
  if (!file || !is_unchanged(file.get(), scene, sink)) return 0;
  if (fseeko(file.get(), static_cast<off_t>(qiSizeofQUIL1file(scene.header)), SEEK_SET) != 0) {
    sink({.code = MessageCode::input_failed, .found = static_cast<unsigned>(errno)});
    return 0;
  }
  return read_lists(file.get(), scene, true, sink, failed) && read_trailing(file.get(), scene, sink) &&
         is_unchanged(file.get(), scene, sink);
}

/// The lists and structures of a file of either version.
int open_lists(const std::string& filename, Qis& scene, const MessageSink& sink,
               const ListFailure& failed = stop_there) {
  File file;
  const std::optional<int> result = open_version1(filename, scene, file, sink, failed);
  if (!result) return 0;
  if (qiQUILver(scene.header) != kVersion2) return *result;
  // In lists that could not be read, structures are missing for a reason that has been told.
  const MessageSink all_but_missing = [&](const Message& message) {
    if (message.code != MessageCode::no_structure) sink(message);
  };
  bool going = true;
  const ListFailure noting = [&](const ListInfo& info) { return going = failed(info); };
  const bool structures = setup_version2_structures(scene, *result ? sink : all_but_missing, noting);
  if (!structures && !going) return 0;
  const int so_far = structures ? *result : 0;
  if (!has_ext_sizes(scene.header)) return so_far;
  return open_extension_lists(scene, sink, failed) ? so_far : 0;
}

}  // namespace

int open_scene(const std::string& filename, Qis& scene, const MessageSink& sink) {
  return guarded(sink, [&] {
    if (!open_lists(filename, scene, sink)) return 0;
    carry_sizes(scene);
    return 1;
  });
}

Salvaged salvage_scene(const std::string& filename, Qis& scene, const MessageSink& sink) {
  Salvaged salvaged;
  const auto note = [&](const ListInfo& info) {
    salvaged.damaged.push_back(info.tag);
    return true;
  };
  salvaged.whole = guarded(sink, [&] {
    if (!open_lists(filename, scene, sink, note)) return 0;
    carry_sizes(scene);
    return 1;
  });
  return salvaged;
}

}  // namespace qi

int qiReadFileHeader(std::FILE* file, Qis& scene) {
  return qi::read_file_header(file, scene.header, qi::print_message);
}

int qiSetupFileHeaderExt(qi::Header& header) {
  if (qiQUILver(header) != qi::kVersion2) return 1;
  if (header.fixed.ext_block1_size == 0) return 0;
  if (qi::has_ext_sizes(header))
    std::copy_n(header.block1.begin(), header.ext_sizes.size(), header.ext_sizes.begin());
  return 1;
}

int qiSetFilename(const std::string& filename, Qis& scene) {
  return qi::guarded(qi::print_message, [&] {
    scene.filename = filename;
    return 1;
  });
}

int qiOpenQb1(const std::string& filename, Qis& scene) {
  return qi::guarded(qi::print_message, [&] {
    qi::File file;
    return qi::open_version1(filename, scene, file, qi::print_message).value_or(0);
  });
}

int qiOpenQb2Ext(Qis& scene) {
  return qi::guarded(qi::print_message, [&] { return qi::open_extension_lists(scene, qi::print_message); });
}

int qiOpenQb(const std::string& filename, Qis& scene) {
  return qi::open_scene(filename, scene, qi::print_message);
}
