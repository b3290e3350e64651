/// @file
/// Opening and saving fail when memory runs out; other calls let std::bad_alloc through.
#pragma once

#include <new>

#include "qilib/messages.h"

namespace qi {

/// Runs a step of a library call; running out of memory makes it fail like anything else.
template <class Step>
int guarded(const MessageSink& sink, Step step) {
  try {
    return step();
  } catch (const std::bad_alloc&) {
    sink({.code = MessageCode::out_of_memory});
    return 0;
  }
}

}  // namespace qi
