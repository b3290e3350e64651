/// @file
/// Messages in words: each as it is printed, and on which stream.
#include "qilib/messages.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdio>

#include "qilib/checksizes.h"
#include "qilib/files.h"
#include "qilib/forwards.h"
#include "qilib/opensave.h"
#include "qilib/reader.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/shared_scenes.h"

namespace {

using qi::Message;
using qi::MessageCode;

struct Printed {
  std::string out, err;
};
template <class Call>
Printed printed_by(Call call) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  call();
  return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

struct MessageCase {
  const char* name;
  Message message;
  const char* text;
  bool trace = false;
};

class Messages : public testing::TestWithParam<MessageCase> {};

TEST_P(Messages, ArePrintedInTheseWords) {
  EXPECT_EQ(text_of(GetParam().message), GetParam().text);
  const Printed printed = printed_by([] { print_message(GetParam().message); });
  std::string line = std::string(GetParam().text) + "\n";
  if (const std::string reason = reason_of(GetParam().message); !reason.empty()) line += reason + "\n";
  EXPECT_EQ(printed.out, GetParam().trace ? line : "");
  EXPECT_EQ(printed.err, GetParam().trace ? "" : line);
}

constexpr std::uint64_t kHuge = 0xFFFFFFFFFFFFFFFC;

INSTANTIATE_TEST_SUITE_P(
    Each, Messages,
    testing::Values(
        MessageCase{"OutOfMemory", {.code = MessageCode::out_of_memory}, "Out of memory."},
        MessageCase{"NoInput", {.code = MessageCode::no_input}, "Input File Open Error"},
        MessageCase{
            "NoOutput",
            {.code = MessageCode::no_output, .write_error = WriteError{EACCES, WriteStep::open, "out"}},
            "Output File Open Error\nout: can't be opened for writing: Permission denied"},
        MessageCase{
            "OutputFailed",
            {.code = MessageCode::output_failed, .write_error = WriteError{ENOSPC, WriteStep::write, "out"}},
            "Output File Write Error: No space left on device\n"
            "out: can't write the new contents: No space left on device"},
        MessageCase{"UnknownVersion",
                    {.code = MessageCode::unknown_version, .found = 0x300},
                    "     300\nUnknown version number."},
        MessageCase{"MissingData",
                    {.code = MessageCode::missing_data, .found = 99, .expected = 0xFFFFFFFF},
                    "file size 99 -1\nData file size is incorrect - missing data."},
        MessageCase{"ExtraData",
                    {.code = MessageCode::extra_data, .found = 101, .expected = 100},
                    "file size 101 100\nData file size is incorrect - extra data."},
        MessageCase{"WrongHeaderSize",
                    {.code = MessageCode::wrong_header_size, .found = 96, .expected = 100},
                    "Incorrect file header size."},
        MessageCase{"WrongSumOfLists",
                    {.code = MessageCode::wrong_sum_of_lists, .found = 104, .expected = 100},
                    "file size=100,sum of list=104\nSome of list_num data is incorrect."},
        MessageCase{"WrongHeaderTag", {.code = MessageCode::wrong_header_tag, .found = 1}, "tag error."},
        MessageCase{"TooLargeInARecord",
                    {.code = MessageCode::too_large,
                     .list = "ObjList",
                     .record = 3,
                     .what = "array",
                     .found = kHuge,
                     .expected = 8,
                     .offset = 28,
                     .base = 100},
                    "ObjList: record 3: array of 18446744073709551612 bytes at offset 28 exceeds the 8 bytes "
                    "left"},
        MessageCase{"TooLargeAList",
                    {.code = MessageCode::too_large,
                     .list = "ColorPaletteList",
                     .what = "list",
                     .found = 40,
                     .expected = 0,
                     .offset = 136,
                     .base = 0},
                    "ColorPaletteList: list of 40 bytes at offset 136 exceeds the 0 bytes left"},
        MessageCase{
            "NoWholeWords",
            {.code = MessageCode::no_whole_words, .list = "FileHeader", .what = "data", .found = kHuge},
            "FileHeader: data of -4 bytes is no whole number of words"},
        MessageCase{
            "WrongLength",
            {.code = MessageCode::wrong_length, .list = "TriList", .record = 0, .found = 28, .expected = 32},
            "TriList: record 0: fixed part of 28 bytes, expected 32"},
        MessageCase{"WrongTag",
                    {.code = MessageCode::wrong_tag, .list = "ObjList", .found = 0, .expected = 0x20100},
                    "irregular tag ! 0000000000 != 0x00020100"},
        MessageCase{"WrongNameTag",
                    {.code = MessageCode::wrong_name_tag, .list = "NameList", .found = 0x120000},
                    "irregular tag ! 0x00120000"},
        MessageCase{"SizeCorrected",
                    {.code = MessageCode::size_corrected,
                     .list = "ObjList",
                     .record = 7,
                     .what = "size in the size table",
                     .found = 0xFFFFFFFF,
                     .expected = 0x100000000},
                    "ObjList: record 7: size in the size table 4294967295 corrected to 4294967296"},
        MessageCase{"SizeCorrectedOfAPart",
                    {.code = MessageCode::size_corrected,
                     .list = "EnvelopeList",
                     .record = 0,
                     .part = "full-weighted part",
                     .part_number = 2,
                     .what = "size",
                     .found = 60,
                     .expected = 64},
                    "EnvelopeList: record 0: full-weighted part 2: size 60 corrected to 64"},
        MessageCase{"NoLink",
                    {.code = MessageCode::no_link, .found = 0xFFFFFFFF},
                    "Error: no link to index -1.",
                    true},
        MessageCase{
            "AlreadyChanged", {.code = MessageCode::already_changed, .found = 1}, "already changed ??", true},
        MessageCase{
            "AlreadyLinked", {.code = MessageCode::already_linked, .found = 1}, "already linked ??", true},
        MessageCase{"UnexpectedLink",
                    {.code = MessageCode::unexpected_link, .found = 0x20100},
                    "unexpected link, 20100",
                    true}),
    CaseName{});

// Functions that print what others tell a sink.

TEST(Printing, IsWhatOpeningAndReadingDo) {
  const ScratchDirectory scratch;
  const std::string name = scratch / "short.quil";
  write_file(name, "QUIL");
  const qi::File file = qi::open_regular(name);
  Qis scene;
  const std::string header =
      "5155494c\nUnknown version number.\n"
      "FileHeader, byte 0: version 0x5155494c, expected 0x0100 or 0x0200 in its low half\n"
      "file size 4 0\nData file size is incorrect - extra data.\n"
      "FileHeader, byte 4: file_size 0, expected 4\n"
      "Incorrect file header size.\n"
      "FileHeader, byte 12: header_size 0, expected 100\n"
      "FileHeader: fixed part of 100 bytes at offset 4 exceeds the 0 bytes left\n";
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiOpenQb(name, scene), 0); }).err, header);
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiOpenQb1(name, scene), 0); }).err, header);
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiReadFileHeader(file.get(), scene), 0); }).err, header);

  std::rewind(file.get());
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiReadList(file.get(), 8, scene, "ObjList"), 0); }).err,
            "ObjList: list of 8 bytes at offset 0 exceeds the 4 bytes left\n");
  EXPECT_EQ(printed_by([&] {
              EXPECT_EQ(qiSetupSwitchList(Words{1, 2}, scene.switch_list), 0);
            }).err,
            "SwitchList: fixed part of 24 bytes at offset 0 exceeds the 8 bytes left\n");
  scene.cam_list.records.resize(1);
  scene.cam_list.records[0].fixed.block1_size = 4;
  scene.cam_list.records[0].block1 = {0};
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiSetupCamExt(scene.cam_list), 0); }).err,
            "CamList: record 0: fixed part of 24 bytes at offset 0 exceeds the 4 bytes left\n");
}

TEST(Printing, IsWhatSavingAndCheckingSizesDo) {
  const ScratchDirectory scratch;
  const std::string missing = scratch / "missing/scene.quil";
  Qis scene;
  ASSERT_EQ(qiOpenQb(shared_scene("tiny_v1").path, scene), 1);
  EXPECT_EQ(
      printed_by([&] { EXPECT_EQ(qiSaveAsQb(scene, missing), 0); }).err,
      "Output File Open Error\n" + missing + ": can't be opened for writing: No such file or directory\n");
  const std::string full =
      "Output File Write Error: No space left on device\n"
      "/dev/full: can't write the new contents: No space left on device\n";
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiSaveAsQb2(scene, "/dev/full"), 0); }).err, full);
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiWriteQb(scene), 0); }).err, full);
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiWriteQb2(scene), 0); }).err, full);

  const std::string size = std::to_string(scene.header.fixed.file_size);
  scene.header.fixed.file_size = 7;
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(qiCheckSizes(scene, 2), 1); }).err,
            "FileHeader: file_size 7 corrected to " + size + "\n");
}

}  // namespace
