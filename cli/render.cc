/// @file
/// `quilscene render`: the picture of the graph that the editor's window shows, as a file.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/commandline.h"
#include "cli/copystream.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/scenefile.h"
#include "editor/model/scenegraph.h"
#include "picture/arrangement.h"
#include "picture/colors.h"
#include "picture/export.h"
#include "qilib/files.h"

namespace {

constexpr picture::Inks kInks{.background = picture::kWhite,
                              .text = picture::colorOf(picture::kTextColor),
                              .arc = picture::colorOf(picture::kArcColor),
                              .farArc = picture::colorOf(picture::kFarArcColor),
                              .border = picture::colorOf(picture::kNodeBorderColor),
                              .selection = picture::colorOf(picture::kSelectionColor),
                              .handle = picture::colorOf(picture::kHandleColor)};

/// The nodes and arcs of a scene, laid out.
struct Laid {
  picture::Drawing drawing;
  std::vector<picture::NodeLook> looks;
};

Laid laid_out(const SceneGraph& scene, const picture::Font& font) {
  Laid laid;
  picture::TextMeasure measure(font);
  std::vector<graphlayout::Size> sizes;
  for (const SceneGraph::Node& node : scene.nodes) {
    laid.looks.push_back({.label = node.label(), .tint = picture::colorOf(node.kind->tint.smooth)});
    const SgRectangle box = nodeBox(laid.looks.back(), measure.width(node.label()), measure.height());
    sizes.push_back({box.width, box.height});
  }
  std::vector<graphlayout::Arc> arcs;
  for (const SceneGraph::Arc& arc : scene.arcs) arcs.push_back({arc.parent, arc.child});
  const picture::Arrangement arrangement = picture::usualArrangement(sizes.size());
  const graphlayout::Layout layout = picture::freshLayout(arrangement, sizes, arcs);

  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const picture::NodeId node = laid.drawing.addNode();
    laid.drawing.resizeNode(node, sizes[i].width, sizes[i].height);
    laid.drawing.moveNode(node, {layout.nodes[i].x, layout.nodes[i].y});
    laid.drawing.showNode(node, true);
  }
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    std::vector<SgPoint> bends;
    for (const graphlayout::Point& bend : layout.bends.of(i)) bends.push_back({bend.x, bend.y});
    const picture::ArcId arc = laid.drawing.addArc(arcs[i].from, arcs[i].to);
    laid.drawing.setBends(arc, bends);
    laid.drawing.setArcStyle(arc, styleOf(arrangement, bends));
  }
  return laid;
}

struct RenderRequest {
  std::string file, page, format;
  std::vector<std::string> others;  ///< the picture; with a folder, further scenes
  std::optional<unsigned> size;
  FileSet files;
  Target target;

  std::string output() const { return others.empty() ? "" : others.front(); }
};

