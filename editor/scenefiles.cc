/// @file
/// Reading and writing the current scene.
#include "editor/scenefiles.h"

#include <utility>

#include "editor/model/currentscene.h"
#include "qilib/checksizes.h"
#include "qilib/edit.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"

int quilread(const std::string& path, const qi::MessageSink& sink) {
  auto fresh = qiNewQis();
  const int result = qi::open_scene(path, *fresh, sink);
  if (result == 1) qis = std::move(fresh);
  return result;
}

int quilsave(const std::string& path, int mode, const qi::MessageSink& sink) {
  if (!has_scene()) return -1;
  qi::correct_sizes(*qis, mode, sink);
  return qiSetFilename(path, *qis) && qi::save_scene(*qis, mode, sink) == 1 ? 0 : -1;
}

bool write_scene(std::FILE* file) {
  if (!has_scene()) return false;
  qi::correct_sizes(*qis, qi::kFromStructures, [](const qi::Message&) {});
  return qiWriteScene(file, *qis, qi::kFromStructures) == 1;
}

bool has_scene() {
  const Word version = qiQUILver(qis->header);
  return version == qi::kVersion1 || version == qi::kVersion2;
}
