/// @file
/// Opening scene files: header, core lists, version-2 structures, extension lists.
#include "qilib/opensave.h"

#include <algorithm>

#include "qilib/files.h"
#include "qilib/guarded.h"
#include "qilib/lists.h"
#include "qilib/reader.h"
#include "qilib/sizes.h"

namespace {

/// printf's %d of an unsigned number: sizes are printed as signed words.
int as_int(std::uint64_t n) { return static_cast<int>(static_cast<Word>(n)); }

/// The checks of the header's words against each other and the file's length.
bool check_header(const qi::Header& header, std::uint64_t file_length) {
  const qi::Header::Fixed& fixed = header.fixed;
  const Word version = qiQUILver(header);
  bool good = true;
  if (version != qi::kVersion1 && version != qi::kVersion2) {
    std::fprintf(stderr, "%8x\nUnknown version number.\n", fixed.version);
    good = false;
  }
  if (file_length != fixed.file_size) {
    std::fprintf(stderr, "file size %d %d\nData file size is incorrect - %s data.\n", as_int(file_length),
                 as_int(fixed.file_size), file_length < fixed.file_size ? "missing" : "extra");
    good = false;
  }
  if (sizeof fixed + std::uint64_t{fixed.ext_block1_size} + fixed.ext_block2_size != fixed.header_size) {
    std::fprintf(stderr, "Incorrect file header size.\n");
    good = false;
  }
  // In version 2 the extension lists lie outside the directory, so there the sum says nothing.
  if (version == qi::kVersion1 && qiSizeofQUIL1file(header) != fixed.file_size) {
    std::fprintf(stderr, "file size=%d,sum of list=%d\nSome of list_num data is incorrect.\n",
                 as_int(fixed.file_size), as_int(qiSizeofQUIL1file(header)));
    good = false;
  }
  if (fixed.header_tag != 0) {
    std::fprintf(stderr, "tag error.\n");
    good = false;
  }
  return good;
}

/// Whether n bytes more stand in the file; a message about the header when they don't.
bool has_bytes(std::FILE* file, std::uint64_t n, const char* what) {
  const std::uint64_t left = qi::bytes_left(file);
  if (n <= left) return true;
  qi::report({.fault = qi::ReadError::Fault::too_large,
              .what = what,
              .needed = n,
              .left = left,
              .offset = static_cast<std::size_t>(std::ftell(file))},
             "FileHeader", {});
  return false;
}

bool read_block(std::FILE* file, Words& block, Word size, const char* what) {
  if (size % sizeof(Word) != 0) {
    qi::report({.fault = qi::ReadError::Fault::not_words, .what = what, .needed = size}, "FileHeader", {});
    return false;
  }
  if (!has_bytes(file, size, what)) return false;
  block.resize(size / sizeof(Word));
  return freadEndianSwap4(block.data(), size, file) == size;
}

/// Reads the core lists or the extension lists, up to the first that fails.
int read_lists(std::FILE* file, Qis& scene, bool extension) {
  int result = 1;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, auto& /*list*/) {
    if (info.extension == extension)
      result = result && qiReadList(file, qi::list_bytes(scene.header, info), scene, info.name);
  });
  return result;
}

/// Empties the scene and reads the version-1 part into it.
int read_version1_part(std::FILE* file, const std::string& filename, Qis& scene) {
  Qis empty;
  empty.filename = filename;  // aside: the name may be the scene's own
  scene = std::move(empty);
  if (!qiReadFileHeader(file, scene)) return 0;
  return read_lists(file, scene, false);
}

int setup_version2_structures(Qis& scene) {
  return qiSetupSceneListExt(scene.scene) && qiSetupCamExt(scene.cam_list) && qiSetupObjExt(scene.obj_list) &&
         qiSetupShapeExt(scene.shape_list) && qiSetupMatExt(scene.mat_list) &&
         qiSetupTexExt(scene.tex_list) && qiSetupTeximgExt(scene.teximg_list) &&
         qiSetupAnimGroupExt(scene.anim_list);
}

}  // namespace

int qiReadFileHeader(std::FILE* file, Qis& scene) {
  qi::Header& header = scene.header;
  header = {};
  const std::uint64_t file_length = qi::bytes_left(file);
  const bool whole = freadEndianSwap4(&header.fixed, sizeof header.fixed, file) == sizeof header.fixed;
  const bool good = check_header(header, file_length);
  if (!whole) has_bytes(file, sizeof header.fixed, "fixed part");
  return whole && read_block(file, header.block1, header.fixed.ext_block1_size, "extension block 1") &&
         read_block(file, header.block2, header.fixed.ext_block2_size, "extension block 2") &&
         qiSetupFileHeaderExt(header) && good;
}

int qiSetupFileHeaderExt(qi::Header& header) {
  if (qiQUILver(header) != qi::kVersion2) return 1;
  if (header.fixed.ext_block1_size == 0) return 0;
  if (qi::has_ext_sizes(header))
    std::copy_n(header.block1.begin(), header.ext_sizes.size(), header.ext_sizes.begin());
  return 1;
}

int qiSetFilename(const std::string& filename, Qis& scene) {
  return qi::guarded([&] {
    scene.filename = filename;
    return 1;
  });
}

int qiOpenQb1(const std::string& filename, Qis& scene) {
  return qi::guarded([&] {
    const qi::File file = qiQbReadOpen(filename);
    return file ? read_version1_part(file.get(), filename, scene) : 0;
  });
}

int qiOpenQb2Ext(Qis& scene) {
  return qi::guarded([&] {
    const qi::File file = qiQbReadOpen(scene.filename);
    if (!file) return 0;
    if (fseeko(file.get(), static_cast<off_t>(qiSizeofQUIL1file(scene.header)), SEEK_SET) != 0) return 0;
    return read_lists(file.get(), scene, true);
  });
}

int qiOpenQb(const std::string& filename, Qis& scene) {
  return qi::guarded([&] {
    int result = 0;
    {
      const qi::File file = qiQbReadOpen(filename);
      if (!file) return 0;  // what the scene holds is not this file's: no set-up may touch it
      result = read_version1_part(file.get(), filename, scene);
    }
    if (qiQUILver(scene.header) != qi::kVersion2) return result;
    if (!setup_version2_structures(scene)) return 0;
    if (!qi::has_ext_sizes(scene.header)) return result;
    return qiOpenQb2Ext(scene) ? result : 0;
  });
}
