/// @file
/// A current scene with two records of every kind that has a dialog, and what the tests see of it.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"
#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "qilib/edit.h"
#include "qilib/lists.h"
#include "qilib/names.h"

/// The word that holds a float.
constexpr Word f(float number) { return std::bit_cast<Word>(number); }

/// A word of a record by its number: first the fixed words, from `kExt` on those of the version-2 structure's
/// head, from `kArrays` on the level-of-detail distances, then the objects shown.
using Changes = std::map<std::size_t, Word>;
inline constexpr std::size_t kExt = 100, kArrays = 200;

using SceneWords = std::map<std::string, Changes>;

template <class T>
void note_words(Changes& words, std::size_t first, const T* data, std::size_t count) {
  static_assert(sizeof(T) == sizeof(Word));
  for (std::size_t i = 0; i < count; ++i) words[first + i] = std::bit_cast<Word>(data[i]);
}
template <class S>
void note_struct(Changes& words, std::size_t first, const S& s) {
  const auto copy = std::bit_cast<std::array<Word, sizeof(S) / sizeof(Word)>>(s);
  note_words(words, first, copy.data(), copy.size());
}

/// Every word of every record, keyed by the list's word for a record and its number.
inline SceneWords scene_words() {
  SceneWords all;
  qi::for_each_list(std::as_const(*qis), [&](const qi::ListInfo& info, const auto& list) {
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      Changes& words = all[std::string(info.record) + "_" + std::to_string(number)];
      note_struct(words, 0, record.fixed);
      if constexpr (requires { record.ext->head; })
        if (record.ext) note_struct(words, kExt, record.ext->head);
      if constexpr (requires { record.lod_distances; }) {
        note_words(words, kArrays, record.lod_distances.data(), record.lod_distances.size());
        note_words(words, kArrays + record.lod_distances.size(), record.lod_objs.data(),
                   record.lod_objs.size());
      }
    });
  });
  return all;
}

/// Every word different from its neighbours, so that one stored in the wrong place is seen.
template <class S>
void fill_struct(S& s, Word first) {
  std::array<Word, sizeof(S) / sizeof(Word)> words;
  for (Word i = 0; i < words.size(); ++i) words[i] = first + i;
  s = std::bit_cast<S>(words);
}

class ValuesTest : public testing::Test {
 protected:
  void SetUp() override { make_scene(qi::kVersion2); }
  void TearDown() override { qis = qiNewQis(); }

  /// Two names and two records of each kind, the second one named "beta". The words that dialogs show hold
  /// values that they show exactly.
  static void make_scene(Word version) {
    qis = qiNewQis();
    qis->header.fixed.version = version;
    for (std::string name : {"alpha", "beta"}) qiSetName(*qis, qiAddName(*qis) - 1, name);
    qi::for_each_list(*qis, [&](const qi::ListInfo& info, auto& list) {
      if (info.record == "name") return;
      list_bytes(qis->header, info) = 1000;
      if constexpr (requires { list.records; }) list.records.resize(2);
      qi::for_each_record(list, [&](std::size_t number, auto& record) {
        fill_struct(record.fixed, 0x5A000000 + 0x100 * static_cast<Word>(number));
        if constexpr (requires {
                        record.ext;
                        record.fixed.name;
                      }) {
          if (version == qi::kVersion2) fill_struct(record.ext.emplace().head, 0xE5000000);
        }
        if constexpr (requires { record.fixed.name; }) record.fixed.name = 1;
        if constexpr (requires { show_exactly(record); }) show_exactly(record);
      });
    });
    qis->obj_list.records[1].fixed.lod_count = 3;
    qis->obj_list.records[1].lod_distances = {10, 200.5f, 3000};
    qis->obj_list.records[1].lod_objs = {4, 5, 6};
  }

