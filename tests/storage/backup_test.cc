/// @file
/// The file before it was saved, and whether a file is still the one that was opened.
#include "storage/backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "storage/fileidentity.h"
#include "tests/storage/savefixture.h"
#include "tests/support/faults.h"

namespace {

namespace fs = std::filesystem;
using storage::identity_of;
using testing::ElementsAre;

class Backup : public Saving {
 protected:
  const std::string backup_ = target_ + "~";
  std::string keep() const {
    const WriteError error = storage::keep_backup(target_);
    return error ? error.text() : "";
  }
};

TEST_F(Backup, HasTheContentsAndTheModeOfTheFile) {
  write_file(target_, kOld);
  fs::permissions(target_, fs::perms{0640});
  EXPECT_EQ(keep(), "");
  EXPECT_EQ(read_file(backup_), kOld);
  EXPECT_EQ(status(backup_).st_mode & 07777u, 0640u);
  EXPECT_EQ(read_file(target_), kOld);
  EXPECT_THAT(names(), ElementsAre("scene.quil", "scene.quil~"));
}

TEST_F(Backup, TakesThePlaceOfTheOneBefore) {
  write_file(target_, kOld);
  write_file(backup_, "older");
  EXPECT_EQ(keep(), "");
  EXPECT_EQ(read_file(backup_), kOld);
}

TEST_F(Backup, IsNotWrittenThroughALinkThatSomebodyPutThere) {
  write_file(target_, kOld);
  write_file(dir_ / "other", "other");
  fs::create_symlink("other", backup_);
  EXPECT_EQ(keep(), "");
  EXPECT_EQ(read_file(dir_ / "other"), "other");
  EXPECT_EQ(read_file(backup_), kOld);
}

TEST_F(Backup, LiesBesideTheFileThatALinkPointsAt) {
  write_file(dir_ / "real", kOld);
  fs::create_symlink("real", target_);
  EXPECT_EQ(keep(), "");
  EXPECT_THAT(names(), ElementsAre("real", "real~", "scene.quil"));
}

TEST_F(Backup, IsNotMadeOfWhatIsNoFile) {
  EXPECT_EQ(keep(), "") << "there is none";
  ASSERT_EQ(mkfifo(target_.c_str(), 0600), 0);
  EXPECT_EQ(keep(), "");
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
}

TEST_F(Backup, ThatCannotBeMadeIsToldAndLeavesNothing) {
  for (int at = 1;; ++at) {
    SCOPED_TRACE(at);
    write_file(target_, kOld);
    write_file(backup_, "older");
    support::Faults fault({{"", at, ENOSPC}});
    const std::string message = keep();
    if (!fault.happened()) break;
    EXPECT_THAT(names(), ElementsAre("scene.quil", "scene.quil~"));
    EXPECT_EQ(read_file(target_), kOld);
    if (message.empty()) {
      EXPECT_EQ(read_file(backup_), kOld);
      continue;
    }
    EXPECT_EQ(message, target_ + ": can't keep a backup of it: No space left on device");
    EXPECT_THAT(read_file(backup_), testing::AnyOf("older", kOld));
  }
}

using Identity = Saving;

TEST_F(Identity, OfAFileThatIsNotTouchedStays) {
  write_file(target_, kOld);
  const auto before = identity_of(target_);
  ASSERT_TRUE(before);
  const storage::Descriptor file(open(target_.c_str(), O_RDONLY));
  EXPECT_EQ(identity_of(file.get()), before);
  EXPECT_EQ(read_file(target_), kOld);
  EXPECT_EQ(identity_of(target_), before);
}

TEST_F(Identity, ChangesWithTheContentsInPlaceOrInAnotherFile) {
  write_file(target_, kOld);
  const auto before = identity_of(target_);
  write_file(target_, kNew);
  const auto longer = identity_of(target_);
  EXPECT_FALSE(longer->same_contents(*before));
  EXPECT_EQ(save(), "");
  EXPECT_FALSE(identity_of(target_)->same_contents(*longer)) << "the same bytes, but another file";
}

TEST_F(Identity, OfTheContentsIsTheSameWhenOnlyTheModeOrTheNamesChange) {
  write_file(target_, kOld);
  const auto before = identity_of(target_);
  fs::create_hard_link(target_, dir_ / "other");
  fs::permissions(target_, fs::perms{0600});
  EXPECT_TRUE(identity_of(target_)->same_contents(*before));
}

TEST_F(Identity, OfAFileThatIsGoneIsNone) { EXPECT_EQ(identity_of(target_), std::nullopt); }

TEST_F(Identity, SeenAnotherTimeTellsWhatASaveWouldOverwrite) {
  const storage::SeenFile absent(target_);
  EXPECT_FALSE(absent.changed());
  write_file(target_, kOld);
  EXPECT_TRUE(absent.changed()) << "somebody else made one";
  const storage::SeenFile seen(target_);
  EXPECT_FALSE(seen.changed());
  fs::remove(target_);
  EXPECT_FALSE(seen.changed()) << "nothing would be overwritten";
  write_file(target_, kNew);
  EXPECT_TRUE(seen.changed());
}

}  // namespace
