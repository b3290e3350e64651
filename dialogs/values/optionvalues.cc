/// @file
/// The converters' dialogs as tables of options, and the way between options and items.
#include "dialogs/values/optionvalues.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "dialogs/values/numbers.h"

namespace values {
namespace {

template <auto Member>
constexpr OptionRow text(const char* name) {
  return {.name = name, .field = option_field<Member>};
}
template <auto Member>
constexpr OptionRow segment(const char* name) {
  return {.name = name, .field = option_field<Member>, .columns = 5};
}
template <auto Member>
constexpr OptionRow flag(const char* name, const char* option) {
  return {.name = name, .field = option_field<Member>, .flag = option};
}

// The directory changes by "Set Output Directory" only.
constexpr OptionRow kDirectory = {
    .name = "dirName", .field = option_field<&NgOps::output_dir>, .only_shown = true};

constexpr OptionRow kGfxOptions[] = {
    kDirectory,
    text<&NgOps::output>("output"),
    text<&NgOps::header>("header"),
    text<&NgOps::label>("label"),
    text<&NgOps::scale>("scale"),
    text<&NgOps::quilinfo>("quilinfo"),
    flag<&NgOps::nocomdef>("nocomdef", "-nocomdef"),
    text<&NgOps::vtxshare>("vtxshare"),
    text<&NgOps::vtxcache>("vtxcache"),
    text<&NgOps::vtxload>("vtxload"),
    flag<&NgOps::strictflat>("strictflat", "-strictflat"),
    flag<&NgOps::noalignpad>("noalignpad", "-noalignpad"),
    text<&NgOps::outobj>("outobj"),
    flag<&NgOps::nogeomclr>("nogeomclr", "-nogeomclr"),
    flag<&NgOps::strictcidx>("strictcidx", "-strictcidx"),
    flag<&NgOps::noreduct>("noreduct", "-noreduct"),
};
constexpr OptionRow kRegMask[] = {{"bit0"}, {"bit1"}, {"bit2"}, {"bit3"}, {"bit4"}};
constexpr OptionRow kOutMask[] = {{"maskh"},  {"tlut"},   {"bitmap"}, {"deform"}, {"shape"},
                                  {"vtxlst"}, {"gfxlst"}, {"objs"},   {"anims"},  {"scene"}};
constexpr OptionRow kGfxSegments[] = {
    segment<&NgOps::vtxseg>("vtxseg"),
    segment<&NgOps::imgseg>("imgseg"),
    segment<&NgOps::tlutseg>("tlutseg"),
};

constexpr OptionRow kZexOptions[] = {
    kDirectory,
    text<&NgOps::output>("output"),
    text<&NgOps::scale>("scale"),
    text<&NgOps::vtxcache>("vtxcache"),
    text<&NgOps::vtxload>("vtxload"),
    flag<&NgOps::noreduct>("noreduct", "-noreduct"),
    flag<&NgOps::fogoff>("fogoff", "-fogoff"),
};
constexpr OptionRow kZexSegments[] = {
    segment<&NgOps::vtxseg>("vtxseg"),
    segment<&NgOps::envseg>("envseg"),
    segment<&NgOps::imgseg>("imgseg"),
    segment<&NgOps::tlutseg>("tlutseg"),
};

// Both dialogs know the labels of all these items, whichever of them they have ("fname" is in neither).
constexpr const char* kSharedLines[] = {
    "*dirNameLabel.labelString:Directory for file output",
    "*headerLabel.labelString:Header File Name (*.h)",
    "*labelLabel.labelString:Label Name of Output Data",
    "*scaleLabel.labelString:Scale",
    "*quilinfoLabel.labelString:Output QUIL Information to File",
    "*nocomdefLabel.labelString:Disable Output for common define, typedef block",
    "*vtxshareLabel.labelString:Number of Sharing Vertex",
    "*vtxcacheLabel.labelString:Vertex Cache Size",
    "*vtxloadLabel.labelString:Number of loading Vertexes",
    "*strictflatLabel.labelString:Flat Normal Output to 3 Vertexes always",
    "*noalignpadLabel.labelString:No Care 64bit alignment",
    "*outobjLabel.labelString:Output Specific Object",
    "*nogeomclrLabel.labelString:Not Clear Geometry Mode",
    "*strictcidxLabel.labelString:When CI 8 selected, always output CI 8",
    "*noreductLabel.labelString:When CI 8/4 selected, no color reduction",
    "*fnameLabel.labelString:Ignore this dialog, Read Options from File",
    "*regmaskLabel.labelString:disable PXU register setting",
    "*bit0Base.labelString:cycle mode",
    "*bit1Base.labelString:render mode",
    "*bit2Base.labelString:color combine mode",
    "*bit3Base.labelString:primitive color",
    "*bit4Base.labelString:environment color",
    "*outmaskLabel.labelString:DO NOT OUTPUT",
    "*maskhBase.labelString:Header",
    "*tlutBase.labelString:TLUT",
    "*bitmapBase.labelString:bitmap",
    "*deformBase.labelString:Deform",
    "*shapeBase.labelString:Shape",
    "*vtxlstBase.labelString:Vtx list",
    "*gfxlstBase.labelString:Gfx list",
    "*objsBase.labelString:Objects",
    "*animsBase.labelString:Anim.",
    "*sceneBase.labelString:Scene",
    "*vtxsegLabel.labelString:Vtx (default 5)",
    "*imgsegLabel.labelString:Image (default 6)",
    "*tlutsegLabel.labelString:TLUT (default 7)",
};

std::vector<const char*> with_shared_lines(std::vector<const char*> lines) {
  lines.insert(lines.end(), std::begin(kSharedLines), std::end(kSharedLines));
  return lines;
}

std::string_view text_of(OptionField field) { return field(ngops).data(); }

void add_item(Item& group, const OptionRow& row) {
  if (row.flag || !row.field) {
    Item& toggle = group.add(ItemKind::toggle, row.name, {.force_label_format = row.flag != nullptr});
    if (row.flag) toggle.set_value({.on = text_of(row.field).find(row.flag) != std::string_view::npos});
  } else {
    const std::size_t capacity = row.field(ngops).size() - 1;  // less the terminating zero
    Item& item = group.add(ItemKind::text, row.name, {.columns = row.columns, .capacity = capacity});
    item.set_value({.text = std::string(text_of(row.field))});
    item.set_activated(!row.only_shown);
  }
}

void add_group(Item& top, const OptionGroup& group) {
  Item& item = top.add(ItemKind::group, group.name, group.look);
  for (const OptionRow& row : group.rows) add_item(item, row);
  if (!group.mask) return;
  const auto mask = std::strtoul(group.mask(ngops).data(), nullptr, 10);
  for (std::size_t bit = 0; bit < item.size(); ++bit)
    item.item(bit).set_value({.on = (mask >> bit & 1) != 0});
}

void store_option(const OptionRow& row, const Item& item) {
  if (row.only_shown) return;
  const bool traced = item.name() == "output";
  if (traced) std::printf("ngops(before) = %s\n", row.field(ngops).data());
  if (row.flag)
    set_option(row.field(ngops), item.on() ? row.flag : "");
  else
    set_option(row.field(ngops), first_line(item.text()));
  if (traced) std::printf("ngops(after) = %s\n", row.field(ngops).data());
}

void store_group(const OptionGroup& group, const Item& item) {
  unsigned mask = 0;
  for (std::size_t i = 0; i < group.rows.size(); ++i) {
    const Item* const option = item.find(group.rows[i].name);
    if (!option) continue;
    if (group.mask)
      mask |= unsigned{option->on()} << i;
    else
      store_option(group.rows[i], *option);
  }
  if (group.mask) set_option(group.mask(ngops), std::to_string(mask));
}

}  // namespace

std::unique_ptr<Item> OptionsDialog::items() const {
  auto top = std::make_unique<Item>(ItemKind::list, "prefList");
  top->add(ItemKind::label, "title");
  for (const OptionGroup& group : groups) {
    top->add(ItemKind::separator, "sep" + std::to_string(top->size() / 2 + 1));
    add_group(*top, group);
  }
  return top;
}

std::vector<std::string> OptionsDialog::apply(const Item& top) const {
  for (const OptionGroup& group : groups) {
    const Item* const item = top.find(group.name);
    if (item && item->changed()) store_group(group, *item);
  }
  std::printf("Get Values from Dialog.\n");
  echo_convert_options();
  std::vector<std::string> lost;
  for (const std::string_view option : write_and_read_back().lost) {
    const char* const label = label_line(lines, option, "Label");
    lost.emplace_back(label ? label : option);
    std::fprintf(stderr, "The options file can't give this back: %s\n", lost.back().c_str());
  }
  return lost;
}

const OptionsDialog& quil2gfx_dialog() {
  static const OptionGroup kGroups[] = {
      {"options", {.no_label = true}, kGfxOptions},
      {"regmask", {.horizontal = true}, kRegMask, option_field<&NgOps::regmask>},
      {"outmask", {.horizontal = true}, kOutMask, option_field<&NgOps::outmask>},
      {"segment", {.horizontal = true}, kGfxSegments},
  };
  static const OptionsDialog kDialog{.name = "quil2gfxDialog",
                                     .groups = kGroups,
                                     .lines = with_shared_lines({
                                         "*titleBase.labelString:Convert Options",
                                         "*outputLabel.labelString:Output File Name (*.c)",
                                         "*segmentLabel.labelString: Segment Number of Gfx Data",
                                     })};
  return kDialog;
}

const OptionsDialog& quil2zex_dialog() {
  static const OptionGroup kGroups[] = {
      {"options", {.no_label = true}, kZexOptions},
      {"segment", {.horizontal = true}, kZexSegments},
  };
  static const OptionsDialog kDialog{.name = "quil2zexDialog",
                                     .groups = kGroups,
                                     .lines = with_shared_lines({
                                         "*titleBase.labelString:Convert Options for quil2zex",
                                         "*outputLabel.labelString:Output ZEX File Name",
                                         "*fogoffLabel.labelString:Fog Off",
                                         "*envsegLabel.labelString:Envelope/Cluster (default 5)",
                                         "*segmentLabel.labelString: Segment Number Used",
                                     })};
  return kDialog;
}

}  // namespace values
