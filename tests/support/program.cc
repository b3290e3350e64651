/// @file
/// Starting a program with the probe in it, and asking that.
#include "tests/support/program.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

#include "tests/support/preload.h"
#include "tests/support/probe_words.h"

namespace support {

namespace fs = std::filesystem;

bool WidgetInfo::isAt(std::string_view where) const {
  std::string_view names = path;
  const auto takeLast = [](std::string_view& rest) {
    const std::size_t slash = rest.rfind('/');
    const std::string_view last = rest.substr(slash == rest.npos ? 0 : slash + 1);
    rest = rest.substr(0, slash == rest.npos ? 0 : slash);
    return last;
  };
  if (takeLast(names) != takeLast(where)) return false;
  while (!where.empty()) {
    const std::string_view wanted = takeLast(where);
    do {
      if (names.empty()) return false;
    } while (takeLast(names) != wanted);
  }
  return true;
}

namespace {

constexpr const char* kProbe = "tests/support/probe.so";

/// The probe, and faults if there are to be any.
std::string preloads(const fs::path& directory, const Program::Start& start) {
  if (start.environment.contains("QUIL_FAULTS"))
    return preload_variable(directory, {kProbe, "tests/support/faults.so"});
  return preload_variable(directory, {kProbe});
}

}  // namespace

Program::Program(const XServer& server, const Start& start)
    : directory_(start.directory.empty() ? scratch_.path() / "work" : fs::absolute(start.directory)),
      driver_(server.display()) {
  fs::create_directories(directory_);
  fs::create_directories(home());
  for (const auto& [name, contents] : start.home_files) write_file(home() / name, contents);

  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    throw std::runtime_error("no socket pair");
  socket_ = Descriptor(ends[0]);
  const Descriptor theirs(ends[1]);

  Process::Start process;
  process.command = start.arguments;
  process.command.insert(process.command.begin(), start.executable.string());
  process.name = start.name;
  process.directory = directory_;
  process.environment = start.environment;
  process.environment.merge(std::map<std::string, std::string>{
      {"DISPLAY", server.display()},
      {"HOME", home().string()},
      {"LC_ALL", "C.UTF-8"},
      {"XDG_STATE_HOME", ""},
      {"XENVIRONMENT", ""},
      {"XAPPLRESDIR", ""},
      {"LD_PRELOAD", preloads(scratch_.path(), start)},
      {"QUIL_PROBE_FD", std::to_string(theirs.get())},
  });
  process.output = scratch_.path() / "output";
  process.errors = scratch_.path() / "errors";
  process.kept_fd = theirs.get();
  process_.emplace(process);
}

std::string Program::output() {
  if (process_->running()) settle();
  return read_file(scratch_.path() / "output");
}

std::string Program::errors() {
  if (process_->running()) settle();
  return read_file(scratch_.path() / "errors");
}

void Program::settle() { ask({"settle"}); }

std::vector<std::vector<std::string>> Program::ask(const std::vector<std::string>& question) {
  driver_.awaitWindowManager();
  const std::string line = probe::joined(question) + "\n";
  std::string reply;
  bool open =
      send(socket_.get(), line.data(), line.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(line.size());
  std::vector<std::vector<std::string>> answer;
  while (open) {
    std::size_t read_to = 0;
    for (std::size_t end; (end = reply.find('\n', read_to)) != reply.npos; read_to = end + 1) {
      answer.push_back(probe::split(std::string_view(reply).substr(read_to, end - read_to)));
    }
    reply.erase(0, read_to);
    if (!answer.empty() && answer.back()[0] == "end") {
      answer.pop_back();
      return answer;
    }
    if (!answer.empty() && answer.back()[0] == "error") throw std::runtime_error(answer.back().at(1));
    pollfd ready{socket_.get(), POLLIN, 0};
    if (poll(&ready, 1, static_cast<int>(kPatience.count())) <= 0) {
      throw std::runtime_error("the program does not answer; its errors: " +
                               read_file(scratch_.path() / "errors"));
    }
    char buffer[65536];
    const ssize_t count = read(socket_.get(), buffer, sizeof buffer);
    open = count > 0;
    if (open) reply.append(buffer, static_cast<std::size_t>(count));
  }
  const std::optional<int> status = process_->waitForExit();
  throw std::runtime_error("the program has ended with " +
                           (status ? std::to_string(*status) : "a closed socket") +
                           "; its errors: " + read_file(scratch_.path() / "errors"));
}

std::vector<WidgetInfo> Program::widgets() { return widgetsNamed(""); }

std::vector<WidgetInfo> Program::widgetsNamed(std::string_view name) {
  std::vector<WidgetInfo> result;
  for (const std::vector<std::string>& line : ask({"tree", std::string(name)})) {
    const auto number = [&](std::size_t i) { return std::stoi(line.at(i)); };
    const auto flag = [&](char c) { return line.at(8).find(c) != std::string::npos; };
    WidgetInfo widget;
    widget.id = line.at(1);
    widget.path = line.at(2);
    widget.class_name = line.at(3);
    widget.box = {number(4), number(5), number(6), number(7)};
    widget.managed = flag('m');
    widget.viewable = flag('v');
    widget.sensitive = flag('s');
    widget.set = flag('t');
    widget.active = flag('a');
    widget.focused = flag('f');
    widget.label = line.at(9);
    widget.text = line.at(10);
    result.push_back(std::move(widget));
  }
  return result;
}

namespace {

std::optional<WidgetInfo> firstOf(std::vector<WidgetInfo> widgets, const Program::Condition& condition) {
  const auto found = std::ranges::find_if(widgets, condition);
  return found != widgets.end() ? std::optional(std::move(*found)) : std::nullopt;
}

}  // namespace

std::optional<WidgetInfo> Program::find(const Condition& condition) { return firstOf(widgets(), condition); }

std::optional<WidgetInfo> Program::find(std::string_view where, const Condition& condition) {
  return firstOf(widgetsNamed(where.substr(where.rfind('/') + 1)),
                 [&](const WidgetInfo& w) { return w.isAt(where) && condition(w); });
}

WidgetInfo Program::awaitBy(std::string_view what, const std::function<std::optional<WidgetInfo>()>& look) {
  std::optional<WidgetInfo> found;
  if (waitFor([&] { return (found = look()).has_value(); })) return *std::move(found);
  std::string message = "waited in vain for " + std::string(what) + "; there is";
  for (const WidgetInfo& widget : widgets()) {
    if (widget.viewable)
      message += "\n  " + widget.path + " (" + widget.class_name + ") " + widget.label + widget.text;
  }
  throw std::runtime_error(message);
}

WidgetInfo Program::await(std::string_view what, const Condition& condition) {
  return awaitBy(what, [&] { return find(condition); });
}

WidgetInfo Program::await(std::string_view where) {
  return awaitAt(where, [](const WidgetInfo& w) { return w.viewable && w.sensitive; });
}

WidgetInfo Program::awaitAt(std::string_view where, const Condition& condition) {
  return awaitBy(where, [&] { return find(where, condition); });
}

void Program::click(std::string_view where) { driver_.click(await(where).box.centre()); }

void Program::fillIn(std::string_view where, const std::string& text) {
  // The window manager may still be moving a window that has just come up: then the click goes astray.
  const auto has_focus = [](const WidgetInfo& w) { return w.active && w.focused; };
  waitFor([&] {
    click(where);
    settle();
    return find(where, has_focus).has_value();
  });
  awaitAt(where, has_focus);
  driver_.key("slash", {"Control_L"});  // selects what is there
  driver_.type(text);
  awaitAt(where, [&](const WidgetInfo& w) { return w.text == text; });
}

void Program::chooseMenu(const std::vector<std::string>& labels) {
  openMenu(labels);
  driver_.release();
}

WidgetInfo Program::openMenu(const std::vector<std::string>& labels) {
  const auto isItem = [](const WidgetInfo& widget, const std::string& label, bool in_pane) {
    return widget.viewable && widget.label == label &&
           widget.class_name.find("Button") != std::string::npos &&
           in_pane ==
               (widget.path.find("/popup_") != std::string::npos);  // what the toolkit calls a pane's shell
  };
  WidgetInfo item =
      await("the menu " + labels.at(0), [&](const WidgetInfo& w) { return isItem(w, labels[0], false); });
  driver_.moveTo(item.box.centre());
  driver_.press();
  for (std::size_t i = 1; i < labels.size(); ++i) {
    const Point parent = item.box.centre();
    int nudge = 0;
    item = await("the menu item " + labels[i], [&](const WidgetInfo& w) {
      if (isItem(w, labels[i], true)) return true;
      // A submenu comes up by itself while the pointer moves about its item.
      if (w.id == item.id) driver_.moveTo({parent.x + (nudge ^= 1), parent.y});
      return false;
    });
    driver_.moveTo(item.box.centre());
  }
  return item;
}

std::string Program::resource(const WidgetInfo& widget, const std::string& name) {
  return ask({"resource", widget.id, name}).at(0).at(1);
}

std::string Program::symbol(const std::string& name) { return ask({"symbol", name}).at(0).at(1); }

}  // namespace support
