/// @file
/// Running the shell command lines of the converters and loaders.
#pragma once

#include <string>

/// Writes a command line and a newline to standard output, runs it with `system`, and waits until it ends
/// (which a line that ends with "&" does at once). The commands find their standard input empty, so that none
/// waits for a terminal.
/// @returns what `system` does: 0 when the line succeeded; anything else when it failed, was killed by a
///          signal, or could not be run.
int run_shell(const std::string& line);
