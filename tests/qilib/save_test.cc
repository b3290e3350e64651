/// @file
/// Saving: what each mode writes, what a failure leaves of the file that was there.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "qilib/forwards.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"
#include "qilib/writer.h"
#include "storage/signals.h"
#include "tests/qilib/kinds.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

namespace fs = std::filesystem;

Qis opened(const std::string& bytes) {
  const ScratchDirectory scratch;
  write_file(scratch / "scene.quil", bytes);
  Qis scene;
  EXPECT_EQ(qiOpenQb(scratch / "scene.quil", scene), 1);
  return scene;
}

/// What a writer puts into a stream.
template <class Write>
std::string stream_of(Write write) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* stream = open_memstream(&bytes, &size);
  EXPECT_EQ(write(stream), 1);
  std::fclose(stream);
  const std::string result(bytes, size);
  std::free(bytes);
  return result;
}

/// A version-2 file with a chain root, objs and texture images.
FileBytes with_texture_images() {
  FileBytes file;
  file.version = 0x0200;
  file.core[0] = kinds::scene2();
  file.core[4] = kinds::list_of_two(0x00020000, kinds::obj2);
  file.core[14] = kinds::list_of_two(0x00120000, kinds::teximg2);
  file.ext[5] = kinds::list_of_two(0x00240000, kinds::chain_root);
  return file;
}

TEST(Written, AVersion1SceneKeepsItsVersionItsBlocksAndHasNoExtensionList) {
  FileBytes file;
  file.core[0] = kinds::scene();
  file.block1_tail.fill(12, 0xABAB0000);  // as long as a table, but of version 1
  const std::string bytes = file.bytes().str();
  Qis scene = opened(bytes);
  EXPECT_TRUE(written(scene, 2) == bytes);
  scene.header.ext_sizes.fill(24);
  EXPECT_TRUE(written(scene, 2) == bytes);
}

TEST(Written, Mode1StillWritesTheExtensionLists) {
  const std::string bytes = with_texture_images().bytes().str();
  EXPECT_TRUE(written(opened(bytes), 1) == bytes);
}

TEST(Written, ATableOfZerosWritesNoExtensionList) {
  FileBytes file = with_texture_images();
  file.ext = {};
  const std::string bytes = file.bytes().str();
  Qis scene = opened(bytes);
  scene.ext.joint_list.header.size = 24;
  EXPECT_TRUE(written(scene, 1) == bytes);
  EXPECT_TRUE(written(scene, 2) == bytes);
}

TEST(Written, ACoreListWithoutASizeIsAbsent) {
  FileBytes file;
  file.core[0] = kinds::scene();
  const std::string bytes = file.bytes().str();
  Qis scene = opened(bytes);
  scene.obj_list.header = {0x00020000, 0, 24, 0, 0, 0};
  EXPECT_TRUE(written(scene, 2) == bytes);
}

TEST(Written, Mode2PutsTheTableInPlaceOfALongerHeaderBlock1) {
  FileBytes file = with_texture_images();
  file.block1_tail.u32(0xAB);
  const Bytes bytes = file.bytes();
  ASSERT_EQ(bytes.word_at(92), 40u);
  const Qis scene = opened(bytes.str());
  const std::string saved = written(scene, 2);
  EXPECT_TRUE(saved == bytes.str().substr(0, 136) + bytes.str().substr(140))
      << "36 bytes of block 1; the sizes in the header stay as they were";
  EXPECT_TRUE(written(scene, 1) == bytes.str());
}

TEST(Written, OnlyMode2CarriesEditsThatKeepTheLength) {
  const std::string bytes = with_texture_images().bytes().str();
  Qis scene = opened(bytes);
  scene.obj_list.records[0].ext->head.fog_render.cycle_type = 0x12345678;
  EXPECT_TRUE(written(scene, 1) == bytes);
  EXPECT_THAT(written(scene, 2), testing::HasSubstr("\x12\x34\x56\x78"));
}

