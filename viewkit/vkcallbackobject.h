/// @file
/// Objects that keep named lists of callbacks for others to register in.
#pragma once

#include <concepts>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Base of everything in the framework that others can listen to.
///
/// A callback is a member function of a receiver, which is a VkCallbackObject too: a receiver that is
/// destroyed drops out of every list by itself. While a list is being called, callbacks may be added (they
/// wait for the next call), receivers may be destroyed (they are not called any more), and so may the object
/// itself (the rest of the list is not called).
class VkCallbackObject {
 public:
  /// The list that is called when the object is about to go. Its receivers take a `VkCallbackObject*` or, if
  /// the object is a component, a `VkComponent*`: the parts of more derived classes are already gone.
  static const char* const deleteCallback;

  VkCallbackObject();
  VkCallbackObject(const VkCallbackObject&) = delete;
  VkCallbackObject& operator=(const VkCallbackObject&) = delete;
  virtual ~VkCallbackObject();

  /// Registers `receiver->member(sender, clientData, callData)` in the list `name`, which is made if need be.
  /// The same registration twice is called twice.
  template <class Receiver, class Base, class Sender>
  void addCallback(std::string_view name, Receiver* receiver, void (Base::*member)(Sender*, void*, void*),
                   void* clientData = nullptr) {
    static_assert(std::derived_from<Receiver, VkCallbackObject> &&
                  std::derived_from<Sender, VkCallbackObject>);
    const auto call = [=](VkCallbackObject* sender, void* callData) {
      if (auto* typed = dynamic_cast<Sender*>(sender)) (receiver->*member)(typed, clientData, callData);
    };
    add(name, {receiver->VkCallbackObject::alive_, call});
  }

  /// Calls the list in the order of registration. A list that nobody registered in is empty.
  void callCallbacks(std::string_view name, void* callData);

 protected:
  /// Calls deleteCallback, the first time only; for destructors of classes that listeners know.
  void announceDeletion();

 private:
  struct Entry {
    std::weak_ptr<const bool> receiverAlive;
    std::function<void(VkCallbackObject* sender, void* callData)> call;
  };

  void add(std::string_view name, Entry entry);

  std::map<std::string, std::vector<Entry>, std::less<>> lists_;
  std::shared_ptr<const bool> alive_;
  bool deletionAnnounced_ = false;
};
