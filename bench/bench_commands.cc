/// @file
/// Measures quilscene on many files and on large ones, as a user calls it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

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

void run(const std::string& arguments) {
  const std::string line = support::built_program("cli/quilscene").string() + " " + arguments;
  must(std::system(line.c_str()) == 0, "quilscene failed");
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
  for (const char* command : {"graph", "info", "check"}) {
    const double seconds = timed([&] { run(std::string(command) + " --json " + file + " >" + output); });
    const double bytes = static_cast<double>(fs::file_size(output));
    std::printf("  %-24s %8.3f s  %6.1f MB  %6.1f MB/s, opening the scene included\n", command, seconds,
                bytes / 1e6, bytes / 1e6 / seconds);
  }
}

}  // namespace

int main() {
  try {
    many_files();
    large_file();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_commands: %s\n", error.what());
    return 1;
  }
}
