/// @file
/// Every call that a save makes fails, or is the process's last.
#include <sys/stat.h>

#include "tests/storage/savefixture.h"
#include "tests/support/case_name.h"
#include "tests/support/faults.h"
#include "tests/support/users.h"

namespace {

namespace fs = std::filesystem;
using support::Fault;
using support::Faults;
using testing::AnyOf;
using testing::HasSubstr;

/// A file that is saved.
struct Target {
  const char* name;
  bool exists = true;
  bool other_name = false;      ///< a hard link
  bool temporary_name = false;  ///< the file system has no files without a name
};

class WriteFaults : public Saving, public testing::WithParamInterface<Target> {
 protected:
  WriteFaults() : Saving(memory_folder()) {}

  /// The folder as it is before each save.
  void prepare() {
    fs::remove_all(dir_);
    fs::remove_all(state_);
    fs::create_directory(dir_);
    if (GetParam().exists) {
      write_file(target_, kOld);
      fs::permissions(target_, fs::perms{0640});
      set_attribute(target_, "user.colour", "blue");
      set_attribute(target_, kAccessList, access_list(4, 6));
    }
    if (GetParam().other_name) fs::create_hard_link(target_, dir_ / "other");
  }

  std::vector<Fault> faults(const Fault& fault) const {
    if (GetParam().temporary_name) return {{"tmpfile", 1, EOPNOTSUPP, true}, fault};
    return {fault};
  }

  /// Saves with a call that fails. `happened_` tells whether there was such a call.
  /// @returns what went wrong, empty when all was well
  std::string save_with(const Fault& fault) {
    const Faults armed(faults(fault));
    std::string message = save();
    happened_ = armed.happened();
    return message;
  }

  /// The same in a process that is killed by the fault.
  void save_until(const Fault& fault) {
    const int status = in_child([&] { return save_with(fault).empty() ? 0 : 1; });
    EXPECT_THAT(status, AnyOf(0, 128 + SIGKILL));
    happened_ = status != 0;
  }

  std::string contents() const { return fs::exists(target_) ? read_file(target_) : ""; }
  bool is_whole() const { return contents() == kNew || contents() == (GetParam().exists ? kOld : ""); }

  /// The target is whole; but what can only be written in place may be incomplete if a copy has all of it.
  void expect_nothing_lost() const {
    const auto found = copies();
    if (is_whole()) return;
    EXPECT_TRUE(GetParam().other_name) << "neither old nor new: " << contents().size() << " bytes";
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(read_file(found[0].path) == kNew);
    EXPECT_EQ(found[0].origin, fs::canonical(target_));
  }

  int leftovers() const {
    return static_cast<int>(
        std::ranges::count_if(names(), [](const auto& n) { return n.starts_with(".quil-"); }));
  }

  bool happened_ = false;
};

TEST_P(WriteFaults, EachCallThatFailsLeavesTheOldOrTheNewFileAndNothingElse) {
  for (const int error : {EIO, EPERM}) {
    for (const bool lasting : {false, true}) {
      happened_ = true;
      for (int at = 1; happened_; ++at) {
        SCOPED_TRACE(testing::Message()
                     << "call " << at << ", errno " << error << (lasting ? " from then on" : ""));
        prepare();
        const std::string message = save_with({"", at, error, lasting});
        expect_nothing_lost();
        EXPECT_EQ(leftovers(), 0);
        if (message.empty()) {
          EXPECT_TRUE(contents() == kNew);
        } else {
          EXPECT_THAT(message, HasSubstr(std::generic_category().message(error)));
        }
        const bool kept = message.find("recovery copy 1") != message.npos;
        EXPECT_TRUE(kept || is_whole());
        EXPECT_EQ(files_in(state_), kept ? 2 : 0) << "a copy and what tells of it";
        ASSERT_LT(at, 100);
      }
    }
  }
}

TEST_P(WriteFaults, EachCallThatIsTheLastLeavesTheOldOrTheNewFile) {
  happened_ = true;
  int left = 0;
  for (int at = 1; happened_; ++at) {
    SCOPED_TRACE(at);
    prepare();
    save_until({"", at});
    expect_nothing_lost();
    left += leftovers();
    EXPECT_EQ(save(), "");
    EXPECT_TRUE(contents() == kNew);
    EXPECT_EQ(leftovers(), 0) << "the next save tidies up";
    ASSERT_LT(at, 100);
  }
  if (!GetParam().temporary_name && has_nameless_files(dir_)) {
    EXPECT_EQ(left, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WriteFaults,
    testing::Values(Target{.name = "NewFile", .exists = false}, Target{.name = "OldFile"},
                    Target{.name = "FileWithTwoNames", .other_name = true},
                    Target{.name = "NewFileByATemporaryOne", .exists = false, .temporary_name = true},
                    Target{.name = "OldFileByATemporaryOne", .temporary_name = true}),
    CaseName());

}  // namespace
