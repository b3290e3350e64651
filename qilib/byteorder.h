/// @file
/// File words are big-endian; memory words are numbers. The one place where they turn into each other.
#pragma once

#include <cstddef>
#include <cstdio>

/// Turns every 32-bit word of the buffer from file order into host order, or back: it is its own inverse.
/// @param byte_count  a multiple of 4; up to three bytes more are left as they are.
void endianSwap4(void* buffer, std::size_t byte_count);

/// Reads bytes from the file and puts their words into host order.
/// @returns how many bytes were read, as fread does.
std::size_t freadEndianSwap4(void* buffer, std::size_t byte_count, std::FILE* file);

/// Writes elements made of words, in file order, leaving the caller's memory as it is.
/// @returns how many elements were written whole, as fwrite does.
std::size_t fwriteEndianSwap4(const void* buffer, std::size_t element_size, std::size_t count,
                              std::FILE* file);
