/// @file
/// References that the graph doesn't show: each is named, and can be renumbered by its description.
#include "qilib/references.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using Found = std::tuple<std::string, Word, Word>;  // field, tag, record number

/// Notes what a record refers to.
struct Collector {
  std::vector<Found> found;
  void words(std::string_view field, Word tag, std::span<const Word> words) {
    for (const Word word : words) found.emplace_back(field, tag, word);
  }
  void node(std::string_view field, const QisNodeIndex& node) {
    found.emplace_back(field, node.tag, node.index);
  }
};

/// Moves every record number on by 100.
struct Renumberer {
  void words(std::string_view, Word, std::span<Word> words) {
    for (Word& word : words) word += 100;
  }
  void node(std::string_view, QisNodeIndex& node) { node.index += 100; }
};

template <class R>
std::vector<Found> references_of(const R& record) {
  Collector collector;
  data_references(collector, record);
  return collector.found;
}

template <class R>
std::vector<Found> renumbered(R record) {
  Renumberer renumberer;
  data_references(renumberer, record);
  return references_of(record);
}

TEST(DataReferences, OfACamera) {
  qi::Cam cam;
  cam.fixed.name = 1;
  cam.fixed.lookat = 2;
  cam.fixed.eye = 3;
  cam.fixed.up = kUnset;
  EXPECT_THAT(references_of(cam), ElementsAre(Found{"name", 0x110100, 1}, Found{"lookat", 0x20100, 2},
                                              Found{"eye", 0x20100, 3}, Found{"up", 0x20100, kUnset}));
  EXPECT_THAT(renumbered(cam), ElementsAre(Found{"name", 0x110100, 101}, Found{"lookat", 0x20100, 102},
                                           Found{"eye", 0x20100, 103}, Found{"up", 0x20100, 99}));
}

TEST(DataReferences, OfAShapeGoByItsDeformer) {
  qi::Shape shape;
  shape.fixed.name = kUnset;
  shape.fixed.geometry = 4;
  const Found name{"name", 0x110100, kUnset};
  EXPECT_THAT(references_of(shape), ElementsAre(name, Found{"geometry", 0x80100, 4}));
  for (const Word tag : {0x220100u, 0x280100u}) {
    shape.ext.emplace().head.deformer_tag = tag;
    EXPECT_THAT(references_of(shape), ElementsAre(name, Found{"geometry", tag, 4}));
    EXPECT_THAT(renumbered(shape), ElementsAre(testing::_, Found{"geometry", tag, 104}));
  }
}

TEST(DataReferences, OfATextureGoByItsFormAndPalette) {
  qi::Tex tex;
  tex.fixed.name = kUnset;
  tex.table.untiled.image = 5;
  tex.table.images = {6, 7};
  const Found name{"name", 0x110100, kUnset};
  EXPECT_THAT(references_of(tex), ElementsAre(name, Found{"image", 0x120100, 5}));
  EXPECT_THAT(renumbered(tex), ElementsAre(testing::_, Found{"image", 0x120100, 105}));
  tex.fixed.tiled = 1;
  EXPECT_THAT(references_of(tex),
              ElementsAre(name, Found{"image", 0x120100, 6}, Found{"image", 0x120100, 7}));
  tex.ext.emplace().head.color_palette = 1;
  tex.ext->palettes = {8, 9};
  EXPECT_THAT(renumbered(tex),
              ElementsAre(testing::_, Found{"image", 0x200100, 106}, Found{"image", 0x200100, 107},
                          Found{"palette", 0x210100, 108}, Found{"palette", 0x210100, 109}));
}

TEST(DataReferences, OfAnEnvelopeAreThoseOfItsParts) {
  qi::Envelope envelope;
  envelope.fixed.name = 1;
  envelope.full_weighted.resize(1);
  envelope.full_weighted[0].fixed.name = 2;
  envelope.full_weighted[0].fixed.node = {0x250000, 3};
  envelope.weighted.resize(1);
  envelope.weighted[0].fixed.name = 4;
  envelope.weighted[0].nodes = {{0x20000, 5}, {0x20000, 6}};
  envelope.morphs.resize(1);
  envelope.morphs[0].fixed.name = 7;
  envelope.morphs[0].fixed.node_b = {0x260000, 8};
  EXPECT_THAT(renumbered(envelope),
              ElementsAre(Found{"name", 0x110100, 101}, Found{"name", 0x110100, 102},
                          Found{"full-weighted part", 0x250000, 103}, Found{"name", 0x110100, 104},
                          Found{"weighted part", 0x20000, 105}, Found{"weighted part", 0x20000, 106},
                          Found{"name", 0x110100, 107}, Found{"morph part", 0, 100},
                          Found{"morph part", 0x260000, 108}));
}

TEST(DataReferences, OfKindsWithoutAnyAreNone) { EXPECT_THAT(references_of(qi::Vtx{}), ElementsAre()); }

}  // namespace
