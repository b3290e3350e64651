/// @file
/// The command `new` of edit scripts.
#include "cli/newelement.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "qilib/builders.h"

namespace {

constexpr std::size_t kMostNumbers = 5;
using Numbers = std::array<std::int64_t, kMostNumbers>;

struct Element {
  std::string_view word;
  std::size_t numbers;
  bool ends_with_shape;
  Word (*build)(Qis& scene, const Numbers& numbers);
};

/// The shape of that number. A number that no record can have becomes one that none has.
Word shape(std::int64_t number) { return std::in_range<Word>(number) ? static_cast<Word>(number) : kUnset; }

constexpr Element kElements[] = {
    {"chainroot", 0, false, [](Qis& scene, const Numbers&) { return qiAddChainRoot(scene); }},
    {"joint", 0, false, [](Qis& scene, const Numbers&) { return qiAddJoint(scene); }},
    {"effector", 0, false, [](Qis& scene, const Numbers&) { return qiAddEffector(scene); }},
    {"weight", 1, false, [](Qis& scene, const Numbers& n) { return qiAddWeightGroup(scene, n[0]); }},
    {"envelope", 5, true,
     [](Qis& scene, const Numbers& n) { return qiAddEnvelope(scene, n[0], n[1], n[2], n[3], shape(n[4])); }},
    {"cluster", 3, true,
     [](Qis& scene, const Numbers& n) { return qiAddClusterShape(scene, n[0], n[1], shape(n[2])); }},
};

/// A whole number; one that is too large or too small for 64 bits becomes the largest or smallest that fits.
std::optional<std::int64_t> number_of(std::string_view word) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (end != word.data() + word.size() || error == std::errc::invalid_argument) return std::nullopt;
  using Limits = std::numeric_limits<std::int64_t>;
  if (error == std::errc::result_out_of_range) return word.front() == '-' ? Limits::min() : Limits::max();
  return number;
}

struct NewElementRequest {
  const Element* element;
  Numbers numbers;
};

std::optional<NewElementRequest> request_of(const std::vector<std::string>& words) {
  if (words.empty()) return std::nullopt;
  const Element* const element = std::ranges::find(kElements, words.front(), &Element::word);
  if (element == std::end(kElements) || words.size() != 1 + element->numbers) return std::nullopt;
  NewElementRequest request{element, {}};
  for (std::size_t i = 0; i < element->numbers; ++i) {
    std::string_view word = words[1 + i];
    constexpr std::string_view kShapeNode = "shape_";
    const bool is_shape = element->ends_with_shape && i + 1 == element->numbers;
    if (is_shape && word.starts_with(kShapeNode)) word.remove_prefix(kShapeNode.size());
    const auto number = number_of(word);
    if (!number) return std::nullopt;
    request.numbers[i] = *number;
  }
  return request;
}

}  // namespace

bool is_new_element(const std::vector<std::string>& words) { return request_of(words).has_value(); }

Word new_element(Qis& scene, const std::vector<std::string>& words) {
  const auto request = request_of(words);
  return request ? request->element->build(scene, request->numbers) : 0;
}
