/// @file
/// Folders of the user who runs the program.
#pragma once

#include <filesystem>

namespace storage {

/// For what the program keeps of its own from one run to the next: "quileditor" in XDG_STATE_HOME, or in
/// ~/.local/state. It need not exist. Empty: there is none.
std::filesystem::path state_folder();

/// The home directory: HOME, or what the system knows. Empty: neither says.
std::filesystem::path home_folder();

/// Makes a folder and those above it, for their owner only. @returns 0, or an errno.
int make_folder(const std::filesystem::path& folder);

}  // namespace storage
