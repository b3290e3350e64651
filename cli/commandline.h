/// @file
/// The command line: how commands declare what they take, and what they share.
#pragma once

#include <CLI/App.hpp>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/commands.h"

/// Arguments that make no sense; says which.
struct WrongUse : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Stands for standard input where a file to read is named, for standard output where one to write is.
inline constexpr const char* kStandardStream = "-";

/// An empty command line of that command, to be declared on and then read.
std::unique_ptr<CLI::App> command_line(const Command& command);

/// The command of that name. Throws WrongUse when there is none.
const Command& command_named(const std::string& name);

/// Prints what there is, or what the command takes.
void print_help();
void print_help(const Command& command);

/// What may follow a name in an edit script.
extern const char kScriptHelp[];

/// FILE: the scene.
void take_file(CLI::App& line, std::string& file);

/// -o: the file to write.
CLI::Option* take_output(CLI::App& line, std::string& output, const std::string& what);

/// --mode: of the writer, 1 or 2.
void take_mode(CLI::App& line, int& mode);

/// What is wrong with a word that should be a whole number; empty: nothing.
std::string no_whole_number(const std::string& word);

/// --json
void take_json(CLI::App& line, bool& json);

/// The work of a command whose arguments a Request holds: declares them on the line by `declare`, and carries
/// them out by `run`.
template <class Request>
Work work(CLI::App& line, void (*declare)(CLI::App&, Request&), Outcome (*run)(const Request&)) {
  const auto request = std::make_shared<Request>();
  declare(line, *request);
  return [request, run] { return run(*request); };
}
