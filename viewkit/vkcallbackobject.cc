/// @file
/// Calling callback lists whose entries, receivers and owner may change while they are called.
#include "viewkit/vkcallbackobject.h"

const char* const VkCallbackObject::deleteCallback = "deleteCallback";

VkCallbackObject::VkCallbackObject() : alive_(std::make_shared<const bool>(true)) {}

VkCallbackObject::~VkCallbackObject() { announceDeletion(); }

void VkCallbackObject::announceDeletion() {
  if (deletionAnnounced_) return;
  deletionAnnounced_ = true;
  callCallbacks(deleteCallback, nullptr);
}

void VkCallbackObject::add(std::string_view name, Entry entry) {
  auto& list = lists_[std::string(name)];
  std::erase_if(list, [](const Entry& old) { return old.receiverAlive.expired(); });
  list.push_back(std::move(entry));
}

void VkCallbackObject::callCallbacks(std::string_view name, void* callData) {
  const auto list = lists_.find(name);
  if (list == lists_.end()) return;
  const auto entries = list->second;
  const std::weak_ptr<const bool> alive = alive_;
  for (const Entry& entry : entries) {
    if (alive.expired()) return;
    if (!entry.receiverAlive.expired()) entry.call(this, callData);
  }
}