TEST(Written, AnEditThatChangesTheLengthIsWrittenInMode1Too) {
  Qis scene = opened(with_texture_images().bytes().str());
  ASSERT_EQ(qiAddObj_ChainRoot(scene, 0, 1), 1);
  EXPECT_TRUE(written(scene, 1) == written(scene, 2));
  const Qis again = opened(written(scene, 1));
  EXPECT_EQ(again.obj_list.records[0].ext->chain_roots, (Words{3, 4, 1}));
  EXPECT_EQ(again.obj_list.records[0].ext->tail, Words{0x7A11}) << "still after the structure";
}

TEST(Written, HeaderBlock1IsCurrentInMode1AfterAnEdit) {
  Qis scene = opened(with_texture_images().bytes().str());
  ASSERT_EQ(qiAddChainRoot_Obj(scene, 1, 1), 1);
  const Qis again = opened(written(scene, 1));
  EXPECT_EQ(again.ext.chain_root_list.records[1].objs.back(), 1u);
}

TEST(Written, AddingAnObjToTheSceneRaisesThreeSizesAndNothingElse) {
  FileBytes file;
  file.core[0] = kinds::scene();
  file.core[4] = kinds::list_of_two(0x00020000, kinds::obj);
  Bytes bytes = file.bytes();
  Qis scene = opened(bytes.str());
  ASSERT_EQ(qiAddScene_Obj(scene, 1), 1);
  for (const std::size_t size : {4u, 16u, 108u}) bytes.put(size, bytes.word_at(size) + 4);
  bytes.put(120, 3);  // objs of the scene
  std::string expected = bytes.str();
  expected.insert(152, Bytes{}.u32(1).str());
  EXPECT_TRUE(written(scene, 2) == expected);
}

TEST(Written, ANameOfAnyLengthIsRoundedUpWithZeroBytes) {
  qi::List<qi::Name> list;
  list.header = {0x00110000, 0, 0, 1, 0, 0};
  list.sizes = {23};
  list.records.push_back({{0x00110100, 0, 16, 16 + 7}, {0x61626364}});
  const std::string bytes = stream_of([&](std::FILE* file) { return qiWriteNameList(file, list); });
  EXPECT_EQ(bytes.substr(24 + 4 + 16), std::string("abcd\0\0\0\0", 8));
}

TEST(Written, EachCoreListHasAWriterOfItsOwn) {
  FileBytes file;
  file.version = 0x0200;
  file.core[0] = kinds::scene2();
  for (const KindCase& kind : kinds::all())
    if (!kind.ext && (kind.structure || file.core[kind.entry].size() == 0))
      file.core[kind.entry] = kind.bytes;
  for (const KindCase& kind : kinds::all())
    if (kind.ext) file.ext[kind.entry] = kind.bytes;
  const std::string bytes = file.bytes().str();
  const Qis s = opened(bytes);
  for (const int mode : {1, 2})
    EXPECT_TRUE(stream_of([&](std::FILE* f) {
                  return qiWriteFileHeader(f, s.header, mode) && qiWriteSceneList(f, s.scene, mode) &&
                         qiWriteEnvList(f, s.env_list) && qiWriteCamList(f, s.cam_list, mode) &&
                         qiWriteLightList(f, s.light_list) && qiWriteObjList(f, s.obj_list, mode) &&
                         qiWriteShapeList(f, s.shape_list, mode) && qiWriteVtxList(f, s.vtx_list) &&
                         qiWriteTriList(f, s.tri_list) && qiWriteColorList(f, s.color_list) &&
                         qiWriteVectorList(f, s.vector_list) && qiWriteStList(f, s.st_list) &&
                         qiWritePartList(f, s.part_list) && qiWriteMatList(f, s.mat_list, mode) &&
                         qiWriteTexList(f, s.tex_list, mode) && qiWriteTexImgList(f, s.teximg_list, mode) &&
                         qiWriteAnimList(f, s.anim_list, mode) && qiWriteCollList(f, s.coll_list) &&
                         qiWriteSwitchList(f, s.switch_list) && qiWriteNameList(f, s.name_list) &&
                         qiWriteQb2Ext(f, s);
                }) == bytes);
}

