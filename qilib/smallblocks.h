/// @file
/// Memory for blocks of few bytes, of which a scene holds millions.
#pragma once

#include <cstddef>

namespace qi {

/// Whether small blocks are cut from larger ones. With the address sanitizer each comes from its allocator,
/// which watches the bytes around it.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kSmallBlocks = false;
#elif defined(__has_feature)
inline constexpr bool kSmallBlocks = !__has_feature(address_sanitizer);
#else
inline constexpr bool kSmallBlocks = true;
#endif

/// Memory for so many bytes, aligned for pointers if these are a multiple of 8, and for words otherwise.
/// Small blocks take what they ask for, rounded up to whole words, and nothing beside: the system's allocator
/// takes 32 bytes for each, and 16 more at a time. Throws std::bad_alloc. Any thread may call this.
void* take_block(std::size_t bytes);

/// Gives back what take_block gave for so many bytes.
void give_block(void* block, std::size_t bytes) noexcept;

}  // namespace qi
