/// @file
/// What a check can find: a row for each, with the name that other programs know it by.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "qilib/messages.h"

namespace checks {

enum class Level {
  error,        ///< the file can't be opened, or breaks a rule of the format
  warning,      ///< a converter may stumble over it
  information,  ///< worth knowing
  hint          ///< odd, and nothing reads it
};
inline constexpr std::string_view kLevelNames[] = {"error", "warning", "information", "hint"};

struct Code {
  std::string_view name;  ///< "REFERENCE_OUT_OF_RANGE"; stays as it is from version to version
  std::string_view sort;  ///< the word for it on a line that people read
  Level level;            ///< unless the user wants another one
};

inline constexpr Code kNotOpened{"NOT_OPENED", "message", Level::error};
inline constexpr Code kSizeWrong{"SIZE_WRONG", "size", Level::error};
inline constexpr Code kReferenceOutOfRange{"REFERENCE_OUT_OF_RANGE", "reference", Level::error};
inline constexpr Code kLoop{"LOOP", "loop", Level::error};
inline constexpr Code kTooManyReferences{"TOO_MANY_REFERENCES", "limit", Level::error};
inline constexpr Code kReferenceRepeated{"REFERENCE_REPEATED", "repeat", Level::warning};
inline constexpr Code kTextureTypeUnknown{"TEXTURE_TYPE_UNKNOWN", "texture", Level::error};
inline constexpr Code kTextureDepthUnknown{"TEXTURE_DEPTH_UNKNOWN", "texture", Level::error};
inline constexpr Code kTextureTooLarge{"TEXTURE_LARGER_THAN_TEXELS", "texture", Level::error};
inline constexpr Code kPaletteTooShort{"PALETTE_TOO_SHORT", "texture", Level::error};
inline constexpr Code kNumberNotFinite{"NUMBER_NOT_FINITE", "number", Level::warning};
inline constexpr Code kDistanceFalls{"DISTANCE_FALLS", "number", Level::warning};
inline constexpr Code kNameIndexWrong{"NAME_INDEX_WRONG", "index", Level::warning};
inline constexpr Code kNameControlCharacter{"NAME_CONTROL_CHARACTER", "name", Level::warning};
inline constexpr Code kRecordIndexWrong{"RECORD_INDEX_WRONG", "hint", Level::hint};
inline constexpr Code kExternalNameMissing{"EXTERNAL_NAME_MISSING", "note", Level::information};
inline constexpr Code kNameEmpty{"NAME_EMPTY", "note", Level::information};
inline constexpr Code kNameEqual{"NAME_EQUAL", "note", Level::information};
inline constexpr Code kChainRootLoop{"CHAIN_ROOT_LOOP", "note", Level::information};
inline constexpr Code kPaletteOdd{"PALETTE_ODD", "note", Level::information};
inline constexpr Code kUnused{"UNUSED", "note", Level::information};
inline constexpr Code kUnreached{"UNREACHED", "note", Level::information};

/// The code of what the library says.
const Code& code_of(qi::MessageCode message);

/// All of them.
std::span<const Code* const> codes();
const Code* find_code(std::string_view name);
std::optional<Level> find_level(std::string_view name);

}  // namespace checks
