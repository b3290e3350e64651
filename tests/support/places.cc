/// @file
/// The folders of the sources and of the build, known to this file only: all others compile alike wherever
/// the project stands, which compiler caches like.
#include "tests/support/places.h"

namespace support {

namespace fs = std::filesystem;

namespace {

// No objects: constants of other files are made of them.
constexpr const char* kSources = QUIL_SOURCE_DIR;
constexpr const char* kBuild = QUIL_BUILD_DIR;

}  // namespace

fs::path project_file(std::string_view name) { return fs::path(kSources) / name; }

fs::path data_file(std::string_view name) { return fs::path(kSources) / "tests/data" / name; }

fs::path built_program(std::string_view name) { return fs::path(kBuild) / name; }

fs::path preloaded_library(std::string_view name) { return fs::path(kBuild) / name; }

bool programs_are_sanitized() { return QUIL_SANITIZED; }

std::string_view project_version() { return QUIL_VERSION; }

}  // namespace support
