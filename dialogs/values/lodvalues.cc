/// @file
/// The level-of-detail dialog: the distances of an object's levels, and the object that each level shows.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kLodLines[] = {
    "*headerLabel.labelString:",
    "*nlodLabel.labelString:number of LOD Level of obj_100",
    "*lod_setLabel.labelString: upper is near, lower is far.",
    "*lod_dist0Label.labelString: distance0(min) <",
    "*lod_link0Label.labelString: then display obj_",
    "*lod_dist_groupLabel.labelString:",
    "*lod_link_groupLabel.labelString:",
};

std::size_t level_count(const qi::Obj& obj) {
  return std::min({std::size_t{obj.fixed.lod_count}, obj.lod_distances.size(), obj.lod_objs.size()});
}

/// The label of a level's distance. A level that is the only one counts as the nearest.
const char* distance_label(std::size_t level, std::size_t count) {
  return level == 0 ? "distance (min)< " : level + 1 == count ? "distance (max)< " : "distance      < ";
}

void show_distances(const qi::Obj& obj, Item& group) {
  for (std::size_t i = 0; i < level_count(obj); ++i) {
    Item& text = group.add(ItemKind::text, "lod_dist" + std::to_string(i), {.columns = 10});
    text.set_value({.text = shown(obj.lod_distances[i])});
    text.set_label(distance_label(i, level_count(obj)));
  }
}

void show_links(const qi::Obj& obj, Item& group) {
  for (std::size_t i = 0; i < level_count(obj); ++i) {
    Item& text = group.add(ItemKind::text, "lod_link" + std::to_string(i), {.columns = 4});
    text.set_value({.text = shown(obj.lod_objs[i], kDecimal)});
    text.set_label("then display obj_");
  }
}

void store_levels(qi::Obj& obj, const Item& set, const Item& /*top*/) {
  const Item& distances = set.item(0);
  const Item& links = set.item(1);
  for (std::size_t i = 0; i < std::min({level_count(obj), distances.size(), links.size()}); ++i) {
    obj.lod_distances[i] = float_of(distances.item(i).text());
    std::printf("dist = %s\n\tstrtod:%g\n", distances.item(i).text().c_str(), double{obj.lod_distances[i]});
    obj.lod_objs[i] = word_of(links.item(i).text(), kDecimal.base);
  }
}

struct LodRows : Rows<qi::Obj> {
  static std::vector<Row> all() {
    return {
        group("header", kHorizontal, {text("nlod", 5, &qi::Obj::Fixed::lod_count, kDecimal)}).only_shown(),
        separator("sep1"),
        group("lod_set", kHorizontal,
              {group("lod_dist_group", kVertical, {}).shown_by(show_distances),
               group("lod_link_group", kVertical, {}).shown_by(show_links)})
            .stored_by(store_levels)};
  }
};

class LodDialog final : public RecordDialog<LevelsOfDetail> {
 public:
  LodDialog() : RecordDialog({.lines = kLodLines}, LodRows::all()) {}

 protected:
  std::unique_ptr<Item> make_items(Qis& scene, Word number) const override {
    auto top = RecordDialog::make_items(scene, number);
    if (Item* const count = top->find("header.nlod"))
      count->set_label("number of LOD Level of obj_" + shown(number, kDecimal));
    return top;
  }
};

}  // namespace

const Dialog& dialog_of(std::type_identity<LevelsOfDetail>) {
  static const LodDialog dialog;
  return dialog;
}

}  // namespace values
