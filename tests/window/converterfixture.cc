/// @file
/// The stand-ins and what they noted.
#include "tests/window/converterfixture.h"

#include <sys/stat.h>

#include <filesystem>
#include <sstream>
#include <utility>

#include "tests/support/wait.h"
#include "tests/window/screen.h"

namespace fs = std::filesystem;

namespace {

/// "ROOT" stands for the test's directory. A command that the editor waits for descends from the editor; one
/// in the background has been left by its shell.
constexpr char kStandIn[] = R"sh(#!/bin/sh
root='ROOT'
name=$(basename "$0")
here=$(pwd -P)
call="${here#$root/}: $name${*:+ }$*"

if [ -e "$root/hold" ] && [ "$call" = "$(cat "$root/hold")" ]; then
  rm "$root/hold"
  : >"$root/held"
  read -r word <"$root/release"
fi

scratch=
for file in kavoprev/quilpv zexview/model.quil; do
  [ -f "$root/$file" ] || continue
  scratch="$scratch ${file#*/}"
  cmp -s "$root/$file" "$root/expected" || scratch="$scratch?"
done

awaited=' &'
process=$$
while [ "$process" -gt 1 ]; do
  [ "$process" != "$(cat "$root/editor")" ] || awaited=
  read -r id command state process rest <"/proc/$process/stat" || break
done

echo "$call${scratch:+ |}$scratch$awaited" >>"$root/noted"
[ ! -e "$root/does-$name" ] || . "$root/does-$name"
)sh";

}  // namespace

ConverterTest::ConverterTest(std::string dialog)
    : EditorTest(24, {.executable = {}, .directory = "scenes"}), dialog_(std::move(dialog)) {
  for (const char* directory : {"kavoprev/quickprev", "zexview"}) fs::create_directories(path(directory));
  write_file(path("editor"), std::to_string(editor_.process().id()) + "\n");
  write_file(path("noted"), "");
  if (mkfifo(path("release").c_str(), 0600) != 0) throw std::runtime_error("no fifo");
  std::string text = kStandIn;
  text.replace(text.find("ROOT"), 4, fs::canonical(files_.path()));
  for (const char* program : {"bin/pxsend", "bin/bxsend", "bin/killpxsend", "bin/killbxsend", "bin/make",
                              "kavoprev/quil2gfx", "zexview/quil2zex", "zexview/zex2bin", "zexview/prev"}) {
    write_file(path(program), text);
    fs::permissions(path(program), fs::perms::owner_all);
  }
  newOutput();
}

void ConverterTest::openScene(const std::string& name) {
  const std::string file = data(name);
  expectScene(read_file(file));
  editor_.open(file);
  title_ = name + ".quil - QUILeditor2";
  newOutput();
}

void ConverterTest::awaitHeld() const {
  if (!support::waitFor([&] { return fs::exists(path("held")); }))
    throw std::runtime_error("not called: " + read_file(path("hold")));
  fs::remove(path("held"));
}

void ConverterTest::release() const { std::ofstream(path("release")) << "go on\n"; }

ConverterTest::Lines ConverterTest::noted() const {
  Lines lines;
  std::istringstream text(read_file(path("noted")));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

ConverterTest::Lines ConverterTest::ran() {
  editor_.settle();
  const Lines all = noted();
  Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(told_), all.end());
  told_ = all.size();
  return fresh;
}

ConverterTest::Lines ConverterTest::ran(std::size_t count) {
  support::waitFor([&] { return noted().size() >= told_ + count; });
  return ran();
}

void ConverterTest::expectWarning(const std::string& text) {
  editor_.await("the warning " + text, [&](const support::WidgetInfo& w) {
    return w.isAt(support::Editor::kWarning) && w.managed && w.label == text;
  });
  EXPECT_FALSE(isBusy());
  editor_.click(std::string(support::Editor::kWarning) + "/OK");
  editor_.settle();
}

bool ConverterTest::isBusy() const { return inputIsKeptFrom(server_.display(), title_); }
