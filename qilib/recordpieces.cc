/// @file
/// Names for the pieces of records.
#include "qilib/recordpieces.h"

namespace qi {

std::string RecordPiece::name() const {
  // Most records have one of these, and all two blocks.
  const auto numbered = [](const char* what, std::uint32_t n) {
    return n == 1 ? what : what + std::to_string(n);
  };
  std::string name;
  if (parts != 0) name = numbered("parts", parts) + "[" + std::to_string(key[1] - 1) + "].";
  if (in_structure) name = "structure.";
  switch (sort) {
    case Sort::fixed:
      return name + numbered("fixed", number);
    case Sort::array:
      return name + "array" + std::to_string(number);
    case Sort::texels:
      return name + "texels";
    case Sort::text:
      return name + "text";
    case Sort::block:
      return name + "block" + std::to_string(number);
    case Sort::parts:
      return name + numbered("parts", number);
  }
  return name;
}

}  // namespace qi
