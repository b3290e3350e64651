/// @file
/// What records hold beside references: numbers, names, index words.
#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "checks/parts.h"
#include "qilib/names.h"
#include "qilib/references.h"

namespace checks {
namespace {

// `numbers(fields, record)` names every field of a record that is known to hold numbers with a fraction, and
// `externals(fields, record)` those that lead into another file.

void numbers(auto& /*fields*/, const auto& /*record*/) {}
void externals(auto& /*fields*/, const auto& /*record*/) {}

void color(auto& fields, std::string_view field, const QisRGBA& c) {
  fields.numbers(field, std::array{c.red, c.green, c.blue, c.alpha});
}

void numbers(auto& fields, const qi::Cam& r) {
  const auto& f = r.fixed;
  fields.numbers("clip", std::array{f.near, f.far, f.right, f.left, f.top, f.bottom});
  fields.numbers("fovy", std::array{f.fovy});
  fields.numbers("aspect", std::array{f.aspect});
  fields.numbers("scale", std::array{f.scale});
}
void numbers(auto& fields, const qi::Light& r) {
  fields.numbers("ambient", std::array{r.fixed.ambient_red, r.fixed.ambient_green, r.fixed.ambient_blue});
}
void numbers(auto& fields, const qi::Obj& r) { fields.numbers("lod_distances", r.lod_distances); }
void numbers(auto& fields, const qi::Mat& r) {
  color(fields, "prim_color", r.fixed.prim_color);
  if (!r.ext) return;
  const auto& head = r.ext->head;
  color(fields, "ambient", head.ambient);
  color(fields, "emission", head.emission);
  color(fields, "diffuse", head.diffuse);
  color(fields, "prim_color_fog", head.prim_color_fog);
}
void numbers(auto& fields, const qi::Weight& r) { fields.numbers("weights", r.weights); }
void numbers(auto& fields, const qi::Joint& r) {
  fields.numbers("length", std::array{r.fixed.length});
  fields.numbers("axis", r.fixed.axis);
}
void numbers(auto& fields, const qi::Envelope& r) {
  for (std::size_t i = 0; i < r.weighted.size(); ++i)
    fields.numbers("weighted[" + std::to_string(i) + "].weights", r.weighted[i].weights);
}

void externals(auto& fields, const qi::Scene& r) {
  if (!r.ext) return;
  for (std::size_t i = 0; i < r.ext->externals.size(); ++i)
    fields.externals("externals" + std::to_string(i), r.ext->externals[i]);
}
void externals(auto& fields, const qi::Obj& r) {
  if (!r.ext) return;
  fields.externals("externals0", r.ext->externals0);
  fields.externals("externals1", r.ext->externals1);
}
void externals(auto& fields, const qi::Mat& r) {
  if (r.ext) fields.externals("externals", r.ext->externals);
}
void externals(auto& fields, const qi::Tex& r) {
  if (!r.ext) return;
  fields.externals("externals0", r.ext->externals0);
  fields.externals("externals1", r.ext->externals1);
}
void externals(auto& fields, const qi::Anim& r) {
  if (!r.ext) return;
  const auto& head = r.ext->head;
  for (const auto& [field, target] : {std::pair{"orientation", &head.orientation},
                                      {"direction", &head.direction},
                                      {"up_vector", &head.up_vector},
                                      {"preferred_axis", &head.preferred_axis},
                                      {"position", &head.position},
                                      {"unique_scale", &head.unique_scale},
                                      {"classic_scale", &head.classic_scale}})
    fields.externals(field, std::array{target->external});
}
void externals(auto& fields, const qi::Envelope& r) {
  const auto part = [](const char* kind, std::size_t i) { return kind + ("[" + std::to_string(i) + "]"); };
  for (std::size_t i = 0; i < r.full_weighted.size(); ++i)
    fields.externals(part("full_weighted", i), std::array{r.full_weighted[i].fixed.external});
  for (std::size_t i = 0; i < r.weighted.size(); ++i)
    fields.externals(part("weighted", i) + ".externals", r.weighted[i].externals);
  for (std::size_t i = 0; i < r.morphs.size(); ++i)
    fields.externals(part("morphs", i),
                     std::array{r.morphs[i].fixed.external_a, r.morphs[i].fixed.external_b});
}
void externals(auto& fields, const qi::Cluster& r) {
  for (std::size_t i = 0; i < r.clusters.size(); ++i)
    fields.externals("clusters[" + std::to_string(i) + "]", std::array{r.clusters[i].external});
}
void externals(auto& fields, const qi::ChainRoot& r) { fields.externals("externals", r.externals); }
void externals(auto& fields, const qi::Joint& r) { fields.externals("externals", r.externals); }
void externals(auto& fields, const qi::Effector& r) { fields.externals("externals", r.externals); }

/// Looks at one record after another, and is told its fields.
class FieldCheck {
 public:
  FieldCheck(const Qis& scene, bool knows_externals, Report& report)
      : scene_(scene), knows_externals_(knows_externals), report_(report) {}

