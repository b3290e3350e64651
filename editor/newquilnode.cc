/// @file
/// Graph nodes of records.
#include "editor/newquilnode.h"

#include <string_view>

QuilVkNode::QuilVkNode(const char* name, const char* label)
    : VkNode(name, label), prefix_(std::string_view(name).substr(0, std::string_view(name).find('_'))) {}