/// Writes a record's block 1 in both modes after an edit of its structure that keeps the length.
template <class R, class WriteBlock>
void expect_structure_in_mode_2(R record, Word& (*any_word)(R&), WriteBlock write) {
  const std::string read = stream_of([&](std::FILE* f) { return write(f, record, 2); });
  EXPECT_EQ(read.size(), record.fixed.block1_size);
  any_word(record) ^= 0x55AA55AA;
  EXPECT_TRUE(stream_of([&](std::FILE* f) { return write(f, record, 1); }) == read) << "as it was read";
  EXPECT_TRUE(stream_of([&](std::FILE* f) { return write(f, record, 2); }) != read) << "as it was edited";
  record.fixed.block1_size = 0;
  EXPECT_EQ(stream_of([&](std::FILE* f) { return write(f, record, 2); }), "");
}

TEST(Written, EachStructureIsWrittenInMode2AndItsBlockInMode1) {
  const auto scene = [](const std::string& name) {
    for (const KindCase& kind : kinds::all())
      if (kind.name == name) return opened(kinds::file_with(kind).bytes().str());
    ADD_FAILURE() << name;
    return Qis{};
  };
  expect_structure_in_mode_2<qi::Scene>(
      scene("SceneStructure").scene, [](qi::Scene& r) -> Word& { return r.ext->chain_roots[0]; },
      qiWriteSceneListExt);
  expect_structure_in_mode_2<qi::Cam>(
      scene("CamStructure").cam_list.records[0], [](qi::Cam& r) -> Word& { return r.ext->head.words[5]; },
      qiWriteCamExt);
  expect_structure_in_mode_2<qi::Obj>(
      scene("ObjStructure").obj_list.records[0],
      [](qi::Obj& r) -> Word& { return r.ext->externals1[1].second; }, qiWriteObjExt);
  expect_structure_in_mode_2<qi::Shape>(
      scene("ShapeStructure").shape_list.records[0],
      [](qi::Shape& r) -> Word& { return r.ext->head.deformer_tag; }, qiWriteShapeExt);
  expect_structure_in_mode_2<qi::Mat>(
      scene("MatStructure").mat_list.records[0], [](qi::Mat& r) -> Word& { return r.ext->entries1[1][5]; },
      qiWriteMatExt);
  expect_structure_in_mode_2<qi::Tex>(
      scene("TiledTexStructure").tex_list.records[0], [](qi::Tex& r) -> Word& { return r.ext->words1[1]; },
      qiWriteTexExt);
  expect_structure_in_mode_2<qi::Teximg>(
      scene("TeximgStructure").teximg_list.records[0], [](qi::Teximg& r) -> Word& { return r.ext->words[1]; },
      qiWriteTexImgExt);
  expect_structure_in_mode_2<qi::Anim>(
      scene("AnimStructure").anim_list.records[0], [](qi::Anim& r) -> Word& { return r.ext->scales[2][7]; },
      qiWriteAnimGroupExt);
}

TEST(Written, ArraysShorterThanTheirCountAreFilledUp) {
  Qis scene = opened(kinds::file_with(kinds::all()[0]).bytes().str());
  scene.scene.objs.clear();
  const std::string saved = written(scene, 2);
  EXPECT_EQ(opened(saved).scene.objs, (Words{0, 0}));
}

TEST(ExternalReferences, AreWrittenAsFirstThenSecondHalves) {
  EXPECT_EQ(stream_of([](std::FILE* file) {
              return qiWriteExternal(file, {{1, 101}, {2, 102}, {3, 103}}, 2) &&
                     qiWriteNodeIndex(file, {{0x20000, 5}}, 1);
            }),
            Bytes{}.u32s({1, 2, 101, 102, 0x20000, 5}).str());
}

/// A stream that takes `room` bytes and fails from then on.
struct NarrowStream {
  explicit NarrowStream(std::size_t bytes) : room(bytes) {
    const cookie_io_functions_t calls{nullptr, &NarrowStream::write, nullptr, nullptr};
    stream = fopencookie(this, "w", calls);
    setvbuf(stream, nullptr, _IONBF, 0);
  }
  ~NarrowStream() { std::fclose(stream); }
  NarrowStream(const NarrowStream&) = delete;
  NarrowStream& operator=(const NarrowStream&) = delete;

