/// @file
/// Writes the sample scenes into a directory.
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "qilib/opensave.h"
#include "samples/scenes.h"

namespace {

constexpr const char* kUsage =
    "usage: make_samples [--objects N] [--textures MB] DIRECTORY\n"
    "Writes table.quil, harbour.quil, dog.quil and arm.quil; with an option a scene of that size, "
    "city.quil, instead.\n";

bool read_number(std::string_view text, std::uint32_t limit, std::uint32_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number <= limit;
}

/// @returns whether the scene could be written.
bool write(Qis scene, const std::filesystem::path& file) { return qiSaveAsQb2(scene, file.string()) == 1; }

}  // namespace

int main(int argc, char** argv) {
  std::uint32_t objects = 0, megabytes = 0;
  std::filesystem::path directory;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    const bool has_value = i + 1 < argc;
    if (argument == "--help") {
      std::fputs(kUsage, stdout);
      return 0;
    }
    const bool fine = argument == "--objects"    ? has_value && read_number(argv[++i], 2'000'000, objects)
                      : argument == "--textures" ? has_value && read_number(argv[++i], 3'500, megabytes)
                                                 : directory.empty() && !argument.starts_with('-');
    if (!fine) {
      std::fputs(kUsage, stderr);
      return 2;
    }
    if (!argument.starts_with('-')) directory = argument;
  }
  if (directory.empty()) {
    std::fputs(kUsage, stderr);
    return 2;
  }

  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) {
    std::fprintf(stderr, "make_samples: %s: %s\n", directory.c_str(), error.message().c_str());
    return 1;
  }
  if (objects != 0 || megabytes != 0) {
    return write(samples::city(objects, std::uint64_t{megabytes} << 20), directory / "city.quil") ? 0 : 1;
  }
  const bool written = write(samples::table(), directory / "table.quil") &&
                       write(samples::harbour(), directory / "harbour.quil") &&
                       write(samples::dog(), directory / "dog.quil") &&
                       write(samples::arm(), directory / "arm.quil");
  return written ? 0 : 1;
}
