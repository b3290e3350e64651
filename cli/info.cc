/// @file
/// `quilscene info`: what a file holds, at a glance.
#include <cinttypes>
#include <cstdio>

#include "cli/commandline.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/sizes.h"

namespace {

void print_header(const Qis& scene) {
  const auto& header = scene.header.fixed;
  const struct {
    const char* name;
    Word value;
  } rows[] = {{"version", qiQUILver(scene.header) >> 8},
              {"file_size", header.file_size},
              {"header_size", header.header_size},
              {"ext_block1_size", header.ext_block1_size},
              {"ext_block2_size", header.ext_block2_size}};
  for (const auto& row : rows) std::printf("%-16s %10" PRIu32 "\n", row.name, row.value);
}

void print_lists(const Qis& scene) {
  std::printf("\n%-16s %10s %12s\n", "list", "records", "bytes");
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    if (info.extension && !qi::has_ext_sizes(scene.header)) return;
    const Word bytes = qi::list_bytes(scene.header, info);
    std::printf("%-16s %10zu %12" PRIu32 "\n", info.name.data(), bytes == 0 ? 0 : qi::record_count(list),
                bytes);
  });
}

void print_names(const Qis& scene) {
  std::printf("\n");
  std::size_t number = 0;
  for (const qi::Name& name : scene.name_list.records)
    std::printf("name %zu %s\n", number++, printable(qiGetName(name)).c_str());
}

struct Request {
  std::string file;
};

void declare(CLI::App& line, Request& request) { take_file(line, request.file); }

Outcome run(const Request& request) {
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  print_header(scene);
  print_lists(scene);
  print_names(scene);
  return Outcome::well;
}

}  // namespace

Work info(CLI::App& line) { return work(line, declare, run); }
