/// @file
/// Viewer-format conversion and preview: the shell command lines, from the options in `ngops`.
///
/// They run in the viewer's directory "../zexview", beside the editor's working directory. Nothing in them is
/// quoted: options reach the shell as they stand.
#pragma once

#include <string>

/// The scene as the converter reads it; written before every conversion.
inline constexpr const char* kZexScratch = "../zexview/model.quil";

/// The development boards that can show a viewer file.
enum class ZexBoard { emu_board, dx_viewer };

/// Makes `out` the options of the viewer-format converter. Returns `out`.
std::string& cmd_quil2zex(std::string& out);

/// Converts the scratch scene, packs it, and loads it onto the board.
std::string cmd_zex_preview(ZexBoard board);

/// Converts the scratch scene into the output file of the options.
std::string cmd_zex();

/// The file that "Execute Script" writes for the script: the options' preview file, or else the scratch
/// scene.
std::string script_scene();

/// Runs the options' viewer script, or else "../zexview/prev", in its own directory and in the background.
std::string cmd_script();
