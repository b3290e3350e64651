/// @file
/// Callback lists: order, removal, and objects that go while a list is being called.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "viewkit/vkcallbackobject.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What was called, in order.
using Log = std::vector<std::string>;

class Sender : public VkCallbackObject {};
class OtherSender : public VkCallbackObject {};

class Receiver : public VkCallbackObject {
 public:
  Receiver(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

  void heard(Sender*, void* clientData, void* callData) {
    log_.push_back(name_ + text(clientData) + text(callData));
    if (reaction) reaction();
  }
  void heardOther(OtherSender*, void*, void*) { log_.push_back(name_ + " other"); }
  void heardDeletion(VkCallbackObject* sender, void*, void*) {
    log_.push_back(name_ + " deletion");
    deleted = sender;
  }

  std::function<void()> reaction;
  VkCallbackObject* deleted = nullptr;

 private:
  static std::string text(void* data) { return data ? " " + *static_cast<std::string*>(data) : ""; }

  std::string name_;
  Log& log_;
};

class Callbacks : public testing::Test {
 protected:
  Log log;
  std::unique_ptr<Sender> sender = std::make_unique<Sender>();
  Receiver first{"first", log};
  std::unique_ptr<Receiver> second = std::make_unique<Receiver>("second", log);

  void addBoth() {
    sender->addCallback("list", &first, &Receiver::heard);
    sender->addCallback("list", second.get(), &Receiver::heard);
  }
};

TEST_F(Callbacks, CalledInOrderWithBothData) {
  std::string client = "client";
  std::string call = "call";
  sender->addCallback("list", second.get(), &Receiver::heard, &client);
  sender->addCallback("list", &first, &Receiver::heard);
  sender->callCallbacks("list", &call);
  EXPECT_THAT(log, ElementsAre("second client call", "first call"));
}

TEST_F(Callbacks, ListsAreSeparateAndUnknownOnesEmpty) {
  addBoth();
  sender->callCallbacks("other", nullptr);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Callbacks, TheSameRegistrationTwiceIsCalledTwice) {
  std::string client = "client";
  addBoth();
  sender->addCallback("list", &first, &Receiver::heard, &client);
  sender->addCallback("list", &first, &Receiver::heard);
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first", "second", "first client", "first"));
}

TEST_F(Callbacks, AReceiverOfAnotherSenderClassIsNotCalled) {
  sender->addCallback("list", &first, &Receiver::heardOther);
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Callbacks, ADestroyedReceiverDropsOut) {
  addBoth();
  second.reset();
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first"));
}

TEST_F(Callbacks, AddedDuringTheCallWaitsForTheNext) {
  sender->addCallback("list", &first, &Receiver::heard);
  first.reaction = [this] {
    first.reaction = nullptr;
    sender->addCallback("list", second.get(), &Receiver::heard);
  };
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first"));
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first", "first", "second"));
}

TEST_F(Callbacks, AReceiverThatDiesDuringTheCallIsNotCalled) {
  addBoth();
  first.reaction = [this] { second.reset(); };
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first"));
}

TEST_F(Callbacks, ASenderThatDiesDuringTheCallCallsNoMore) {
  addBoth();
  first.reaction = [this] { sender.reset(); };
  sender->callCallbacks("list", nullptr);
  EXPECT_THAT(log, ElementsAre("first"));
}

TEST_F(Callbacks, DeletionIsAnnouncedOnce) {
  const VkCallbackObject* const dying = sender.get();
  sender->addCallback(VkCallbackObject::deleteCallback, &first, &Receiver::heardDeletion);
  sender.reset();
  EXPECT_THAT(log, ElementsAre("first deletion"));
  EXPECT_EQ(first.deleted, dying);
}

}  // namespace
