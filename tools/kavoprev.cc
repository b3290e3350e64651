/// @file
/// The command lines for quil2gfx, make and the loaders.
#include "tools/kavoprev.h"

#include "tools/cnvopts.h"

// The blanks differ from board to board, and stay as users know these lines from the editor's output.
const KavoBoard kKavoEmuBoard{
    .load_clean = "pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin",
    .make_suffix = " -label prev -header model.h quilpv model.c ; make)",
    .check_rom = nullptr,
    .load_preview = "(cd ../kavoprev ; pxsend) &",
    .quick_start = "(cd ../kavoprev/quickprev; pxsend -s -o0x200000 clean.bin; pxsend -s quickprev.kavo)",
    .quick_load = "(cd ../kavoprev/quickprev ; pxsend -s -o0x200000 model.bin)",
};

const KavoBoard kKavoDxViewer{
    .load_clean = "bxsend -n -v -s0x200000 ../kavoprev/quickprev/clean.bin",
    .make_suffix = " -label prev -header model.h quilpv model.c; make)",
    .check_rom = "cd ../kavoprev",
    .load_preview = "(cd ../kavoprev ; bxsend rom)&",
    .quick_start =
        "(cd ../kavoprev/quickprev; bxsend -n -v -s0x200000 clean.bin; bxsend -n -v quickprev.kavo)",
    .quick_load = "(cd ../kavoprev/quickprev ; bxsend -n -v -s0x200000 model.bin)",
};

std::string cmd_kavo_dl() {
  std::string line;
  cmd_quil2gfx(line);
  if (*ngops.header) line += " -header " + set_abs_path(ngops.output_dir, ngops.header);
  if (*ngops.label) line.append(" -label ").append(ngops.label);
  return line + " quilpv " + set_abs_path(ngops.output_dir, ngops.output) + ")";
}

std::string cmd_kavo_preview(const KavoBoard& board) {
  std::string line;
  return cmd_quil2gfx(line) + board.make_suffix;
}

std::string cmd_kavo_quick_preview() {
  std::string line;
  return cmd_quil2gfx(line) + " -label prev -b quilpv quickprev/model.bin)";
}
