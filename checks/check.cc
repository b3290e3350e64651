/// @file
/// Opening a file as far as that goes, and all the checks of what it holds.
#include "checks/check.h"

#include "checks/parts.h"
#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"

namespace checks {
namespace {

Finding finding_of(const qi::Message& message, const Code& code) {
  Finding finding{&code, {}, message.list, message.offset, text_of(message)};
  if (message.base && message.offset) *finding.offset += *message.base;
  const qi::ListInfo* const list = qi::find_list(message.list);
  if (message.record && list)
    finding.path = std::string{list->record} + "_" + std::to_string(*message.record);
  const std::string reason = reason_of(message);
  if (!reason.empty()) finding.text += (finding.text.empty() ? "" : "\n") + reason;
  return finding;
}

bool is_about_the_device(qi::MessageCode code) {
  return code == qi::MessageCode::no_input || code == qi::MessageCode::input_failed ||
         code == qi::MessageCode::input_changed || code == qi::MessageCode::out_of_memory;
}

/// Compares the sizes that the scene holds with what a writer would write of it as it was read. Those that
/// nothing reads are no more than odd.
void check_sizes(Qis& scene, const FindingSink& sink) {
  const qi::MessageSink telling = [&](const qi::Message& message) {
    sink(finding_of(message, code_of(message.code)));
  };
  qi::tell_carried_sizes(scene, telling);
  qi::correct_sizes(scene, qi::kBlocksAsRead, [&](qi::Message size) {
    size.code = qi::MessageCode::size_carried;
    sink(finding_of(size, kSizeWrong));
  });
  for (const int mode : {qi::kBlocksAsRead, qi::kFromStructures})
    qi::tell_dropped_bytes(scene, mode, telling);
}

}  // namespace

Reading check_file(const std::string& file, const FindingSink& sink) {
  Qis scene;
  Reading reading = Reading::whole;
  const qi::Salvaged salvaged = qi::salvage_scene(file, scene, [&](const qi::Message& message) {
    if (is_about_the_device(message.code)) reading = Reading::unreadable;
    sink(finding_of(message, code_of(message.code)));
  });
  if (!salvaged.whole) {
    sink({&kNotOpened, {}, {}, {}, "can't be opened"});
    if (reading == Reading::unreadable) return reading;
    reading = Reading::damaged;
  } else {
    check_sizes(scene, sink);
  }
  Report report(scene, sink);
  check_links(scene, salvaged.damaged, report);
  check_textures(scene, report);
  check_content(scene, salvaged.damaged, report);
  return reading;
}

}  // namespace checks
