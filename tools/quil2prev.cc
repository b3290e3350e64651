/// @file
/// The command lines for quil2zex, zex2bin, the loaders and the user's own script.
#include "tools/quil2prev.h"

#include "tools/cnvopts.h"

namespace {

std::string zex_options() {
  std::string options;
  return cmd_quil2zex(options);
}

}  // namespace

std::string& cmd_quil2zex(std::string& out) {
  // The envelope segment is kept with the options, but the converter has no use for it.
  const struct {
    const char* key;
    const char* text;
    bool flag = false;
  } options[] = {
      {" -scale ", ngops.scale},
      {" -vtxcache ", ngops.vtxcache},
      {" -vtxload ", ngops.vtxload},
      {" -vtxseg ", ngops.vtxseg},
      {" -imgseg ", ngops.imgseg},
      {" -tlutseg ", ngops.tlutseg},
      {" -noreduct ", ngops.noreduct, true},
      {" -fogoff ", ngops.fogoff, true},
  };
  out.clear();
  for (const auto& [key, text, flag] : options) {
    if (!*text) continue;
    out += key;
    if (!flag) out += text;
  }
  return out;
}

std::string cmd_zex_preview(ZexBoard board) {
  return "cd ../zexview; ./quil2zex " + zex_options() +
         " model.quil model.zex; ./zex2bin scene.zex model.zex zexview.bin; " +
         (board == ZexBoard::emu_board ? "pxsend -s zexview.KAVO; pxsend -s -o 0x200000 zexview.bin"
                                       : "bxsend -n -e zexview.KAVO; bxsend -n -s 0x200000 zexview.bin");
}

std::string cmd_zex() {
  return "cd ../zexview; ./quil2zex " + zex_options() + " model.quil " +
         set_abs_path(ngops.output_dir, ngops.output);
}

std::string script_scene() { return *ngops.preview_path ? ngops.preview_path : kZexScratch; }

std::string cmd_script() {
  const std::string script = *ngops.script_path ? ngops.script_path : "../zexview/prev";
  return "(cd " + getdir(script) + "; " + script + ") &";
}
