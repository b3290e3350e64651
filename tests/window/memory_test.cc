/// @file
/// An editor that gets no more memory.
#include <sys/resource.h>

#include <fstream>

#include "tests/support/places.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Editor;
using testing::HasSubstr;

class Memory : public EditorTest {
 protected:
  void SetUp() override {
    if (support::programs_are_sanitized())
      GTEST_SKIP() << "a sanitizer takes an address space without bounds";
  }

  /// From now on the editor gets that many bytes more than it has.
  void limit(std::size_t bytes) {
    std::ifstream sizes("/proc/" + std::to_string(editor_.process().id()) + "/statm");
    std::size_t pages = 0;
    sizes >> pages;
    const rlimit most{pages * 4096 + bytes, RLIM_INFINITY};
    ASSERT_EQ(prlimit(editor_.process().id(), RLIMIT_AS, &most, nullptr), 0);
  }
};

TEST_F(Memory, ASceneThatFitsIsOpened) {
  const std::string scene = dangling(1000);
  limit(std::size_t{16} << 20);
  editor_.open(scene);
  EXPECT_TRUE(editor_.graph().hasNode("obj_1999"));
}

TEST_F(Memory, ASceneThatIsTooLargeIsRefusedAndTheOneThatWasOpenStays) {
  const std::string many = dangling(250000);
  const std::string table = data("tiny_v1");
  editor_.open(table);
  const auto arcs = shownArcs();
  editor_.settle();
  limit(std::size_t{200} << 20);
  editor_.chooseMenu({"File", "Open"});
  editor_.chooseFile(many);
  EXPECT_EQ(editor_.message(Editor::kWarning), "Can't Read QUIL File!");
  EXPECT_THAT(editor_.errors(), HasSubstr("dangling.quil: there is not enough memory to show it"));
  editor_.answer(Editor::kWarning, "OK");
  EXPECT_EQ(shownArcs(), arcs);
  limit(std::size_t{200} << 20);
  editor_.saveAs(path("saved.quil"));
  EXPECT_TRUE(sameBytes(read_file(path("saved.quil")), edited(table, "").bytes));
}

}  // namespace
