/// @file
/// Any bytes that open as a scene, opened in the editor's window on a virtual screen: built, laid out,
/// painted, and cleared again.
///
/// Run like fuzz_scene.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "editor/graphwindow.h"
#include "editor/look.h"
#include "editor/model/currentscene.h"
#include "editor/model/scenegraph.h"
#include "editor/structgraph.h"
#include "fuzz/scenefile.h"
#include "qilib/opensave.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"
#include "tests/support/xserver.h"

namespace {

/// The editor on a screen of its own; its textures are shown.
class ShownEditor {
 public:
  ShownEditor() {
    std::filesystem::copy_file(support::project_file("samples/quilcnvops.template"), home_.options_file());
    setenv("XDG_STATE_HOME", home_.dir().c_str(), 1);
    setenv("DISPLAY", server_.display().c_str(), 1);
    std::string words[] = {"quileditor", "-xrm", "quileditor.trueColorTextures: True"};
    char* argv[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    int argc = 3;
    app_ = std::make_unique<VkApp>("quileditor", &argc, argv, nullptr, 0, &editorResources);
    window_ = std::make_unique<GraphWindow>("QUILeditor2");
    window_->show();
    paint();
  }

  void paint() { app_->paintEverything(); }
  VkGraph& graph() { return window_->graph(); }

 private:
  const ScratchHome home_;
  const support::XServer server_;
  std::unique_ptr<VkApp> app_;
  std::unique_ptr<GraphWindow> window_;
};

struct ShownTextures : TextureDisplay {
  ShownTextures() {
    _displayTexImg = 1;
    true_color_textures = true;
  }
};

constexpr std::size_t kMostArcs = 2000;  // a window with more takes too long for a fuzzer

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static MemoryFile file;
  static const ShownTextures textures;
  static ShownEditor editor;
  file.fill({reinterpret_cast<const char*>(data), size});
  auto opened = std::make_unique<Qis>();
  if (!qiOpenQb(file.name(), *opened)) return 0;
  const SceneGraph expected = scene_graph(*opened);
  if (expected.arcs.size() > kMostArcs) return 0;
  qis = std::move(opened);
  VkGraph& graph = editor.graph();
  struct_graph(*qis, graph, textures);
  graph.displayAll();
  graph.doLayout();
  editor.paint();
  for (const auto& node : expected.nodes) require(graph.find(node.name) != nullptr, "every node is shown");
  graph.clearAll();
  return 0;
}
