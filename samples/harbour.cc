/// @file
/// A lighthouse, a pier and a boat.
#include "samples/scenebuilder.h"
#include "samples/scenes.h"

namespace samples {

namespace {

constexpr QisRGBA kWhite{0.95f, 0.95f, 0.9f, 1}, kRed{0.75f, 0.12f, 0.1f, 1}, kGrey{0.5f, 0.5f, 0.52f, 1},
    kBrown{0.55f, 0.38f, 0.22f, 1}, kYellow{1.0f, 0.9f, 0.4f, 1};

struct Materials {
  Word stone, wood, water, tower, lamp, sail, brass, dusk_sky;
};

Materials materials(SceneBuilder& b) {
  const Word boards = b.texture("t_planks", planks(kBrown, 5));
  const Word light = b.texture("t_glow", glow(kYellow));
  const Word courses = b.texture("t_bricks", bricks(kGrey, {0.8f, 0.8f, 0.75f, 1}, 8));
  const Word bands = b.texture("t_bands", stripes(kWhite, kRed, 4));
  return {.stone = b.material("stone", kGrey, {courses}),
          .wood = b.material("wood", kBrown, {boards}),
          .water = b.material("water", {0.1f, 0.25f, 0.4f, 1},
                              {b.texture("t_waves", waves({0.05f, 0.15f, 0.3f, 1}, {0.6f, 0.75f, 0.8f, 1}))}),
          .tower = b.material("tower_paint", kWhite, {bands, courses}),
          .lamp = b.material("lamp_glass", kYellow, {light}),
          .sail = b.material("sailcloth", kWhite),
          .brass = b.material("brass_(not_used)", {0.8f, 0.6f, 0.2f, 1}, {light}),
          .dusk_sky = b.texture("t_dusk", sky({0.95f, 0.55f, 0.35f, 1}, {0.15f, 0.15f, 0.4f, 1}))};
}

/// The tower with its gallery and turning lamp.
Word lighthouse(SceneBuilder& b, const Materials& m) {
  const Word turning =
      b.anim("lamp_turning", SceneBuilder::kKeyFrame,
             {{.frame = 0}, {.frame = 60, .turn = {0, 180, 0}}, {.frame = 120, .turn = {0, 360, 0}}});
  const Mesh shaft = tower(14, 9, 80, 12);
  const Word base_part = b.part("shaft_foot", m.stone, 0, 8), top_part = b.part("shaft_rest", m.tower, 8, 16);
  const Word lamp = b.add_obj("lamp", {.shape = b.shape("s_lamp", box(6, 4, 2), m.lamp), .anim = turning});
  const Word beam =
      b.add_obj("beam", {.shape = b.shape("s_beam", tower(1, 12, 120, 8), m.lamp), .anim = turning});
  const Word roof = b.add_obj("roof", {.shape = b.shape("s_roof", tower(8, 0, 8, 12), m.tower)});
  const Word gallery = b.add_obj("gallery", {.shape = b.shape("s_gallery", tower(13, 13, 3, 12), m.stone),
                                             .children = {lamp, beam, roof}});
  return b.add_obj("lighthouse", {.shape = b.shape("s_shaft", shaft, kUnset, {base_part, top_part}),
                                  .children = {gallery}});
}

/// A sailing boat, drawn simpler the farther away it is.
Word boat(SceneBuilder& b, const Materials& m) {
  std::vector<SceneBuilder::Key> rocking;
  for (int frame = 0; frame < 8; ++frame) {
    rocking.push_back({.turn = {static_cast<float>(frame < 4 ? frame : 8 - frame) - 2, 0, 0}});
  }
  const Word sway = b.anim("rocking", SceneBuilder::kFullFrame, rocking);
  const Word hull = b.shape("s_hull", box(30, 8, 10), m.wood),
             sail = b.shape("s_sail", tower(9, 0, 26, 3), m.sail);
  const Word mast = b.add_obj("mast", {.shape = b.shape("s_mast", tower(0.6f, 0.4f, 30, 6), m.wood),
                                       .children = {b.add_obj("sail", {.shape = sail})}});
  const Word near_boat = b.add_obj("boat_near", {.shape = hull, .children = {mast}});
  const Word middle_boat = b.add_obj("boat_middle", {.shape = hull, .mat = m.wood});
  const Word far_boat = b.add_obj("boat_far", {.shape = sail, .mat = m.sail});
  const Word boat = b.add_obj("boat", {.anim = sway});
  b.obj(boat).lod_distances = {200, 800, 5000};
  b.obj(boat).lod_objs = {near_boat, middle_boat, far_boat};
  return boat;
}

Word pier(SceneBuilder& b, const Materials& m) {
  const Word pile = b.shape("s_pile", tower(1.5f, 1.5f, 12, 6), m.wood);
  Words piles;
  for (int i = 0; i < 6; ++i) piles.push_back(b.add_obj("pile_" + std::to_string(i), {.shape = pile}));
  return b.add_obj("pier", {.shape = b.shape("s_deck", box(20, 1, 90), m.wood), .children = piles});
}

/// Gulls that always face the viewer, one shape for all.
Words gulls(SceneBuilder& b, const Materials& m) {
  const Word facing = b.anim("facing_you", SceneBuilder::kBillboard, {{}});
  const Word shape = b.shape("s_gull", plane(4, 2, 1), m.sail);
  Words result;
  for (int i = 0; i < 3; ++i) {
    const Word gull = b.add_obj("gull_" + std::to_string(i), {.shape = shape, .anim = facing});
    b.obj(gull).fixed.type = 2;
    b.obj(gull).fixed.billboard_link = 1;
    result.push_back(gull);
  }
  return result;
}

/// Where visitors bump into things, and a switch between day and night.
void collisions_and_switches(SceneBuilder& b, Word pier, Word lighthouse) {
  qi::Coll coll;
  for (const Word obj : {pier, lighthouse}) {
    qi::CollSub sub;
    sub.data = {obj, 0, 0, 0};
    coll.indices.push_back(obj);
    coll.subs.push_back(sub);
  }
  b.scene().coll_list.records.push_back(coll);
  qi::Switch day_and_night;
  day_and_night.entries0 = {0, 1};
  day_and_night.entries1 = {pier, lighthouse};
  b.scene().switch_list.records.push_back(day_and_night);
}

/// Colours, normals and texture coordinates that the triangles share.
void shared_attributes(SceneBuilder& b) {
  constexpr Word kOne = 0x3f800000, kMinusOne = 0xbf800000;
  Qis& scene = b.scene();
  scene.color_list.records1.push_back({.fixed = {}, .entries = {{kOne, kOne, kOne, kOne}, {0, 0, 0, kOne}}});
  scene.color_list.records2.push_back({.fixed = {}, .entries = {{kOne, 0, 0, kOne}}});
  scene.vector_list.records1.push_back({.fixed = {}, .entries = {{0, kOne, 0}, {0, kMinusOne, 0}}});
  scene.st_list.records.push_back({.fixed = {}, .entries = {{0, 0}, {kOne, 0}, {kOne, kOne}, {0, kOne}}});
}

}  // namespace

Qis harbour() {
  SceneBuilder b(qi::kVersion1);
  const Materials m = materials(b);
  const Word tower_obj = lighthouse(b, m), boat_obj = boat(b, m), pier_obj = pier(b, m);
  const Word rock =
      b.add_obj("rock", {.shape = b.shape("s_rock", tower(40, 20, 15, 9), m.stone), .children = {tower_obj}});
  Words swimmers = gulls(b, m);
  swimmers.push_back(boat_obj);
  const Word sea =
      b.add_obj("sea", {.shape = b.shape("s_sea", plane(4000, 4000, 6), m.water), .children = swimmers});
  const Word look = b.add_obj("camera_target"), eye = b.add_obj("camera_eye");
  b.add_obj("driftwood_(not_in_the_scene)", {.mat = m.wood});
  collisions_and_switches(b, pier_obj, tower_obj);
  shared_attributes(b);
  return b.finish(
      "harbour_at_dusk", {sea, rock, pier_obj, look, eye},
      {b.environment("dusk", 0xf28c59ff, 600, 1000, m.dusk_sky),
       b.environment("night", 0x101030ff, 300, 900)},
      {b.camera("from_the_sea", look, eye, 45), b.camera("from_the_gallery", boat_obj, tower_obj, 60)},
      {b.sun("evening_sun", {0.35f, 0.25f, 0.25f, 1}, {-1, -0.2f, 0}),
       b.lamp("lantern", {0.05f, 0.05f, 0.1f, 1}, {0, 90, 0})});
}

}  // namespace samples
