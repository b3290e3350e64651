/// @file
/// The table of the commands.
#include "cli/commands.h"

namespace {

constexpr Command kCommands[] = {
    {"info", "version, header, lists with their record counts and bytes, names", info},
    {"check", "one line for everything that is wrong or odd in each file", check},
    {"graph", "nodes and arcs in their order, or as a Graphviz graph", graph},
    {"show", "the items of the nodes' dialogs and their values", show},
    {"tree", "the hierarchy with its names, as an outline", tree},
    {"dump", "the words of a list's records, in rows", dump},
    {"diff", "what differs between two scenes, record by record", diff},
    {"render", "the graph's picture, as SVG, PDF, PNG or PostScript", render},
    {"texture", "the images of textures, as PNG", texture},
    {"resave", "open and save", resave},
    {"prune", "materials, textures, images, palettes, animations that nothing needs go", prune},
    {"dedup", "such records that are equal become one", dedup},
    {"edit", "run a script of edits, then save", edit},
    {"options", "the converters' options and what they add to command lines", options},
    {"recover", "the copies of unsaved work; take one out, forget one", recover},
    {"completion", "what a shell needs to complete command lines", completion},
    {"help", "what there is, or what a command takes", help},
};

}  // namespace

std::span<const Command> commands() { return kCommands; }