  void record(const qi::ListInfo& info, std::size_t number, const auto& record) {
    info_ = &info;
    number_ = number;
    checks::numbers(*this, record);
    checks::externals(*this, record);
  }

  void numbers(std::string_view field, const auto& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
      if (!std::isfinite(values[i]))
        report_.add(
            kNumberNotFinite, *info_, number_, path(field, values.size(), i),
            ": " + std::string{field} + " is " + (std::isnan(values[i]) ? "not a number" : "infinite"));
  }
  /// The first half of a pair is the number of its name.
  void externals(std::string_view field, const auto& pairs) {
    const std::size_t names = scene_.ext.external_name_list.records.size();
    for (std::size_t i = 0; knows_externals_ && i < pairs.size(); ++i)
      if (pairs[i] != QisExternal{} && pairs[i].first >= names)
        report_.add(kExternalNameMissing, *info_, number_, path(field, pairs.size(), i),
                    ": external name " + std::to_string(pairs[i].first) + " is outside its list of " +
                        std::to_string(names));
  }

 private:
  static std::string path(std::string_view field, std::size_t count, std::size_t i) {
    return count == 1 ? "." + std::string{field} : entry(field, i);
  }

  const Qis& scene_;
  bool knows_externals_;
  Report& report_;
  const qi::ListInfo* info_ = nullptr;
  std::size_t number_ = 0;
};

/// Levels of detail that a viewer would never come to.
void check_distances(const Qis& scene, Report& report) {
  qi::for_each_record(scene.obj_list, [&](std::size_t number, const qi::Obj& obj) {
    for (std::size_t i = 1; i < obj.lod_distances.size(); ++i)
      if (obj.lod_distances[i] < obj.lod_distances[i - 1])
        report.add(kDistanceFalls, qi::list_info(&Qis::obj_list), number, entry("lod_distances", i),
                   ": level of detail " + std::to_string(i) + " begins nearer than the one before it");
  });
}

bool is_control(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

void check_name_texts(const qi::ListInfo& info, const std::vector<qi::Name>& names, Report& report) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string text = qiGetName(names[i]);
    if (text.empty()) report.add(kNameEmpty, info, i, "", ": is empty");
    if (std::ranges::any_of(text, is_control))
      report.add(kNameControlCharacter, info, i, "", " (" + text + "): holds a control character");
  }
}

/// Records of a list that have the same name.
void check_equal_names(const qi::ListInfo& info, const auto& list, const Qis& scene, Report& report) {
  std::unordered_map<std::string, std::size_t> first;
  const auto& names = scene.name_list.records;
  qi::for_each_record(list, [&](std::size_t number, const auto& record) {
    if constexpr (requires { record.fixed.name; }) {
      if (record.fixed.name >= names.size()) return;
      const std::string text = qiGetName(names[record.fixed.name]);
      const auto [same, is_new] = first.try_emplace(text, number);
      if (!is_new && !text.empty())
        report.add(kNameEqual, info, number, ".name",
                   " (" + text + "): " + std::string{info.record} + "_" + std::to_string(same->second) +
                       " has the same name");
    }
  });
}

/// The words in which records tell their own numbers.
void check_index(const qi::ListInfo& info, std::size_t number, const auto& record, Report& report) {
  if constexpr (requires { record.fixed.index; }) {
    if (record.fixed.index == number) return;
    const bool is_name = std::is_same_v<std::decay_t<decltype(record)>, qi::Name>;
    report.add(is_name ? kNameIndexWrong : kRecordIndexWrong, info, number, ".index",
               ": its index word is " + std::to_string(record.fixed.index));
  }
}

}  // namespace

void check_content(const Qis& scene, const std::vector<Word>& damaged, Report& report) {
  const Word external_names = qi::list_info(&qi::ExtLists::external_name_list).tag;
  FieldCheck fields{scene, std::ranges::find(damaged, external_names) == damaged.end(), report};
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      fields.record(info, number, record);
      check_index(info, number, record, report);
    });
    check_equal_names(info, list, scene, report);
  });
  check_distances(scene, report);
  check_name_texts(qi::list_info(&Qis::name_list), scene.name_list.records, report);
  check_name_texts(qi::list_info(&qi::ExtLists::external_name_list), scene.ext.external_name_list.records,
                   report);
}

}  // namespace checks
