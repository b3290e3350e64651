/// @file
/// Display-list conversion and console preview: the shell command lines, from the options in `ngops`.
///
/// They run in the preview directory "../kavoprev", beside the editor's working directory. Nothing in them is
/// quoted: options reach the shell as they stand.
#pragma once

#include <string>

/// The scene as the converter reads it; written before every conversion.
inline constexpr const char* kKavoScratch = "../kavoprev/quilpv";

/// End the loaders that send previews to a board.
inline constexpr const char* kKillLoaders[] = {"killpxsend", "killbxsend"};

/// A development board, with the command lines of its loader.
struct KavoBoard {
  const char* load_clean;    ///< clears the board's memory before a full preview
  const char* make_suffix;   ///< completes the converter's command line for a full preview
  const char* check_rom;     ///< must succeed before a full preview is loaded; nullptr: nothing to check
  const char* load_preview;  ///< loads a full preview, in the background
  const char* quick_start;   ///< clears the board and starts the quick previewer on it
  const char* quick_load;    ///< loads a quick preview
};

extern const KavoBoard kKavoEmuBoard;  ///< loaded by pxsend
extern const KavoBoard kKavoDxViewer;  ///< loaded by bxsend

/// Converts the scratch scene into display-list source, in the files that the options name.
std::string cmd_kavo_dl();

/// Converts the scratch scene and makes the board's full preview of it. Names its files itself.
std::string cmd_kavo_preview(const KavoBoard& board);

/// Converts the scratch scene into the image that the quick previewers show.
std::string cmd_kavo_quick_preview();
