/// @file
/// Opening and saving fail when memory runs out; other calls let std::bad_alloc through.
#pragma once

#include <cstdio>
#include <new>

namespace qi {

/// Runs a step of a library call; running out of memory makes it fail like anything else.
template <class Step>
int guarded(Step step) {
  try {
    return step();
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "Out of memory.\n");
    return 0;
  }
}

}  // namespace qi
