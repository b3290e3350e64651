/// @file
/// Reading and writing the current scene.
#include "editor/scenefiles.h"

#include <utility>

#include "editor/model/currentscene.h"
#include "qilib/checksizes.h"
#include "qilib/edit.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"

int quilread(const std::string& path) {
  auto fresh = qiNewQis();
  const int result = qiOpenQb(path, *fresh);
  if (result == 1) qis = std::move(fresh);
  return result;
}

int quilsave(const std::string& path, int mode) {
  const Word version = qiQUILver(qis->header);
  if (version != qi::kVersion1 && version != qi::kVersion2) return -1;
  qiCheckSizes(*qis, mode);
  return (mode == 1 ? qiSaveAsQb(*qis, path) : qiSaveAsQb2(*qis, path)) == 1 ? 0 : -1;
}
