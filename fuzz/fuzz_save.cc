/// @file
/// Any bytes that open as a scene, saved over another file while a call of the system fails: then the file is
/// the old or the new one, whole, and nothing lies beside it.
///
/// Run like fuzz_scene.
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <system_error>

#include "fuzz/scenefile.h"
#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"
#include "storage/recovery.h"
#include "tests/support/faults.h"
#include "tests/support/files.h"

namespace {

/// A fault that the bytes choose, so that they repeat it.
support::Fault fault_of(const std::string& bytes) {
  constexpr int kErrors[] = {EIO, ENOSPC, EDQUOT, EPERM, EACCES, EBUSY, EXDEV};
  constexpr std::size_t kMostCalls = 24;
  const std::size_t chosen = std::hash<std::string>{}(bytes);
  return {"", static_cast<int>(1 + chosen % kMostCalls), kErrors[chosen / 64 % std::size(kErrors)],
          chosen / 1024 % 2 == 0};
}

/// Whether there is a recovery copy with these contents.
bool is_kept(const std::string& state, const std::string& contents) {
  std::error_code none;
  for (const RecoveryCopy& copy : RecoveryStore(state + "/quileditor/recovery").list(none))
    if (read_file(copy.path) == contents) return true;
  return false;
}

std::filesystem::path memory_folder() {
  return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static MemoryFile file;
  static const ScratchDirectory directory(memory_folder());
  const std::string bytes(data, data + size), old = "the old file";
  file.fill(bytes);
  Qis scene;
  if (!qiOpenQb(file.name(), scene)) return 0;
  const std::string state = directory / "state";
  setenv("XDG_STATE_HOME", state.c_str(), 1);
  const std::string folder = directory / "scenes", target = folder + "/scene.quil";
  for (const int mode : {qi::kBlocksAsRead, qi::kFromStructures}) {
    std::filesystem::create_directories(folder);
    write_file(target, old);
    Qis saved = scene;
    qiCheckSizes(saved, mode);
    const std::string expected = written(saved, mode);
    const bool is_saved = [&] {
      const support::Faults armed({fault_of(bytes)});
      return (mode == qi::kFromStructures ? qiSaveAsQb2(saved, target) : qiSaveAsQb(saved, target)) == 1;
    }();
    const std::string found = read_file(target);
    require(found == expected || (!is_saved && (found == old || is_kept(state, expected))),
            "the file is the old or the new one, or a recovery copy is the new one");
    std::filesystem::remove_all(state);
    const auto beside = std::filesystem::directory_iterator(folder);
    require(std::distance(begin(beside), end(beside)) == 1, "nothing lies beside it");
  }
  return 0;
}
