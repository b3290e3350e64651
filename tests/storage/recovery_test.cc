/// @file
/// Recovery copies: what is listed, what goes, and what a folder full of junk does to them.
#include "storage/recovery.h"

#include <fcntl.h>
#include <sys/wait.h>

#include "tests/storage/savefixture.h"
#include "tests/support/faults.h"
#include "tests/support/users.h"

namespace {

namespace fs = std::filesystem;
using support::Fault;
using support::Faults;
using testing::ElementsAre;
using testing::IsEmpty;

bool write(RecoverySession& session, const std::string& contents) {
  RecoveryWriter writer(session);
  if (writer.stream()) std::fwrite(contents.data(), 1, contents.size(), writer.stream());
  return writer.commit();
}

class Recovery : public Saving {
 protected:
  /// A copy that a program left which is no longer there.
  static void leave(const std::string& origin, const std::string& contents,
                    const RecoveryStore& store = RecoveryStore()) {
    RecoverySession session(store, origin);
    EXPECT_TRUE(write(session, contents)) << session.error().text();
  }
  std::vector<int> numbers() const {
    std::vector<int> numbers;
    for (const RecoveryCopy& copy : copies()) numbers.push_back(copy.number);
    return numbers;
  }

  const fs::path store_ = state_ / "quileditor/recovery";
};

TEST_F(Recovery, WithoutAFolderThereAreNoCopies) { EXPECT_THAT(copies(), IsEmpty()); }

TEST_F(Recovery, ACopyTellsWhatItIsOfAndWhenAndByWhom) {
  const auto before = std::chrono::system_clock::now() - std::chrono::seconds(1);
  leave("/scenes/robot.quil", kNew);
  const auto found = copies();
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].number, 1);
  EXPECT_EQ(found[0].origin, "/scenes/robot.quil");
  EXPECT_EQ(found[0].size, kNew.size());
  EXPECT_EQ(found[0].process, getpid());
  EXPECT_GE(found[0].time, before);
  EXPECT_LE(found[0].time, std::chrono::system_clock::now() + std::chrono::seconds(1));
  EXPECT_FALSE(found[0].in_use);
  EXPECT_TRUE(read_file(found[0].path) == kNew);
}

TEST_F(Recovery, FolderAndFilesAreForTheirOwnerOnly) {
  umask(0);
  fs::create_directories(store_);
  leave("", kNew);
  umask(022);
  EXPECT_EQ(status(store_).st_mode & 07777u, 0700u);
  for (const auto& entry : fs::directory_iterator(store_))
    EXPECT_EQ(status(entry.path()).st_mode & 07777u, 0600u) << entry.path();
}

TEST_F(Recovery, FoldersAreMadeForTheirOwnerOnly) {
  leave("", kNew);
  EXPECT_EQ(status(state_).st_mode & 07777u, 0700u);
  EXPECT_EQ(status(store_).st_mode & 07777u, 0700u);
}

TEST_F(Recovery, TheStateFolderIsBelowHomeUnlessItIsNamed) {
  setenv("HOME", scratch_.path().c_str(), 1);
  for (const char* not_named : {"", "relative/state"}) {
    setenv("XDG_STATE_HOME", not_named, 1);
    EXPECT_EQ(RecoveryStore().folder(), scratch_.path() / ".local/state/quileditor/recovery");
  }
  setenv("XDG_STATE_HOME", "/state", 1);
  EXPECT_EQ(RecoveryStore().folder(), "/state/quileditor/recovery");
}

TEST_F(Recovery, ASessionsNextCopyReplacesItsLastOne) {
  RecoverySession session(RecoveryStore(), "/scenes/robot.quil");
  EXPECT_THAT(copies(), IsEmpty());
  ASSERT_TRUE(write(session, kOld));
  ASSERT_TRUE(write(session, kNew));
  const auto found = copies();
  ASSERT_EQ(found.size(), 1u);
  EXPECT_TRUE(read_file(found[0].path) == kNew);
  EXPECT_TRUE(found[0].in_use);
}

TEST_F(Recovery, ACopyThatIsTakenAwayLeavesNothing) {
  {
    RecoverySession session(RecoveryStore(), "/scenes/robot.quil");
    ASSERT_TRUE(write(session, kNew));
    session.remove();
    EXPECT_THAT(copies(), IsEmpty());
    ASSERT_TRUE(write(session, kNew));
    session.remove();
  }
  EXPECT_EQ(files_in(state_), 0);
}

TEST_F(Recovery, AHalfWrittenCopyIsNotListedAndReplacesNothing) {
  RecoverySession session(RecoveryStore(), "");
  {
    const RecoveryWriter writer(session);
    std::fwrite(kNew.data(), 1, kNew.size(), writer.stream());
    EXPECT_THAT(copies(), IsEmpty());
  }
  ASSERT_TRUE(write(session, kOld));
  {
    const RecoveryWriter writer(session);
    std::fwrite(kNew.data(), 1, kNew.size(), writer.stream());
  }
  EXPECT_EQ(read_file(session.path()), kOld);
}

