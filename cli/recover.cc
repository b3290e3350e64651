/// @file
/// `quilscene recover`: the copies of unsaved work.
#include <cinttypes>
#include <cstdio>
#include <optional>
#include <string>
#include <system_error>

#include "cli/commandline.h"
#include "cli/copystream.h"
#include "cli/printable.h"
#include "qilib/files.h"
#include "storage/recovery.h"
#include "storage/replacefile.h"

namespace {

Outcome list(const RecoveryStore& store) {
  std::error_code error;
  const auto copies = store.list(error);
  if (error) {
    std::fprintf(stderr, "quilscene: can't read %s: %s\n", store.folder().c_str(), error.message().c_str());
    return Outcome::failed;
  }
  if (!copies.empty()) std::printf("%9s  %-19s %12s  file\n", "copy", "written", "bytes");
  for (const RecoveryCopy& copy : copies) {
    const std::string origin = copy.origin.empty() ? "(never saved)" : printable(copy.origin);
    std::printf("%9d  %-19s %12" PRIu64 "  %s%s\n", copy.number, copy.local_time().c_str(), copy.size,
                origin.c_str(), copy.in_use ? " (in use)" : "");
  }
  return Outcome::well;
}

Outcome no_copy(int number) {
  std::fprintf(stderr, "quilscene: there is no copy %d\n", number);
  return Outcome::failed;
}

Outcome remove(const RecoveryStore& store, int number) {
  const std::error_code error = store.remove(number);
  if (error == std::errc::no_such_file_or_directory) return no_copy(number);
  if (!error) return Outcome::well;
  const std::string why =
      error == std::errc::device_or_resource_busy ? "a program is using it" : error.message();
  std::fprintf(stderr, "quilscene: can't remove copy %d: %s\n", number, why.c_str());
  return Outcome::failed;
}

Outcome extract(const RecoveryStore& store, int number, const std::string& output) {
  const auto found = store.find(number);
  if (!found) return no_copy(number);
  const qi::File copy = qi::open_regular(found->path);
  const auto copied_to = [&](std::FILE* stream) {
    if (copy && copy_stream(copy.get(), stream)) return true;
    std::fprintf(stderr, "quilscene: can't read copy %d\n", number);
    return false;
  };
  if (output == kStandardStream) return copied_to(stdout) ? Outcome::well : Outcome::failed;
  ReplacingFile file{output};
  if (file.stream() && !copied_to(file.stream())) return Outcome::failed;
  if (file.commit()) return Outcome::well;
  std::fprintf(stderr, "%s\nquilscene: can't write %s\n", file.error().text().c_str(), output.c_str());
  return Outcome::failed;
}

struct RecoverRequest {
  std::optional<int> copy;
  std::string output;
  bool remove = false;
};

void declare(CLI::App& line, RecoverRequest& request) {
  line.add_option("N", request.copy, "The copy's number (default: list them)")
      ->check([](const std::string& word) {
        const std::string problem = no_whole_number(word);
        return problem.empty() && word.find_first_not_of("0") == word.npos ? "the first copy is number 1"
                                                                           : problem;
      })
      ->type_name("");
  auto* const output = take_output(line, request.output, "The file to write the copy to");
  line.add_flag("--remove", request.remove, "Forget the copy")->excludes(output);
}

Outcome run(const RecoverRequest& request) {
  const RecoveryStore store;
  const bool extracts = !request.output.empty();
  if (!request.copy) {
    if (request.remove || extracts) throw WrongUse("which copy?");
    return list(store);
  }
  if (request.remove) return remove(store, *request.copy);
  if (!extracts) throw WrongUse("-o OUT is missing");
  return extract(store, *request.copy, request.output);
}

}  // namespace

Work recover(CLI::App& line) { return work<RecoverRequest>(line, declare, run); }
