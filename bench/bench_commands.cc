/// @file
/// Measures quilscene on many files and on large ones, as a user calls it.
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "qilib/lists.h"
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/support/files.h"
#include "tests/support/places.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double kCheckLimit = 5;  // times reading the files

/// The least seconds of five runs.
double timed(const std::function<void()>& work) {
  double least = 1e9;
  for (int i = 0; i < 5; ++i) {
    const auto start = Clock::now();
    work();
    least = std::min(least, std::chrono::duration<double>(Clock::now() - start).count());
  }
  return least;
}

void must(bool well, const char* what) {
  if (!well) throw std::runtime_error(what);
}

/// @param status  that it must exit with
void run(const std::string& arguments, int status = 0) {
  const std::string line = support::built_program("cli/quilscene").string() + " " + arguments;
  const int ended = std::system(line.c_str());
  must(WIFEXITED(ended) && WEXITSTATUS(ended) == status, "quilscene failed");
}

void many_files() {
  constexpr int kFiles = 2000;
  const ScratchDirectory scratch;
  const fs::path folder = scratch.path() / "scenes";
  fs::create_directories(folder);
  Qis scene = samples::city(10, 0);
  const std::string first = folder / "0.quil";
  must(qiSaveAsQb2(scene, first) == 1, "no scene");
  for (int i = 1; i < kFiles; ++i) fs::copy_file(first, folder / (std::to_string(i) + ".quil"));
  std::printf("%d files of %ju bytes\n", kFiles, static_cast<std::uintmax_t>(fs::file_size(first)));
  const double least = timed([&] {
    for (int i = 0; i < kFiles; ++i) {
      Qis read;
      must(qiOpenQb(folder / (std::to_string(i) + ".quil"), read) == 1, "can't be read");
    }
  });
  std::printf("  %-24s %8.3f s\n", "reading them", least);
  for (const char* jobs : {"1", "2"}) {
    const double checked =
        timed([&] { run("check -r " + folder.string() + " --jobs " + jobs + " >/dev/null"); });
    std::printf("  check, %s at a time       %8.3f s  %5.2f times that (limit %.1f)\n", jobs, checked,
                checked / least, kCheckLimit);
  }
}

void large_file() {
  const ScratchDirectory scratch;
  const std::string file = scratch / "city.quil", output = scratch / "out";
  Qis scene = samples::city(100000, 0);
  must(qiSaveAsQb2(scene, file) == 1, "no scene");
  std::printf("JSON of 100000 objects\n");
  for (const char* command : {"graph", "info", "check", "show --all"}) {
    const double seconds = timed([&] { run(std::string(command) + " --json " + file + " >" + output); });
    const double bytes = static_cast<double>(fs::file_size(output));
    std::printf("  %-24s %8.3f s  %6.1f MB  %6.1f MB/s, opening the scene included\n", command, seconds,
                bytes / 1e6, bytes / 1e6 / seconds);
  }
}

/// What goes over every record, against opening the scene, which each does, too.
void every_record() {
  const ScratchDirectory scratch;
  const std::string file = scratch / "city.quil", other = scratch / "other.quil",
                    output = scratch / "out.quil";
  Qis scene = samples::city(100000, 0);
  must(qiSaveAsQb2(scene, file) == 1, "no scene");
  for (std::size_t i = 0; i < scene.obj_list.records.size(); i += 1000)
    scene.obj_list.records[i].fixed.mat = kUnset;
  for (std::size_t i = 0; i < scene.mat_list.records.size(); i += 1000)
    scene.mat_list.records[i].fixed.word22 = 1;
  must(qiSaveAsQb2(scene, other) == 1, "no scene");
  std::size_t records = 0;
  qi::for_each_list(scene, [&](const qi::ListInfo&, const auto& list) { records += qi::record_count(list); });
  std::printf("%zu records\n", records);
  const double opening = timed([&] {
    Qis read;
    must(qiOpenQb(file, read) == 1, "can't be read");
  });
  std::printf("  %-34s %8.3f s\n", "opening the scene", opening);
  const auto measure = [&](const char* what, const std::string& arguments, int status, int scenes) {
    const double seconds = timed([&] { run(arguments, status); });
    std::printf("  %-34s %8.3f s  %5.2f times opening %s\n", what, seconds, seconds / (scenes * opening),
                scenes == 1 ? "it" : "both");
  };
  measure("diff, nothing differs", "diff " + file + " " + file, 0, 2);
  measure("diff, some records differ", "diff " + file + " " + other + " >/dev/null", 1, 2);
  measure("prune --dry-run", "prune --dry-run " + file + " >/dev/null", 0, 1);
  measure("prune", "prune " + file + " -o " + output + " >/dev/null", 0, 1);
  measure("dedup --any-name", "dedup --any-name " + file + " -o " + output + " >/dev/null", 0, 1);
  measure("show --all", "show --all " + file + " >/dev/null", 0, 1);
}

}  // namespace

int main() {
  try {
    many_files();
    large_file();
    every_record();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_commands: %s\n", error.what());
    return 1;
  }
}