TEST_F(Recovery, NumbersStayWhenOtherCopiesComeAndGo) {
  for (const char* name : {"a", "b", "c"}) leave(name, kOld);
  EXPECT_THAT(numbers(), ElementsAre(3, 2, 1));
  EXPECT_FALSE(RecoveryStore().remove(2));
  EXPECT_THAT(numbers(), ElementsAre(3, 1));
  leave("d", kOld);
  EXPECT_THAT(numbers(), ElementsAre(4, 3, 1));
}

TEST_F(Recovery, TheNewestIsListedFirst) {
  leave("a", kOld);
  leave("b", kOld);
  fs::last_write_time(store_ / "1.copy", fs::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_THAT(numbers(), ElementsAre(1, 2));
}

TEST_F(Recovery, WhatIsNotThereOrInUseIsNotRemoved) {
  EXPECT_EQ(RecoveryStore().remove(1), std::errc::no_such_file_or_directory);
  RecoverySession session(RecoveryStore(), "");
  ASSERT_TRUE(write(session, kNew));
  EXPECT_EQ(RecoveryStore().remove(1), std::errc::device_or_resource_busy);
  EXPECT_EQ(RecoveryStore().remove(0), std::errc::no_such_file_or_directory);
  EXPECT_EQ(RecoveryStore().remove(-1), std::errc::no_such_file_or_directory);
}

TEST_F(Recovery, AForkedChildWritesTheSessionsCopyAndTheSessionGoesOn) {
  RecoverySession session(RecoveryStore(), "/scenes/robot.quil");
  ASSERT_TRUE(write(session, kOld));
  EXPECT_EQ(in_child([&] { return write(session, kNew) ? 0 : 1; }), 0);
  ASSERT_EQ(copies().size(), 1u);
  EXPECT_TRUE(copies()[0].in_use) << "the parent lives";
  EXPECT_TRUE(read_file(session.path()) == kNew);
  session.remove();
  EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(Recovery, AProgramThatIsKilledLeavesItsLastCopy) {
  EXPECT_EQ(in_child([&] {
              RecoverySession session(RecoveryStore(), "/scenes/robot.quil");
              if (!write(session, kOld)) return 1;
              const RecoveryWriter writer(session);
              std::fwrite(kNew.data(), 1, kNew.size(), writer.stream());
              return raise(SIGKILL);
            }),
            128 + SIGKILL);
  const auto found = copies();
  ASSERT_EQ(found.size(), 1u);
  EXPECT_FALSE(found[0].in_use);
  EXPECT_EQ(read_file(found[0].path), kOld);
  EXPECT_EQ(files_in(state_), 3) << "and what it was writing";
  leave("", kOld);
  EXPECT_EQ(files_in(state_), 4) << "which goes when the next copy is written";
}

TEST_F(Recovery, TheOldestCopiesGoWhenThereAreTooMany) {
  const RecoveryStore store(store_, {.copies = 3, .bytes = 1'000'000});
  for (int i = 1; i <= 5; ++i) leave("", kOld, store);
  EXPECT_THAT(numbers(), ElementsAre(5, 4, 3));
  EXPECT_EQ(files_in(state_), 6);
}

TEST_F(Recovery, TheOldestCopiesGoWhenTheyAreTooLarge) {
  const RecoveryStore store(store_, {.copies = 100, .bytes = 300'000});
  for (int i = 1; i <= 5; ++i) leave("", kNew, store);
  EXPECT_THAT(numbers(), ElementsAre(5, 4, 3));
}

TEST_F(Recovery, TwentyCopiesAndAGibibyteAreKept) {
  for (int i = 1; i <= 25; ++i) leave("", kOld);
  EXPECT_EQ(copies().size(), 20u);
  for (int i = 6; i <= 24; ++i)
    fs::resize_file(store_ / (std::to_string(i) + ".copy"), std::uint64_t{1} << 26);
  leave("", kOld);
  EXPECT_EQ(copies().size(), 16u) << "15 of 64 MiB and what is small";
}

TEST_F(Recovery, WhatALivingProgramWritesIsNeverRemovedForOthers) {
  const RecoveryStore store(store_, {.copies = 2, .bytes = 300'000});
  RecoverySession first(store, ""), second(store, "");
  ASSERT_TRUE(write(first, kNew));
  ASSERT_TRUE(write(second, kNew));
  RecoverySession third(store, "");
  EXPECT_THAT(numbers(), ElementsAre(2, 1));
  leave("", kNew + kNew, store);
  leave("", kOld, store);
  EXPECT_THAT(numbers(), ElementsAre(5, 2, 1));
  EXPECT_TRUE(write(third, kOld)) << "a session that has written nothing yet lives too";
}

TEST_F(Recovery, AnyPathComesBackAsItWas) {
  const std::string hostile = "/scenes/\norigin x\n\x1b[2J" + std::string(4000, '\xff');
  leave(hostile, kOld);
  leave("", kOld);
  const auto found = copies();
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].origin, "");
  EXPECT_EQ(found[1].origin, hostile);
}

TEST_F(Recovery, JunkInTheFolderIsLeftAlone) {
  leave("/scenes/robot.quil", kOld);
  const std::vector<std::string> junk{
      "x.copy",   "-1.copy", "0.copy",     "01.copy",   "1.copy.copy", "99999999999999999999.copy",
      "1e3.copy", ".copy",   "copy",       "notes.txt", "7.copy~",     " 7.copy",
      "x.7.tmp",  "7.infos", "7.draft.tmp"};
  for (const std::string& name : junk) write_file(store_ / name, "junk");
  fs::create_directory(store_ / "8.copy");
  fs::create_directory(store_ / "8.info");
  fs::create_symlink("/etc/passwd", store_ / "9.copy");
  ASSERT_EQ(mkfifo((store_ / "10.copy").c_str(), 0600), 0);
  ASSERT_EQ(mkfifo((store_ / "1000.info").c_str(), 0600), 0);
  EXPECT_THAT(numbers(), ElementsAre(1));
  EXPECT_EQ(RecoveryStore().remove(8), std::errc::no_such_file_or_directory);
  EXPECT_EQ(RecoveryStore().remove(9), std::errc::no_such_file_or_directory);
  leave("next", kNew);
  EXPECT_EQ(numbers().size(), 2u);
  for (const std::string& name : junk) EXPECT_EQ(read_file(store_ / name), "junk") << name;
  EXPECT_TRUE(fs::is_directory(store_ / "8.copy"));
  EXPECT_TRUE(fs::is_directory(store_ / "8.info"));
  EXPECT_TRUE(fs::is_fifo(store_ / "1000.info"));
  EXPECT_TRUE(fs::is_symlink(store_ / "9.copy"));
  EXPECT_TRUE(fs::is_fifo(store_ / "10.copy"));
}

TEST_F(Recovery, ACopyThatLostItsDescriptionIsStillListed) {
  leave("/scenes/robot.quil", kOld);
  for (const std::string& text :
       {std::string(), std::string("process"), std::string(100'000, 'x'), std::string("process 1\n"),
        std::string("process 99999999999999999999\norigin"), std::string(1000, '\0')}) {
    write_file(store_ / "1.info", text);
    ASSERT_EQ(copies().size(), 1u);
    EXPECT_EQ(copies()[0].origin, "");
  }
  fs::remove(store_ / "1.info");
  EXPECT_THAT(numbers(), ElementsAre(1));
  leave("next", kOld);
  EXPECT_THAT(numbers(), ElementsAre(2, 1)) << "its number is still its own";
}

TEST_F(Recovery, TheHighestNumberIsNotTheLast) {
  leave("", kOld);
  write_file(store_ / "999999999.copy", kOld);
  fs::last_write_time(store_ / "999999999.copy", fs::file_time_type::clock::now() - std::chrono::hours(1));
  leave("", kOld);
  EXPECT_THAT(numbers(), ElementsAre(2, 1, 999'999'999));
}

TEST_F(Recovery, AFolderThatCannotBeMadeIsAnError) {
  write_file(state_, "no folder");
  RecoverySession session(RecoveryStore(), "");
  EXPECT_EQ(session.error().text(),
            store_.string() + ": can't keep a recovery copy in this folder: Not a directory");
  EXPECT_FALSE(write(session, kOld));
  EXPECT_EQ(RecoveryWriter(session).error().number, ENOTDIR);
  std::error_code error;
  EXPECT_THAT(RecoveryStore().list(error), IsEmpty());
  EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST_F(Recovery, WithoutAHomeThereIsNoStore) {
  const RecoverySession session(RecoveryStore(""), "");
  EXPECT_EQ(session.error().number, ENOENT);
  std::error_code error;
  EXPECT_THAT(RecoveryStore("").list(error), IsEmpty());
}

class RecoveryFaults : public Recovery {};

TEST_F(RecoveryFaults, EachCallThatFailsOrIsTheLastLeavesTheOldOrTheNewCopy) {
  for (const int error : {0, EIO, EPERM}) {
    bool happened = true;
    for (int at = 1; happened; ++at) {
      SCOPED_TRACE(testing::Message() << "call " << at << " errno " << error);
      fs::remove_all(state_);
      const int status = in_child([&] {
        RecoverySession session(RecoveryStore(), "/scenes/robot.quil");
        if (!write(session, kOld)) return 100;
        const Faults faults({{"", at, error}});
        const bool written = write(session, kNew);
        return (written ? 1 : 0) + (faults.happened() ? 2 : 0);
      });
      happened = status != 1;
      const auto found = copies();
      ASSERT_EQ(found.size(), 1u);
      const std::string held = read_file(found[0].path);
      EXPECT_TRUE(held == kNew || (held == kOld && status != 1 && status != 3));
      EXPECT_EQ(found[0].origin, "/scenes/robot.quil");
      ASSERT_LT(at, 50);
    }
  }
}

}  // namespace
