/// @file
/// The codes of the library's messages, and the table of all.
#include "checks/codes.h"

#include <algorithm>
#include <array>

namespace checks {
namespace {

struct MessageRow {
  qi::MessageCode message;
  Code code;
};
using enum qi::MessageCode;
constexpr MessageRow kMessages[] = {
    {out_of_memory, {"OUT_OF_MEMORY", "message", Level::error}},
    {no_input, {"FILE_NOT_OPENED", "message", Level::error}},
    {input_failed, {"FILE_NOT_READ", "message", Level::error}},
    {input_changed, {"FILE_CHANGED", "message", Level::error}},
    {unknown_version, {"VERSION_UNKNOWN", "message", Level::error}},
    {missing_data, {"DATA_MISSING", "message", Level::error}},
    {extra_data, {"DATA_EXTRA", "message", Level::error}},
    {wrong_header_size, {"HEADER_SIZE_WRONG", "message", Level::error}},
    {wrong_sum_of_lists, {"LIST_SIZES_WRONG", "message", Level::error}},
    {wrong_header_tag, {"HEADER_TAG_WRONG", "message", Level::error}},
    {too_large, {"PIECE_TOO_LARGE", "message", Level::error}},
    {no_whole_words, {"SIZE_NO_WHOLE_WORDS", "message", Level::error}},
    {wrong_length, {"FIXED_SIZE_WRONG", "message", Level::error}},
    {no_structure, {"STRUCTURE_MISSING", "message", Level::error}},
    {wrong_tag, {"TAG_WRONG", "message", Level::error}},
    {wrong_name_tag, {"NAME_TAG_WRONG", "message", Level::error}},
    {size_carried, {"SIZE_CARRIED", "hint", Level::hint}},
    {bytes_dropped, {"BYTES_DROPPED", "hint", Level::hint}},
};

constexpr const Code* kFindings[] = {&kNotOpened,
                                     &kSizeWrong,
                                     &kReferenceOutOfRange,
                                     &kLoop,
                                     &kTooManyReferences,
                                     &kReferenceRepeated,
                                     &kTextureTypeUnknown,
                                     &kTextureDepthUnknown,
                                     &kTextureTooLarge,
                                     &kPaletteTooShort,
                                     &kNumberNotFinite,
                                     &kDistanceFalls,
                                     &kNameIndexWrong,
                                     &kNameControlCharacter,
                                     &kRecordIndexWrong,
                                     &kExternalNameMissing,
                                     &kNameEmpty,
                                     &kNameEqual,
                                     &kChainRootLoop,
                                     &kPaletteOdd,
                                     &kUnused,
                                     &kUnreached};

constexpr auto kAll = [] {
  std::array<const Code*, std::size(kMessages) + std::size(kFindings)> all{};
  const auto end =
      std::ranges::transform(kMessages, all.begin(), [](const MessageRow& row) { return &row.code; }).out;
  std::ranges::copy(kFindings, end);
  return all;
}();

}  // namespace

const Code& code_of(qi::MessageCode message) {
  const auto* const row = std::ranges::find(kMessages, message, &MessageRow::message);
  return row == std::end(kMessages) ? kNotOpened : row->code;
}

std::span<const Code* const> codes() { return kAll; }

const Code* find_code(std::string_view name) {
  const auto* const found = std::ranges::find(kAll, name, &Code::name);
  return found == kAll.end() ? nullptr : *found;
}

std::optional<Level> find_level(std::string_view name) {
  const auto* const found = std::ranges::find(kLevelNames, name);
  if (found == std::end(kLevelNames)) return std::nullopt;
  return static_cast<Level>(found - std::begin(kLevelNames));
}

}  // namespace checks
