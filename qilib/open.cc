/// @file
/// Opening scene files: header, core lists, version-2 structures, extension lists.
#include <algorithm>
#include <cstddef>

#include "qilib/checksizes.h"
#include "qilib/files.h"
#include "qilib/guarded.h"
#include "qilib/lists.h"
#include "qilib/opensave.h"
#include "qilib/reader.h"
#include "qilib/sizes.h"

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
          .offset = static_cast<std::uint64_t>(std::ftell(file)),
          .base = 0});
  return bytes <= left;
}

bool read_block(std::FILE* file, Words& block, Word size, std::string_view what, const MessageSink& sink) {
  if (size % sizeof(Word) != 0) {
    sink({.code = MessageCode::no_whole_words,
          .list = kFileHeader,
          .what = what,
          .found = size,
          .offset = static_cast<std::uint64_t>(std::ftell(file)),
          .base = 0});
    return false;
  }
  if (!has_bytes(file, size, what, sink)) return false;
  block.resize(size / sizeof(Word));
  return freadEndianSwap4(block.data(), size, file) == size;
}

int read_file_header(std::FILE* file, Header& header, const MessageSink& sink) {
  header = {};
  const std::uint64_t file_length = bytes_left(file);
  const bool whole = freadEndianSwap4(&header.fixed, sizeof header.fixed, file) == sizeof header.fixed;
  const bool good = check_header(header, file_length, sink);
  if (!whole) has_bytes(file, sizeof header.fixed, "fixed part", sink);
  return whole && read_block(file, header.block1, header.fixed.ext_block1_size, "extension block 1", sink) &&
         read_block(file, header.block2, header.fixed.ext_block2_size, "extension block 2", sink) &&
         qiSetupFileHeaderExt(header) && good;
}

/// Reads the core lists or the extension lists, up to the first that fails.
int read_lists(std::FILE* file, Qis& scene, bool extension, const MessageSink& sink) {
  int result = 1;
  for_each_list(scene, [&](const ListInfo& info, auto& /*list*/) {
    if (info.extension == extension)
      result = result && read_list(file, list_bytes(scene.header, info), scene, info.name, sink);
  });
  return result;
}

/// Empties the scene, once the file could be opened, and reads the version-1 part into it.
/// @returns nothing when the file could not be opened: what the scene holds is not this file's.
std::optional<int> open_version1(const std::string& filename, Qis& scene, const MessageSink& sink) {
  const File file = open_to_read(filename, sink);
  if (!file) return std::nullopt;
  Qis empty;
  empty.filename = filename;  // aside: the name may be the scene's own
  scene = std::move(empty);
  return read_file_header(file.get(), scene.header, sink) && read_lists(file.get(), scene, false, sink);
}

/// Makes the version-2 structures, list by list, up to the first list that fails.
int setup_version2_structures(Qis& scene, const MessageSink& sink) {
  int result = 1;
  for_each_list(scene, [&]<class L>(const ListInfo& info, L& list) {
    using Record = typename RecordIn<L>::Type;
    if constexpr (requires(Record r) { r.ext; }) result = result && SetupExt<Record>{info.name}(list, sink);
  });
  return result;
}

int open_extension_lists(Qis& scene, const MessageSink& sink) {
  const File file = open_to_read(scene.filename, sink);
  if (!file) return 0;
  if (fseeko(file.get(), static_cast<off_t>(qiSizeofQUIL1file(scene.header)), SEEK_SET) != 0) return 0;
  return read_lists(file.get(), scene, true, sink);
}

}  // namespace

/// The lists and structures of a file of either version.
int open_lists(const std::string& filename, Qis& scene, const MessageSink& sink) {
  const std::optional<int> result = open_version1(filename, scene, sink);
  if (!result) return 0;
  if (qiQUILver(scene.header) != kVersion2) return *result;
  if (!setup_version2_structures(scene, sink)) return 0;
  if (!has_ext_sizes(scene.header)) return *result;
  return open_extension_lists(scene, sink) ? *result : 0;
}

int open_scene(const std::string& filename, Qis& scene, const MessageSink& sink) {
  return guarded(sink, [&] {
    if (!open_lists(filename, scene, sink)) return 0;
    carry_sizes(scene);
    return 1;
  });
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
  return qi::guarded(qi::print_message,
                     [&] { return qi::open_version1(filename, scene, qi::print_message).value_or(0); });
}

int qiOpenQb2Ext(Qis& scene) {
  return qi::guarded(qi::print_message, [&] { return qi::open_extension_lists(scene, qi::print_message); });
}

int qiOpenQb(const std::string& filename, Qis& scene) {
  return qi::open_scene(filename, scene, qi::print_message);
}