  static ssize_t write(void* cookie, const char*, std::size_t n) {
    auto* self = static_cast<NarrowStream*>(cookie);
    if (n > self->room) {
      errno = ENOSPC;
      return 0;
    }
    self->room -= n;
    ++self->writes;
    return static_cast<ssize_t>(n);
  }

  std::size_t room;
  int writes = 0;
  std::FILE* stream;
};

TEST(WriteFaults, AnyWriteThatFailsFailsTheWhole) {
  const std::string bytes = with_texture_images().bytes().str();
  const Qis scene = opened(bytes);
  for (const int mode : {1, 2}) {
    for (std::size_t room = 0; room < bytes.size(); ++room) {
      NarrowStream narrow(room);
      EXPECT_EQ(qiWriteScene(narrow.stream, scene, mode), 0) << room;
    }
    NarrowStream enough(bytes.size());
    EXPECT_EQ(qiWriteScene(enough.stream, scene, mode), 1);
    EXPECT_GT(enough.writes, 40);
  }
}

TEST(WriteFaults, MoreThanAFileCanTellOfIsRefusedWithoutWritingItAll) {
  Qis scene = opened(kinds::file_with(kinds::all()[0]).bytes().str());
  scene.scene.fixed.obj_count = scene.scene.fixed.env_count = 0xFFFFFFFF;
  qi::CountSink count;
  qi::Emitter emitter(count, 2);
  walk_list(emitter, std::as_const(scene.scene));
  EXPECT_GT(count.total(), std::uint64_t{8} * 0xFFFFFFFF);
  NarrowStream narrow(1 << 20);
  EXPECT_EQ(qiWriteScene(narrow.stream, scene, 2), 0);
}

class Save : public testing::Test {
 protected:
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(scratch_.path()))
      names.push_back(entry.path().filename());
    return names;
  }
  int save(const std::string& name) {
    Told told;
    const int result = qiSetFilename(name, scene_) && qi::save_scene(scene_, 2, told.sink());
    said_ = told.words();
    return result;
  }

  const ScratchDirectory scratch_;
  const std::string bytes_ = with_texture_images().bytes().str();
  Qis scene_ = opened(bytes_);
  std::string said_;
};

TEST_F(Save, TakesThePlaceOfTheFileAndKeepsItsPermissions) {
  write_file(scratch_ / "old.quil", "old");
  fs::permissions(scratch_ / "old.quil", fs::perms(0640));
  EXPECT_EQ(save(scratch_ / "old.quil"), 1);
  EXPECT_EQ(said_, "");
  EXPECT_TRUE(read_file(scratch_ / "old.quil") == bytes_);
  EXPECT_EQ(fs::status(scratch_ / "old.quil").permissions(), fs::perms(0640));
  EXPECT_THAT(files(), testing::ElementsAre("old.quil"));
}

TEST_F(Save, ReplacesWhatASymbolicLinkPointsAt) {
  write_file(scratch_ / "old.quil", "old");
  fs::create_symlink("old.quil", scratch_ / "link.quil");
  EXPECT_EQ(save(scratch_ / "link.quil"), 1);
  EXPECT_TRUE(fs::is_symlink(scratch_ / "link.quil"));
  EXPECT_TRUE(read_file(scratch_ / "old.quil") == bytes_);
}

TEST_F(Save, AFullDeviceFailsWithALineAndOneThatTellsTheFile) {
  EXPECT_EQ(save("/dev/full"), 0);
  EXPECT_EQ(said_,
            "Output File Write Error: No space left on device\n"
            "/dev/full: can't write the new contents: No space left on device\n");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Save, ADeviceIsWrittenDirectly) {
  EXPECT_EQ(save("/dev/null"), 1);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Save, APipeIsWrittenDirectly) {
  const std::string pipe = scratch_ / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(save(pipe), 1);
  std::string received(bytes_.size() + 1, 0);
  EXPECT_EQ(read(reader, received.data(), received.size()), static_cast<ssize_t>(bytes_.size()));
  close(reader);
  received.resize(bytes_.size());
  EXPECT_TRUE(received == bytes_);
}