  static void show_exactly(qi::Scene& scene) { scene.fixed.video = 0x16; }
  static void show_exactly(qi::Env& env) {
    env.fixed.use_fog = 1;
    env.fixed.fog_color = 0xA0B0C0D0;
    env.fixed.fog_near = 100;
    env.fixed.fog_far = 900;
    env.fixed.fill_color = 0x102030;
    env.fixed.fill_depth = kUnset;
    env.fixed.bg_color_image = 7;
    env.fixed.bg_depth_image = kUnset;
  }
  static void show_exactly(qi::Cam& cam) {
    auto& c = cam.fixed;
    c.type = 0;
    c.near = 0.5f;
    c.far = 4000;
    c.right = 1;
    c.left = -1;
    c.top = 0.75f;
    c.bottom = -0.75f;
    c.fovy = 33.5f;
    c.aspect = 1.25f;
    c.scale = 2;
    c.lookat = 3;
    c.eye = 4;
    c.up = kUnset;
  }
  static void show_exactly(qi::Light& light) {
    light.fixed.type = 0;
    light.fixed.ambient_red = 0.25f;
    light.fixed.ambient_green = 0.5f;
    light.fixed.ambient_blue = 0.75f;
    light.fixed.sub_count = 3;
  }
  static void show_exactly(qi::Obj& obj) {
    obj.fixed.state = 1;
    obj.fixed.type = 2;
    obj.fixed.group = 0x1f;
    obj.fixed.priority = 0;
    obj.fixed.render = {1, 0x04700000, 0x106, 0x203};
    obj.fixed.billboard_link = 0;
    obj.fixed.lod_count = 0;
    if (obj.ext) obj.ext->head.fog_render = {0, 0x00D00000, 0x112, 0x200};
  }
  static void show_exactly(qi::Shape& shape) {
    shape.fixed.flags = 0x115;
    shape.fixed.geometry = 9;
  }
  static void show_exactly(qi::Mat& mat) {
    auto& m = mat.fixed;
    m.mat_type = 0;
    m.shade_type = 0x212;
    m.combiner = {0x00010003, 0x00100010, kUnset, 0x00020001};
    m.prim_color = {0.5f, 0.25f, 1, 0};
    m.usr_flags = {0, 1, 0x22, 0x333, 0x4444, 0x55555, 0x666666, 0x7777777};
    if (!mat.ext) return;
    auto& e = mat.ext->head;
    e.ambient = {0.5f, 0.5f, 0.5f, 1};
    e.emission = {0, 0, 0, 1};
    e.diffuse = {1, 0.75f, 0.5f, 0.25f};
    e.mat_type_fog = 0x01010101;
    e.combiner_fog = {0x01030405, 0x0E0F1112, 0x14150001, 0};
    e.prim_color_fog = {0.125f, 0.25f, 0.375f, 0.5f};
  }
  static void show_exactly(qi::Tex& tex) {
    tex.fixed.tex_type = 0x405;
    tex.fixed.wrap_s = 0x1;
    tex.fixed.wrap_t = 0x200;
    if (tex.ext) tex.ext->head = {1, 1, 4, 0, 0};
  }
  static void show_exactly(qi::Anim& anim) {
    anim.fixed.type = 2;
    anim.fixed.frame_rate = 30;
    anim.fixed.anim_loop = 12;
    if (anim.ext) anim.ext->head.flags = 0;
  }
  static void show_exactly(qi::Joint& joint) { joint.fixed.type = 0x1f; }
  static void show_exactly(qi::Effector& effector) { effector.fixed.type = 0x2; }

  /// The items that the dialog of a node shows, and the traces of opening it.
  struct Opened {
    values::DialogOn on;
    std::unique_ptr<values::Item> top;
    std::string traces;
  };
  static Opened open(std::string_view node) {
    const auto on = values::dialog_of_node(node);
    testing::internal::CaptureStdout();
    auto top = on ? on->dialog->open(*qis, on->number) : nullptr;
    const std::string traces = testing::internal::GetCapturedStdout();
    if (!top) throw std::runtime_error("no dialog for " + std::string(node));
    return {*on, std::move(top), traces};
  }

  static std::string shown(const Opened& dialog, std::string_view path) {
    const values::Item* const item = dialog.top->find(path);
    return item ? values::shown_text(*item, dialog.on.dialog->lines()) : "(no such item)";
  }
  static std::string shown(std::string_view node, std::string_view path) { return shown(open(node), path); }

  /// What the user makes of an item.
  static void edit(Opened& dialog, std::string_view path, const std::string& text) {
    const auto complaint = values::edit_text(*dialog.top, path, text);
    EXPECT_FALSE(complaint) << *complaint;
  }

  /// Applies a dialog; gives what it printed. @param answer  1, or 0: it is refused
  static std::string apply(Opened& dialog, int answer = 1) {
    testing::internal::CaptureStdout();
    const int result = values::applyChanges(*qis, dialog.on.dialog->name(), *dialog.top, dialog.on.number);
    const std::string traces = testing::internal::GetCapturedStdout();
    EXPECT_EQ(result, answer);
    return traces;
  }
  /// Opens the dialog of a node, changes one item and applies.
  static std::string change(std::string_view node, std::string_view path, const std::string& text) {
    Opened dialog = open(node);
    edit(dialog, path, text);
    return apply(dialog);
  }
};
