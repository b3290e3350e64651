/// @file
/// The command `new` of edit scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(Quilscene, NewPrintsTheNewCounts) {
  const Ran ran = edit("skeleton",
                       "new chainroot\nnew joint\nnew joint # another\nnew effector\nnew weight 5\n"
                       "new envelope 1 2 3 4 shape_0\nnew cluster 5 6 1\n");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(lines_with(ran.out, "->"), ElementsAre("3", "5", "6", "3", "3", "2", "2"));
  const Ran info = run("info out.quil");
  EXPECT_THAT(info.err, IsEmpty());
  for (const char* row :
       {"EnvelopeList              2", "ClusterList               2", "WeightList                3",
        "ChainRootList             3", "JointList                 6", "EffectorList              3"})
    EXPECT_THAT(info.out, HasSubstr(row));
}

TEST_F(Quilscene, NewElementsAreLinkedAndNamedAtOnce) {
  const Ran ran = edit("tiny_v2",
                       "new chainroot\nnew joint\nnew effector\nadd scene_0 ChainRoot_0\n"
                       "delete joint_0 joint_0\nadd joint_0 obj_0\nname joint_0 elbow\n");
  EXPECT_EQ(ran.status, 0) << ran.out << ran.err;
  EXPECT_THAT(run("graph out.quil").out,
              HasSubstr("arc scene_0 ChainRoot_0\narc ChainRoot_0 joint_0\narc joint_0 obj_0\n"
                        "arc joint_0 effector_0\n"));
  EXPECT_THAT(run("info out.quil").out, HasSubstr(" elbow\n"));
  EXPECT_EQ(run("check out.quil").status, 0);
}

TEST_F(Quilscene, TwoNewJointsBothLeadToJoint0) {
  EXPECT_EQ(edit("tiny_v2",
                 "new chainroot\nnew joint\nnew joint\nadd scene_0 ChainRoot_0\n"
                 "delete ChainRoot_0 joint_0\nadd ChainRoot_0 joint_1\n")
                .status,
            0);
  EXPECT_THAT(run("graph out.quil").out,
              AllOf(HasSubstr("arc joint_0 joint_0\n"), HasSubstr("arc joint_1 joint_0\n")));
}

TEST_F(Quilscene, NewChainRootHasAnArcToJoint0) {
  EXPECT_EQ(edit("skeleton", "new chainroot\nadd scene_0 ChainRoot_2\n").status, 0);
  EXPECT_THAT(run("graph out.quil").out, HasSubstr("arc ChainRoot_2 joint_0\n"));
}

struct NewRow {
  const char* name;
  const char* line;
};

class RefusedNew : public Quilscene, public testing::WithParamInterface<NewRow> {};

TEST_P(RefusedNew, FailsAndChangesNothing) {
  // Little memory: a count must not be believed.
  put("script", GetParam().line);
  const Ran ran = run("edit " + scene_path("tiny_v2") + " -o out.quil --script script", "", limit_memory());
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out, "-> 0\n");
  EXPECT_EQ(ran.err, "quilscene: script:1: there is no such shape, or the element takes more than 16 MiB\n");
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v2")));
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusedNew,
                         testing::Values(NewRow{"FourBillionWeights", "new weight 4000000000"},
                                         NewRow{"TwoBillionWeights", "new weight 2000000000"},
                                         NewRow{"FiveMillionWeights", "new weight 5000000"},
                                         NewRow{"WeightsBeyondAnyNumber",
                                                "new weight 99999999999999999999999"},
                                         NewRow{"PartsWhoseBytesWrapAround", "new envelope 0 0 17602326 0 0"},
                                         NewRow{"TrianglesByTheBillion", "new cluster 0 4294967296 shape_0"},
                                         NewRow{"ShapeThatIsNotThere", "new envelope 1 1 1 1 shape_1"},
                                         NewRow{"ClusterOnAShapeThatIsNotThere", "new cluster 1 1 1"},
                                         NewRow{"ShapeBelow0", "new cluster 1 1 -1"},
                                         NewRow{"ShapeThatWrapsTo0", "new cluster 1 1 4294967296"}),
                         CaseName{});

TEST_F(Quilscene, NewIsRefusedInVersion1) {
  const Ran ran = edit("tiny_v1",
                       "new chainroot\nnew joint\nnew effector\nnew weight 1\nnew envelope 0 0 0 0 0\n"
                       "new cluster 0 0 0\n");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(lines_with(ran.out, "->"), (std::vector<std::string>(6, "0")));
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v1")));
}

TEST_F(Quilscene, NewWithNegativeCountsAddsNoParts) {
  EXPECT_EQ(edit("tiny_v2", "new envelope -1 -99999999999999999999 0 -3 0\nnew weight -7\n").status, 0);
  const std::string file = written("out.quil");
  const std::size_t before = read_file(scene_path("tiny_v2")).size();
  EXPECT_EQ(file.size(), before + (24 + 4 + 44) + (24 + 4 + 28));
}

class MalformedNew : public Quilscene, public testing::WithParamInterface<NewRow> {};

TEST_P(MalformedNew, EndsWithStatus2AndWritesNothing) {
  const Ran ran = edit("tiny_v2", GetParam().line);
  EXPECT_EQ(ran.status, 2);
  EXPECT_THAT(ran.err, HasSubstr("script:1: malformed line"));
  EXPECT_FALSE(exists("out.quil"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MalformedNew,
    testing::Values(NewRow{"Nothing", "new"}, NewRow{"UnknownElement", "new obj"},
                    NewRow{"NodeAsElement", "new joint_0"}, NewRow{"NumberTooMany", "new joint 1"},
                    NewRow{"NoNumber", "new weight"}, NewRow{"TwoNumbers", "new weight 1 2"},
                    NewRow{"Word", "new weight many"}, NewRow{"Fraction", "new weight 1.5"},
                    NewRow{"NumberInAComment", "new weight #1"}, NewRow{"PlusSign", "new weight +1"},
                    NewRow{"EnvelopeWithoutShape", "new envelope 1 1 1 1"},
                    NewRow{"ShapeAsCount", "new envelope 1 1 1 shape_1 shape_0"},
                    NewRow{"OtherNodeAsShape", "new cluster 1 1 obj_0"},
                    NewRow{"ShapeWithoutNumber", "new cluster 1 1 shape_"},
                    NewRow{"WeightOfAShape", "new weight shape_0"}),
    CaseName{});

TEST_F(Quilscene, HelpNamesTheNewElements) {
  EXPECT_THAT(run("--help").out, AllOf(HasSubstr("new chainroot | joint | effector | weight N\n"),
                                       HasSubstr("new envelope FULL WEIGHTED MORPH TRIANGLES SHAPE\n"),
                                       HasSubstr("new cluster CLUSTERS TRIANGLES SHAPE\n")));
}

}  // namespace
