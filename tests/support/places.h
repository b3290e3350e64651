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

/// A program under test, named below the folder of the build: "cli/quilscene".
std::filesystem::path built_program(std::string_view name);

/// A library to load before a program under test: "tests/support/probe.so".
std::filesystem::path preloaded_library(std::string_view name);

/// Whether the programs have sanitizers, which need far more memory and address space.
bool programs_are_sanitized();

/// "2.02"
std::string_view project_version();

}  // namespace support