TEST_F(Save, APipeThatOnlyADescriptorNamesIsWrittenDirectly) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  EXPECT_EQ(save("/dev/fd/" + std::to_string(ends[1])), 1);
  std::string received(bytes_.size(), 0);
  EXPECT_EQ(read(ends[0], received.data(), received.size()), static_cast<ssize_t>(bytes_.size()));
  EXPECT_TRUE(received == bytes_);
  close(ends[0]);
  close(ends[1]);
}

TEST_F(Save, APipeThatNobodyReadsIsRefusedInsteadOfWaitingForAReader) {
  ASSERT_EQ(mkfifo((scratch_ / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(save(scratch_ / "pipe"), 0);
  EXPECT_EQ(said_, "Output File Open Error\n" + (scratch_ / "pipe") +
                       ": can't be opened for writing: No such device or address\n");
}

TEST_F(Save, TargetsThatCannotBeWrittenAreRefused) {
  fs::create_directory(scratch_ / "directory");
  fs::create_symlink("loop", scratch_ / "loop");
  const std::string too_long(300, 'x');
  const std::pair<std::string, std::string> refused[]{
      {scratch_ / "missing/file.quil", "No such file or directory"},
      {scratch_ / "directory", "Is a directory"},
      {scratch_ / "loop", "Too many levels of symbolic links"},
      {scratch_ / too_long, "File name too long"}};
  for (const auto& [target, reason] : refused) {
    EXPECT_EQ(save(target), 0);
    EXPECT_EQ(said_, "Output File Open Error\n" + target + ": can't be opened for writing: " + reason + "\n");
  }
  EXPECT_EQ(save(""), 0);
  EXPECT_EQ(
      said_,
      "Output File Open Error\n(no file name): can't be opened for writing: No such file or directory\n");
  EXPECT_THAT(files(), testing::UnorderedElementsAre("directory", "loop"));
}

TEST_F(Save, TheSceneHasTheNameOfTheLastSaveAlsoWhenItFailed) {
  save(scratch_ / "missing/file.quil");
  EXPECT_EQ(scene_.filename, scratch_ / "missing/file.quil");
}

TEST_F(Save, APlainWriteGoesToTheNameHeld) {
  ASSERT_EQ(qiSetFilename(scratch_ / "held.quil", scene_), 1);
  EXPECT_EQ(qiWriteQb(scene_), 1);
  EXPECT_TRUE(read_file(scratch_ / "held.quil") == bytes_);
  EXPECT_EQ(qiWriteQb2(scene_), 1);
  EXPECT_TRUE(read_file(scratch_ / "held.quil") == bytes_);
}

/// No file may grow beyond so many bytes while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit narrow{bytes, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &narrow);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &limit_); }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit limit_{};
};

TEST_F(Save, AFailureAtAnyPointLeavesTheOldFileAndNothingElse) {
  storage::survive_file_size_limit();
  write_file(scratch_ / "scene.quil", "the old file");
  ASSERT_EQ(qiSetFilename(scratch_ / "scene.quil", scene_), 1);
  for (rlim_t limit = 0; limit < bytes_.size(); limit += 97) {
    int result = 1;
    {
      const FileSizeLimit narrow(limit);
      result = qi::save_scene(scene_, 2, ignore_message);
    }
    EXPECT_EQ(result, 0) << limit;
    EXPECT_EQ(read_file(scratch_ / "scene.quil"), "the old file");
    EXPECT_THAT(files(), testing::ElementsAre("scene.quil"));
  }
  const FileSizeLimit enough(bytes_.size());
  EXPECT_EQ(qiWriteQb2(scene_), 1);
  EXPECT_TRUE(read_file(scratch_ / "scene.quil") == bytes_);
}

}  // namespace
