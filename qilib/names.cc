/// @file
/// Names: packing texts into words and back.
#include "qilib/names.h"

#include <algorithm>

#include "qilib/appendrecord.h"
#include "qilib/references.h"
#include "qilib/sizes.h"

namespace {

constexpr Word kNameListTag = qi::list_of(qi::kNameTag);
constexpr std::size_t kCharsPerWord = sizeof(Word);

constexpr Word words_for(std::size_t length) {
  return static_cast<Word>((length + kCharsPerWord - 1) / kCharsPerWord);
}

constexpr unsigned shift_of(std::size_t character) {
  return static_cast<unsigned>(8 * (kCharsPerWord - 1 - character % kCharsPerWord));
}

Words pack(const std::string& text) {
  Words words(words_for(text.size()));
  for (std::size_t i = 0; i < text.size(); ++i)
    words[i / kCharsPerWord] |= Word{static_cast<unsigned char>(text[i])} << shift_of(i);
  return words;
}

}  // namespace

Word qiGetNamelen(const qi::Name& name) { return name.fixed.size - name.fixed.fixed_size; }

std::string qiNameBytes(const qi::Name& name) {
  const std::size_t length = std::min<std::size_t>(qiGetNamelen(name), name.text.size() * kCharsPerWord);
  std::string text;
  for (std::size_t i = 0; i < length; ++i)
    text += static_cast<char>(name.text[i / kCharsPerWord] >> shift_of(i));
  text.resize(text.find_last_not_of('\0') + 1);
  return text;
}

std::string qiGetName(const qi::Name& name) {
  std::string text = qiNameBytes(name);
  text.resize(std::min(text.find('\0'), text.size()));
  qiSp2_(text);
  return text;
}

void qiSp2_(std::string& text) { std::replace(text.begin(), text.end(), ' ', '_'); }

Word qiAddName(Qis& scene) {
  auto& list = scene.name_list;
  qi::bring_list(scene, list);
  const Word bytes = qiAddElementToList(list, [](qi::Name& name) {
    name.text = pack("   ");
    name.fixed.tag = qi::kNameTag;
    name.fixed.fixed_size = sizeof(name.fixed);
    return name.fixed.size = static_cast<Word>(sizeof(name.fixed) + kCharsPerWord);
  });
  qiAdjustListSizeData(scene, list.header.count - 1, static_cast<std::int32_t>(bytes), kNameListTag);
  return list.header.count;
}

int qiSetName(Qis& scene, Word index, std::string& text) {
  qi::Name* const name = qi::record_in(scene, &Qis::name_list, index);
  if (!name) return 0;
  text.resize(std::min(text.find('\0'), text.size()));
  qiSp2_(text);
  const Word change = (words_for(text.size()) - words_for(qiGetNamelen(*name))) * Word{kCharsPerWord};
  name->text = pack(text);
  qiAdjustListSizeData(scene, index, static_cast<std::int32_t>(change), qi::kNameTag);
  return 1;
}
