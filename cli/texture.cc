/// @file
/// `quilscene texture`: the images of textures as PNG files.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "cli/commandline.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "editor/model/nodenames.h"
#include "editor/model/textureimage.h"
#include "images/png.h"
#include "qilib/references.h"

namespace {

struct TextureRequest {
  std::string file, node, output, folder;
  std::size_t tile = 0;
};

void declare(CLI::App& line, TextureRequest& request) {
  take_file(line, request.file);
  auto* const node = line.add_option("NODE", request.node, "The texture: tex_0")->type_name("");
  auto* const output = take_output(line, request.output, "The PNG to write; - is standard output");
  auto* const tile = line.add_option("--tile", request.tile, "Which of its images, from 0 (default: 0)")
                         ->check(no_whole_number)
                         ->type_name("N");
  line.add_option("--all", request.folder, "Write all images of all textures into this folder")
      ->excludes(node)
      ->excludes(output)
      ->excludes(tile)
      ->type_name("DIR");
}

Outcome complain(const std::string& problem) {
  std::fprintf(stderr, "quilscene: %s\n", printable(problem).c_str());
  return Outcome::failed;
}

Outcome write_image(const Qis& scene, Word number, std::size_t tile, const std::string& output) {
  TextureImage image;
  std::string problem = take_texture_image(scene, number, tile, image);
  if (problem.empty())
    problem = output == kStandardStream ? images::write_png(stdout, image.width, image.height, image.texels)
                                        : images::save_png(output, image.width, image.height, image.texels);
  return problem.empty() ? Outcome::well : complain(problem);
}

/// tex_0.png; further tiles as tex_0_1.png.
Outcome write_all(const Qis& scene, const std::string& folder) {
  std::error_code told_by_the_files;
  std::filesystem::create_directories(folder, told_by_the_files);
  Outcome outcome = Outcome::well;
  for (Word number = 0; number < qi::record_count(scene, qi::kTexTag); ++number) {
    const std::string name = folder + "/" + node_name(kNodeKind<qi::Tex>, number);
    for (std::size_t tile = 0; tile < texture_images(scene, number); ++tile)
      outcome = std::max(
          outcome,
          write_image(scene, number, tile,
                      name + (tile == 0 ? ".png" : std::string("_").append(std::to_string(tile)) + ".png")));
  }
  return outcome;
}

Outcome run(const TextureRequest& request) {
  const bool all = !request.folder.empty();
  if (!all && request.node.empty()) throw WrongUse("a NODE is missing");
  if (!all && request.output.empty()) throw WrongUse("--output OUT is missing");
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  if (all) return write_all(scene, request.folder);
  const auto named = find_node_id(request.node);
  if (!named || named->kind != qi::kTexTag) return complain("no such texture: " + request.node);
  return write_image(scene, named->number, request.tile, request.output);
}

}  // namespace

Work texture(CLI::App& line) { return work<TextureRequest>(line, declare, run); }
