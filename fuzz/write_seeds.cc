/// @file
/// Writes a small scene file per record kind into a directory, for fuzz_scene to begin with.
#include <cstdio>
#include <fstream>
#include <string>

#include "tests/qilib/kinds.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: write_seeds DIRECTORY\n");
    return 2;
  }
  for (const KindCase& kind : kinds::all()) {
    std::ofstream file(std::string(argv[1]) + "/" + kind.name + ".quil", std::ios::binary);
    file << kinds::file_with(kind).bytes().str();
    if (!file.flush()) {
      std::fprintf(stderr, "write_seeds: can't write into %s\n", argv[1]);
      return 1;
    }
  }
}
