/// @file
/// A rule of a dialog as a row: words given, what is shown, edits, words stored.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/dialogs/values/values_fixture.h"
#include "tests/support/case_name.h"

/// Words of record 1 are set, its dialog is opened, items are edited and applied: what the words are then,
/// and what the dialog, still open, shows.
struct Rule {
  const char* name;
  const char* node;
  Changes given;
  std::vector<std::pair<const char*, const char*>> shown_first;
  std::vector<std::pair<const char*, const char*>> edits;
  Changes stored;
  std::vector<std::pair<const char*, const char*>> shown_then = {};
};
inline void PrintTo(const Rule& rule, std::ostream* out) { *out << rule.node; }

class DialogRule : public ValuesTest, public testing::WithParamInterface<Rule> {
 protected:
  void check();

  /// Puts words into the fixed part (and the head of the version-2 structure) of record 1.
  static void give(const std::string& record_word, const Changes& changes) {
    qi::for_each_list(*qis, [&](const qi::ListInfo& info, auto& list) {
      if (info.record != record_word) return;
      qi::for_each_record(list, [&](std::size_t number, auto& record) {
        if (number != (record_word == "scene" ? 0 : 1)) return;
        for (const auto& [word, value] : changes) {
          if (word < kExt) put(record.fixed, word, value);
          if constexpr (requires { record.ext->head; })
            if (word >= kExt) put(record.ext->head, word - kExt, value);
        }
      });
    });
  }

 private:
  template <class S>
  static void put(S& s, std::size_t word, Word value) {
    auto words = std::bit_cast<std::array<Word, sizeof(S) / sizeof(Word)>>(s);
    words.at(word) = value;
    s = std::bit_cast<S>(words);
  }
};

inline void DialogRule::check() {
  const Rule& rule = GetParam();
  const std::string node(rule.node);
  give(node.substr(0, node.find('_')), rule.given);
  Opened dialog = open(node);
  for (const auto& [path, text] : rule.shown_first) EXPECT_EQ(shown(dialog, path), text) << path;
  SceneWords expected = scene_words();
  for (const auto& [path, text] : rule.edits) edit(dialog, path, text);
  apply(dialog);
  for (const auto& [word, value] : rule.stored) expected[node][word] = value;
  EXPECT_EQ(scene_words(), expected);
  for (const auto& [path, text] : rule.shown_then) EXPECT_EQ(shown(dialog, path), text) << path;
}