/// A folder that goes with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(std::filesystem::temp_directory_path() / "quilscene.XXXXXX") {
    if (!mkdtemp(path_.data())) throw std::runtime_error("can't make a folder in " + path_);
  }
  ~TemporaryFolder() {
    std::error_code none;
    std::filesystem::remove_all(path_, none);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

void declare(CLI::App& line, RenderRequest& request) {
  take_file(line, request.file);
  line.add_option("OUT", request.others,
                  "The picture: ends in " + std::string(picture::kFormatNames) +
                      "; - is standard output; with -C, another FILE")
      ->type_name("");
  line.add_option("--format", request.format, "Of the picture, if the ending of its name doesn't say it")
      ->type_name("svg|pdf|png|ps|eps");
  line.add_option("--page", request.page, "Sheets of PDF and PostScript")
      ->type_name("A5|A4|A3|A2|A1|A0|Letter|Tabloid");
  line.add_option("--size", request.size, "Pixels of a PNG, each way at most; small scenes have fewer")
      ->check(no_whole_number)
      ->type_name("N");
  line.add_option(
          "-C,--directory", request.target.folder,
          "Write a picture of each FILE below this folder, under the path that it has, with the format "
          "at its end")
      ->type_name("DIR");
  take_file_options(line, request.files);
}

/// The same part of the plane in a window of at most `size` pixels each way.
picture::Frame shrunk(picture::Frame frame, unsigned size) {
  frame.zoom = std::min(1.0, size / std::max(frame.width, frame.height));
  frame.width = std::max(1.0, std::floor(frame.width * frame.zoom));
  frame.height = std::max(1.0, std::floor(frame.height * frame.zoom));
  return frame;
}

/// The exporter's files replace others when they are complete, which standard output can't be.
std::string export_to(const std::string& output, picture::FileFormat format,
                      const picture::ExportedPicture& picture, const picture::Paper* paper) {
  if (output != kStandardStream) return exportPicture(output, format, picture, paper);
  const TemporaryFolder folder;
  const std::string file = folder.path() + "/picture";
  std::string problem = exportPicture(file, format, picture, paper);
  if (!problem.empty()) return problem;
  const qi::File made = qi::open_regular(file);
  if (!made || !copy_stream(made.get(), stdout)) return "can't read " + file;
  return {};
}

/// What all the pictures are like.
struct Form {
  picture::FileFormat format;
  const picture::Paper* paper;   ///< null: one page as large as the picture
  std::optional<unsigned> size;  ///< of a PNG, at most
};

Form form_of(const RenderRequest& request, const std::string& output) {
  const auto format = picture::formatOf(request.format.empty() ? output : "." + request.format);
  if (!format)
    throw WrongUse("the name of a picture ends in " + std::string(picture::kFormatNames) + ": " + output);
  const picture::Paper* const paper = request.page.empty() ? nullptr : picture::paperOf(request.page);
  if (!paper && !request.page.empty()) throw WrongUse("no such page: " + request.page);
  if (paper && !hasSheets(*format)) throw WrongUse("only PDF and PostScript have pages: " + output);
  if (request.size && *format != picture::FileFormat::png)
    throw WrongUse("only PNG has a size in pixels: " + output);
  if (request.size == 0u) throw WrongUse("a picture of no pixels");
  return {*format, paper, request.size};
}

Outcome render_file(const std::string& file, const std::string& output, const Form& form) {
  Qis scene;
  if (!open_scene(file, scene)) return Outcome::failed;
  const picture::Font font;
  const Laid laid = laid_out(scene_graph(scene), font);
  const std::unordered_map<picture::ArcId, std::string> no_labels;
  const picture::Content content{laid.drawing, laid.looks, no_labels, kInks};
  const picture::Frame whole = wholeFrame(laid.drawing);
  const std::string problem = export_to(output, form.format,
                                        {.content = content,
                                         .part = form.size ? shrunk(whole, *form.size) : whole,
                                         .partialArcs = false,
                                         .font = font,
                                         .images = {},
                                         .title = file.substr(file.rfind('/') + 1)},
                                        form.paper);
  if (problem.empty()) return Outcome::well;
  std::fprintf(stderr, "quilscene: %s\n", problem.c_str());
  return Outcome::failed;
}

/// A picture of each of many files, in a folder.
Outcome render_files(const RenderRequest& request) {
  if (request.format.empty()) throw WrongUse("with -C, --format is missing");
  const Form form = form_of(request, {});
  FileSet set = request.files;
  set.words = request.others;
  set.words.insert(set.words.begin(), request.file);
  const auto files = files_of(set);
  require_target(request.target, files);
  return for_each_file(files, set.jobs, [&](const std::string& file) -> Done {
    const std::string output = request.target.of(file) + "." + request.format;
    make_folder_of(output);
    return {render_file(file, output, form), {}};
  });
}

Outcome run(const RenderRequest& request) {
  if (!request.target.folder.empty()) return render_files(request);
  if (request.others.empty()) throw WrongUse("an OUT is missing");
  if (request.others.size() > 1) throw WrongUse("one OUT too many: " + request.others[1]);
  return render_file(request.file, request.output(), form_of(request, request.output()));
}

}  // namespace

Work render(CLI::App& line) { return work<RenderRequest>(line, declare, run); }
