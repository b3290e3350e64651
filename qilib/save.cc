/// @file
/// Saving scene files: header, core lists, extension lists.
#include <cerrno>
#include <limits>
#include <span>

#include "qilib/files.h"
#include "qilib/guarded.h"
#include "qilib/lists.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"

namespace {

/// Writes the core lists or the extension lists; a list without a size is absent, and an empty list header
/// in its place would make a file that can't be opened.
int write_lists(std::FILE* file, const Qis& scene, int mode, bool extension) {
  int result = 1;
  qi::for_each_list(scene, [&]<class L>(const qi::ListInfo& info, const L& list) {
    if (result && info.extension == extension && qi::list_bytes(scene.header, info) != 0)
      result = qi::WriteList<L>{}(file, list, mode);
  });
  return result;
}

/// Whether the file's size word can hold its length. Of a stream that has no length, such as a pipe, it can.
bool size_fits(std::FILE* file) {
  if (ftello(file) <= off_t{std::numeric_limits<Word>::max()}) return true;
  errno = EFBIG;
  return false;
}

}  // namespace

int qi::save_scene(const Qis& scene, int mode, const MessageSink& sink) {
  return guarded(sink, [&] {
    const auto file = open_to_write(scene.filename, sink);
    if (!file) return 0;
    if (qiWriteScene(file->stream(), scene, mode) && file->commit()) {
      tell_dropped_bytes(scene, mode, sink);
      return 1;
    }
    WriteError error = file->error();
    if (!error) error = {errno, WriteStep::write, scene.filename};  // too large for its size word
    sink({.code = MessageCode::output_failed, .write_error = error});
    return 0;
  });
}

std::uint64_t qi::tell_dropped_bytes(const Qis& scene, int mode, const MessageSink& sink) {
  const Header& header = scene.header;
  if (!writes_table_alone(header, mode)) return 0;
  const std::uint64_t bytes = std::span(header.block1).size_bytes() - sizeof header.ext_sizes;
  if (bytes != 0)
    sink({.code = MessageCode::bytes_dropped,
          .list = "FileHeader",
          .what = "header extension block 1, after the extension list size table,",
          .found = bytes,
          .expected = static_cast<unsigned>(mode)});
  return bytes;
}

int qiWriteFileHeaderExt(std::FILE* file, const qi::Header& header, int mode) {
  qi::FileSink sink(file);
  qi::Emitter<qi::FileSink> emitter(sink, mode);
  if (qi::writes_table_alone(header, mode)) {
    emitter.fixed(header.ext_sizes);
  } else {
    emitter.block(header.block1, header.fixed.ext_block1_size);
  }
  return sink.ok();
}

int qiWriteFileHeader(std::FILE* file, const qi::Header& header, int mode) {
  qi::FileSink sink(file);
  qi::Emitter<qi::FileSink> emitter(sink, mode);
  emitter.fixed(header.fixed);
  if (!sink.ok() || !qiWriteFileHeaderExt(file, header, mode)) return 0;
  emitter.block(header.block2, header.fixed.ext_block2_size);
  return sink.ok();
}

int qiWriteQb2Ext(std::FILE* file, const Qis& scene) {
  return !qi::has_ext_sizes(scene.header) || write_lists(file, scene, qi::kFromStructures, true);
}

int qiWriteScene(std::FILE* file, const Qis& scene, int mode) {
  return qiWriteFileHeader(file, scene.header, mode) && write_lists(file, scene, mode, false) &&
         qiWriteQb2Ext(file, scene) &&
         std::fwrite(scene.trailing.data(), 1, scene.trailing.size(), file) == scene.trailing.size() &&
         size_fits(file);
}

int qiWriteQb(const Qis& scene) { return qi::save_scene(scene, qi::kBlocksAsRead, qi::print_message); }
int qiWriteQb2(const Qis& scene) { return qi::save_scene(scene, qi::kFromStructures, qi::print_message); }

int qiSaveAsQb(Qis& scene, const std::string& filename) {
  return qiSetFilename(filename, scene) && qiWriteQb(scene);
}
int qiSaveAsQb2(Qis& scene, const std::string& filename) {
  return qiSetFilename(filename, scene) && qiWriteQb2(scene);
}
