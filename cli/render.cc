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
#include "cli/scenefile.h"
#include "editor/model/scenegraph.h"
#include "graphlayout/compact.h"
#include "graphlayout/layout.h"
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
  const bool compact = sizes.size() >= graphlayout::kCompactFrom;
  const graphlayout::Layout layout =
      compact ? graphlayout::compact(sizes, arcs).layout : graphlayout::layout(sizes, arcs);

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
    if (compact)
      laid.drawing.setArcStyle(arc, bends.empty() ? picture::ArcStyle::Stubs : picture::ArcStyle::Square);
  }
  return laid;
}

struct Request {
  std::string file, output, page, format;
  std::optional<unsigned> size;
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

constexpr const char* kStandardOutput = "-";

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  line.add_option("OUT", request.output,
                  "The picture: ends in " + std::string(picture::kFormatNames) + "; - is standard output")
      ->required()
      ->type_name("");
  line.add_option("--format", request.format, "Of the picture, if the ending of its name doesn't say it")
      ->type_name("svg|pdf|png|ps|eps");
  line.add_option("--page", request.page, "Sheets of PDF and PostScript")
      ->type_name("A5|A4|A3|A2|A1|A0|Letter|Tabloid");
  line.add_option("--size", request.size, "Pixels of a PNG, each way at most; small scenes have fewer")
      ->check(no_whole_number)
      ->type_name("N");
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
  if (output != kStandardOutput) return exportPicture(output, format, picture, paper);
  const TemporaryFolder folder;
  const std::string file = folder.path() + "/picture";
  std::string problem = exportPicture(file, format, picture, paper);
  if (!problem.empty()) return problem;
  const qi::File made = qi::open_regular(file);
  if (!made || !copy_stream(made.get(), stdout)) return "can't read " + file;
  return {};
}

Outcome run(const Request& request) {
  const auto format = picture::formatOf(request.format.empty() ? request.output : "." + request.format);
  if (!format)
    throw WrongUse("the name of a picture ends in " + std::string(picture::kFormatNames) + ": " +
                   request.output);
  const picture::Paper* const paper = request.page.empty() ? nullptr : picture::paperOf(request.page);
  if (!paper && !request.page.empty()) throw WrongUse("no such page: " + request.page);
  if (paper && !hasSheets(*format)) throw WrongUse("only PDF and PostScript have pages: " + request.output);
  if (request.size && *format != picture::FileFormat::png)
    throw WrongUse("only PNG has a size in pixels: " + request.output);
  if (request.size == 0u) throw WrongUse("a picture of no pixels");
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  const std::string& file = request.file;
  const picture::Font font;
  const Laid laid = laid_out(scene_graph(scene), font);
  const std::unordered_map<picture::ArcId, std::string> no_labels;
  const picture::Content content{laid.drawing, laid.looks, no_labels, kInks};
  const picture::Frame whole = wholeFrame(laid.drawing);
  const std::string problem = export_to(request.output, *format,
                                        {.content = content,
                                         .part = request.size ? shrunk(whole, *request.size) : whole,
                                         .partialArcs = false,
                                         .font = font,
                                         .images = {},
                                         .title = file.substr(file.rfind('/') + 1)},
                                        paper);
  if (problem.empty()) return Outcome::well;
  std::fprintf(stderr, "quilscene: %s\n", problem.c_str());
  return Outcome::failed;
}

}  // namespace

Work render(CLI::App& line) { return work(line, declare, run); }
