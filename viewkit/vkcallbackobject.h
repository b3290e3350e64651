/// @file
/// Objects that keep named lists of callbacks for others to register in.
#pragma once

#include <concepts>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Base of everything in the framework that others can listen to.
///
/// A callback is a member function of a receiver, which is a VkCallbackObject too: a receiver that is
/// destroyed drops out of every list by itself. While a list is being called, callbacks may be added (they
/// wait for the next call) and removed (they are not called any more), and the object itself may be destroyed
/// (the rest of the list is not called).
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
  requires std::derived_from<Receiver, VkCallbackObject> && std::derived_from<Receiver, Base> &&
      (std::derived_from<Sender, VkCallbackObject>)void addCallback(std::string_view name, Receiver* receiver,
                                                                    void (Base::*member)(Sender*, void*,
                                                                                         void*),
                                                                    void* clientData = nullptr) {
    add(name, std::make_shared<Member<Base, Sender>>(*receiver, receiver, member, clientData));
  }

  /// Takes out what addCallback was given the same arguments for. Unknown ones are ignored.
  template <class Receiver, class Base, class Sender>
  requires std::derived_from<Receiver, VkCallbackObject> && std::derived_from<Receiver, Base> &&
      (std::derived_from<Sender, VkCallbackObject>)void removeCallback(
          std::string_view name, Receiver* receiver, void (Base::*member)(Sender*, void*, void*),
          void* clientData = nullptr) {
    remove(name, Member<Base, Sender>(*receiver, receiver, member, clientData));
  }

  /// Calls the list in the order of registration. A list that nobody registered in is empty.
  void callCallbacks(std::string_view name, void* callData);

 protected:
  /// Calls deleteCallback, the first time only; for destructors of classes that listeners know.
  void announceDeletion();

 private:
  struct Entry {
    Entry(const VkCallbackObject& receiver, void* data) : receiverAlive(receiver.alive_), clientData(data) {}
    virtual ~Entry() = default;
    virtual void call(VkCallbackObject* sender, void* callData) const = 0;
    virtual bool same(const Entry& other) const = 0;

    std::weak_ptr<const bool> receiverAlive;
    void* clientData;
    bool removed = false;
  };

  template <class Receiver, class Sender>
  struct Member final : Entry {
    using Function = void (Receiver::*)(Sender*, void*, void*);
    Member(const VkCallbackObject& object, Receiver* who, Function what, void* data)
        : Entry(object, data), receiver(who), function(what) {}

    void call(VkCallbackObject* sender, void* callData) const override {
      if (auto* typed = dynamic_cast<Sender*>(sender))
        (receiver->*function)(typed, this->clientData, callData);
    }
    bool same(const Entry& other) const override {
      const auto* member = dynamic_cast<const Member*>(&other);
      return member && member->receiver == receiver && member->function == function &&
             member->clientData == this->clientData;
    }

    Receiver* receiver;
    Function function;
  };

  void add(std::string_view name, std::shared_ptr<Entry> entry);
  void remove(std::string_view name, const Entry& like);

  std::map<std::string, std::vector<std::shared_ptr<Entry>>, std::less<>> lists_;
  std::shared_ptr<const bool> alive_;
  bool deletionAnnounced_ = false;
};
