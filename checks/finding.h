/// @file
/// A finding, and the report that the checks add theirs to.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "checks/codes.h"
#include "checks/places.h"
#include "qilib/lists.h"

namespace checks {

/// Something that is wrong or odd in a file.
struct Finding {
  const Code* code;
  std::string path;                     ///< "obj_3.children[2]"; empty: it is about no record
  std::string_view list;                ///< "ObjList", "FileHeader"; empty: it is about neither
  std::optional<std::uint64_t> offset;  ///< the byte of the file at which it, or its record, begins
  std::string text;                     ///< for people; may have several lines
};
using FindingSink = std::function<void(const Finding&)>;

/// Takes what is found in the records of a scene.
class Report {
 public:
  Report(const Qis& scene, const FindingSink& sink) : places_(scene), sink_(sink) {}

  /// @param list   that the record is in, or would be.
  /// @param field  of the record: ".children[2]"; empty: all of it.
  /// @param text   after the record's name.
  void add(const Code& code, const qi::ListInfo& list, std::size_t number, const std::string& field,
           const std::string& text) {
    const std::string record = std::string{list.record} + "_" + std::to_string(number);
    sink_({&code, record + field, list.name, places_.record(list.tag, number), record + text});
  }

 private:
  Places places_;
  const FindingSink& sink_;
};

/// ".children[2]"
inline std::string entry(std::string_view field, std::size_t number) {
  return "." + std::string{field} + "[" + std::to_string(number) + "]";
}

}  // namespace checks
