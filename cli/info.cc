/// @file
/// `quilscene info`: what a file holds, at a glance.
#include <array>
#include <cinttypes>
#include <cstdio>
#include <utility>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/json.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/sizes.h"

namespace {

using HeaderRows = std::array<std::pair<const char*, Word>, 5>;
HeaderRows header_rows(const Qis& scene) {
  const auto& header = scene.header.fixed;
  return {{{"version", qiQUILver(scene.header) >> 8},
           {"file_size", header.file_size},
           {"header_size", header.header_size},
           {"ext_block1_size", header.ext_block1_size},
           {"ext_block2_size", header.ext_block2_size}}};
}

/// Calls `visit(info, records, bytes)` for the lists that a scene of its version can have.
template <class Visit>
void for_each_listed(const Qis& scene, Visit visit) {
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    if (info.extension && !qi::has_ext_sizes(scene.header)) return;
    const Word bytes = qi::list_bytes(scene.header, info);
    visit(info, bytes == 0 ? std::size_t{0} : qi::record_count(list), bytes);
  });
}

void print_header(const Qis& scene) {
  for (const auto& [name, value] : header_rows(scene)) std::printf("%-16s %10" PRIu32 "\n", name, value);
}

void print_lists(const Qis& scene) {
  std::printf("\n%-16s %10s %12s\n", "list", "records", "bytes");
  for_each_listed(scene, [](const qi::ListInfo& info, std::size_t records, Word bytes) {
    std::printf("%-16s %10zu %12" PRIu32 "\n", info.name.data(), records, bytes);
  });
}

void print_names(const Qis& scene) {
  std::printf("\n");
  std::size_t number = 0;
  for (const qi::Name& name : scene.name_list.records)
    std::printf("name %zu %s\n", number++, printable(qiGetName(name)).c_str());
}

Json info_object(const std::string& file) {
  Qis scene;
  const std::string error = open_quietly(file, scene);
  if (!error.empty()) return json_failure("info", file, error);
  Json result = json_result("info", file);
  for (const auto& [name, value] : header_rows(scene)) result[name] = value;
  result["lists"] = Json::array();
  for_each_listed(scene, [&](const qi::ListInfo& info, std::size_t records, Word bytes) {
    result["lists"].push_back({{"name", info.name}, {"records", records}, {"bytes", bytes}});
  });
  result["names"] = Json::array();
  for (const qi::Name& name : scene.name_list.records) result["names"].push_back(escaped(qiNameBytes(name)));
  return result;
}

struct InfoRequest {
  FileSet files;
  bool json = false;
};

void declare(CLI::App& line, InfoRequest& request) {
  take_files(line, request.files);
  take_json(line, request.json);
}

Outcome print_file(const std::string& file) {
  Qis scene;
  if (!open_scene(file, scene)) return Outcome::failed;
  print_header(scene);
  print_lists(scene);
  print_names(scene);
  return Outcome::well;
}

Outcome run(const InfoRequest& request) {
  return for_each_file(
      files_of(request.files), request.files.jobs,
      [&](const std::string& file) -> Done {
        return {request.json ? print_json(info_object(file)) : print_file(file), {}};
      },
      {}, request.json ? Headings::no : Headings::yes);
}

}  // namespace

Work info(CLI::App& line) { return work<InfoRequest>(line, declare, run); }
