/// @file
/// Where the things are that tests use.
#pragma once

#include <filesystem>
#include <string_view>

namespace support {

/// A file of the project, named below its root: "samples/quilcnvops.template".
std::filesystem::path project_file(std::string_view name);

/// A scene file or other data of the tests: "robot.quil".
std::filesystem::path data_file(std::string_view name);

/// A program under test, named below the folder of the build: "cli/quilscene". QUIL_SANITIZED_BUILD in the
/// environment is another build's folder, of programs with sanitizers, which then are the ones tested.
std::filesystem::path built_program(std::string_view name);

/// Whether built_program() gives programs with sanitizers, which need far more memory and address space.
bool programs_are_sanitized();

/// A library to load before a program under test: "tests/support/probe.so". It is always of the build of the
/// tests themselves.
std::filesystem::path preloaded_library(std::string_view name);

/// "2.02"
std::string_view project_version();

}  // namespace support
