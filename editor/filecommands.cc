/// @file
/// The commands of the File menu.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "editor/scenefiles.h"
#include "qilib/sizes.h"
#include "viewkit/vkfileselectiondialog.h"
#include "viewkit/vkmessagedialogs.h"

namespace {

bool can_be_read(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);  // a pipe must not keep us waiting
  if (file >= 0) close(file);
  return file >= 0;
}

bool overwrite_is_ok() { return getTheQuestionDialog()->postAndWait("Overwrite OK?") == VkDialogReason::OK; }

}  // namespace

void GraphWindow::newGraph() {
  if (getTheQuestionDialog()->postAndWait("All data is deleted. OK?") != VkDialogReason::OK) return;
  // Only the picture is cleared: the scene stays in memory, and Save still writes it.
  graph_->clearAll();
}

void GraphWindow::open() {
  auto* chooser = getTheFileSelectionDialog();
  if (chooser->postAndWait("Open") != VkDialogReason::OK) {
    std::printf("User canceled.\n");
    return;
  }
  // A copy: the same dialog serves other commands.
  const std::string path = chooser->fileName();
  bool opened = false;
  {
    const Busy busy(prompts_, "Opening...");
    opened = quilread(path) == 1;
    if (opened) {
      std::printf("File name: %s\n", path.c_str());
      file_name_ = path;
      closeDialogs();
      graph_->clearAll();
      struct_graph(graph_.get());
      graph_->displayAll();
      graph_->doLayout();
    }
  }
  if (!opened) {
    getTheWarningDialog()->postAndWait("Can't Read QUIL File!");
    return;
  }
  showTitle();
  if (auto* kavo_tool = menu()->findNamedItem("KAVO tool")) {
    if (qiQUILver(qis->header) < qi::kVersion2)
      kavo_tool->activate();
    else
      kavo_tool->deactivate();
  }
}

void GraphWindow::save() {
  if (overwrite_is_ok()) saveToFileName();
}

void GraphWindow::saveAs() {
  auto* chooser = getTheFileSelectionDialog();
  if (chooser->postAndWait("Save As") != VkDialogReason::OK) return;
  const std::string path = chooser->fileName();
  if (can_be_read(path) && !overwrite_is_ok()) return;
  file_name_ = path;
  showTitle();
  saveToFileName();
}

void GraphWindow::quit() { theApplication->quitYourself(); }

bool GraphWindow::print(const std::string& path) { return graph_->saveToFile(path.c_str()); }

void GraphWindow::saveToFileName() {
  const bool saved = !file_name_.empty() && [&] {
    const Busy busy(prompts_, "Saving...");
    return quilsave(file_name_) == 0;
  }();
  if (!saved) getTheWarningDialog()->postAndWait("Can't write QUIL data!");
}

void GraphWindow::showTitle() {
  const std::string title =
      file_name_.empty() ? name() : file_name_.substr(file_name_.rfind('/') + 1) + " - " + name();
  setTitle(title.c_str());
}
