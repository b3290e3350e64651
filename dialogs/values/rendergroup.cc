/// @file
/// Render words in and out of items.
#include "dialogs/values/rendergroup.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace values {

using items::Item;
using items::ItemKind;

namespace {

// The priority word: a class in bits 20 to 23, which counts down by two, and the switch in bit 26.
constexpr int kFirstClass = 13;
constexpr Word kFirstPriority = 0x00D00000, kPriorityStep = 0x00200000, kSwitch = 0x04000000;

constexpr Word kFirstCycle = 0x100, kSecondCycle = 0x200, kModeBits = 0xFF;
constexpr const char* kVoid = "void";
constexpr std::size_t kFogModes = 18;  // the first mode for fog
constexpr std::size_t kSecondCycleModes = 17;

const std::vector<std::string> kModes{"OPA_SURF",  "XLU_SURF", "OPA_DECAL", "XLU_DECAL",   "OPA_INTER",
                                      "XLU_INTER", "TEX_EDGE", "TEX_INTER", "SUB_SURF",    "PCL_SURF",
                                      "OPA_TERR",  "TEX_TERR", "SUB_TERR",  "CLD_SURF",    "OVL_SURF",
                                      "ADD",       "NOOP",     "PASS",      "FOG_SHADE_A", "FOG_PRIM_A"};

/// The switch counts as on when any bit of the top byte is set.
bool switched(Word priority) { return priority >> 24 != 0; }

int class_index(Word priority) { return (kFirstClass - static_cast<int>((priority & 0xFFFFFF) >> 20)) >> 1; }

Word priority_of(const Item& group) {
  const auto steps = static_cast<Word>(option_at(group, "render_pri.render_pri_opt"));
  const auto on_switch = static_cast<Word>(option_at(group, "render_pri.render_pri_sw"));
  return (kFirstPriority - steps * kPriorityStep) | on_switch * kSwitch;
}

void add_option(Item& group, const char* name, std::vector<std::string> entries, int index) {
  group.add(ItemKind::option, name, {.entries = std::move(entries)}).set_value({.option = index});
}

void activate_modes(Item& modes, Word priority) {
  for (const char* name : {"render_type0", "render_type1"})
    if (Item* const mode = modes.find(name)) mode->set_activated(switched(priority));
}

}  // namespace

objRenderGroup::objRenderGroup(std::string name, const qi::RenderWords& words, RenderUse use)
    : Item(ItemKind::list, std::move(name)) {
  Item& priority = add(ItemKind::group, "render_pri", {.horizontal = true});
  add_option(priority, "render_pri_sw", {"QUIL ->", "KAVOGBI"}, switched(words.pri));
  add_option(priority, "render_pri_opt",
             {"OPA_SURF", "OPA_INTER", "OPA_DECAL", "TEX_EDGE", "XLU_SURF", "XLU_INTER", "XLU_DECAL"},
             class_index(words.pri));

  std::vector<std::string> first_modes = kModes;
  if (use == RenderUse::fog) std::fill_n(first_modes.begin(), kFogModes, kVoid);
  Item& modes = add(ItemKind::group, "render_pri_g", {.no_label = true});
  add_option(modes, "render_type0", std::move(first_modes), static_cast<int>(words.type0 & kModeBits));
  add_option(modes, "render_type1", {kModes.begin(), kModes.begin() + kSecondCycleModes},
             static_cast<int>(words.type1 & kModeBits));
  add_option(modes, "render_cycle_type", {"1 cycle", "2 cycle"}, words.cycle_type == 1);
  activate_modes(modes, words.pri);
}

void objRenderGroup::store(Item& group, qi::RenderWords& words) {
  words.pri = priority_of(group);
  std::printf("\tobj_render_pri = %x\n", words.pri);
  Item* const modes = group.find("render_pri_g");
  if (!modes) return;
  const Item* const first = modes->find("render_type0");
  if (first && first->entry() != kVoid) words.type0 = static_cast<Word>(first->option()) | kFirstCycle;
  words.type1 = static_cast<Word>(option_at(*modes, "render_type1")) | kSecondCycle;
  words.cycle_type = static_cast<Word>(option_at(*modes, "render_cycle_type"));
  activate_modes(*modes, words.pri);
}

}  // namespace values
