/// @file
/// The options file: lines of text, read leniently and written in a fixed order.
#include "tools/cnvopts.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "qilib/files.h"
#include "storage/replacefile.h"

NgOps ngops;

UserLookup user_lookup{
    .login_name = [] { return static_cast<const char*>(getlogin()); },
    .home_of = [](const char* login) -> const char* {
      const passwd* user = getpwnam(login);
      return user ? user->pw_dir : nullptr;
    },
};

namespace {

enum class Form {
  bare,         ///< a line of its own with no key: "TEXT"
  value,        ///< "KEY TEXT"
  output_file,  ///< likewise; the converter gets it as a file in the output directory
  flag,         ///< "KEY", or an empty line when clear
};

/// One option: its field, its key (or, where the file has none, its name), and where it stands in each of the
/// three orders (from 1; 0: nowhere).
struct Option {
  OptionField field;
  Form form;
  const char* key;
  int line;     ///< of the file
  int search;   ///< among the keys looked for in a line
  int command;  ///< on the command line of quil2gfx

  bool has_key() const { return form != Form::bare; }
};

/// In the order of the record, which is that of the echo. A line that holds two keys belongs to the one
/// that is searched first, so "-nogeomclr" before "-outobj" matters even though the file has them turned
/// round.
constexpr Option kOptions[] = {
    {option_field<&NgOps::output_dir>, Form::bare, "output_dir", 1, 0, 0},
    {option_field<&NgOps::header>, Form::value, "-header", 3, 1, 0},
    {option_field<&NgOps::output>, Form::bare, "output", 2, 0, 0},
    {option_field<&NgOps::label>, Form::value, "-label", 4, 2, 0},
    {option_field<&NgOps::scale>, Form::value, "-scale", 5, 3, 1},
    {option_field<&NgOps::quilinfo>, Form::output_file, "-quilinfo", 6, 4, 2},
    {option_field<&NgOps::nocomdef>, Form::flag, "-nocomdef", 7, 5, 7},
    {option_field<&NgOps::vtxshare>, Form::value, "-vtxshare", 8, 6, 3},
    {option_field<&NgOps::vtxcache>, Form::value, "-vtxcache", 9, 7, 4},
    {option_field<&NgOps::strictflat>, Form::flag, "-strictflat", 11, 9, 8},
    {option_field<&NgOps::noalignpad>, Form::flag, "-noalignpad", 13, 11, 9},
    {option_field<&NgOps::outobj>, Form::value, "-outobj", 14, 13, 11},
    {option_field<&NgOps::nogeomclr>, Form::flag, "-nogeomclr", 15, 12, 10},
    {option_field<&NgOps::regmask>, Form::value, "-regmask", 12, 10, 6},
    {option_field<&NgOps::outmask>, Form::value, "-outmask", 16, 14, 12},
    {option_field<&NgOps::preview>, Form::value, "-preview", 17, 15, 0},
    {option_field<&NgOps::vtxseg>, Form::value, "-vtxseg", 19, 17, 14},
    {option_field<&NgOps::imgseg>, Form::value, "-imgseg", 20, 18, 15},
    {option_field<&NgOps::tlutseg>, Form::value, "-tlutseg", 21, 19, 16},
    {option_field<&NgOps::strictcidx>, Form::flag, "-strictcidx", 18, 16, 13},
    {option_field<&NgOps::vtxload>, Form::value, "-vtxload", 10, 8, 5},
    {option_field<&NgOps::noreduct>, Form::flag, "-noreduct", 23, 21, 17},
    {option_field<&NgOps::script_path>, Form::bare, "script_path", 25, 0, 0},
    {option_field<&NgOps::preview_path>, Form::bare, "preview_path", 26, 0, 0},
    {option_field<&NgOps::fogoff>, Form::flag, "-fogoff", 24, 22, 0},
    {option_field<&NgOps::envseg>, Form::value, "-envseg", 22, 20, 0},
};

/// The rows that have a place in the given order, in that order.
template <int Option::*Order>
constexpr auto in_order() {
  constexpr auto placed = [](const Option& option) { return option.*Order > 0; };
  std::array<Option, static_cast<std::size_t>(std::ranges::count_if(kOptions, placed))> rows{};
  for (const Option& option : kOptions)
    if (placed(option)) rows.at(static_cast<std::size_t>(option.*Order - 1)) = option;
  return rows;
}
constexpr auto kFileLines = in_order<&Option::line>();
constexpr auto kSearched = in_order<&Option::search>();
constexpr auto kCommand = in_order<&Option::command>();

const char* text_of(const Option& option) { return option.field(ngops).data(); }

bool is_blank(char c) { return std::string_view{" \t\n\v\f\r"}.find(c) != std::string_view::npos; }

std::string_view without_end_blanks(std::string_view line) {
  while (!line.empty() && is_blank(line.back())) line.remove_suffix(1);
  return line;
}

/// The options file while it is read: lines of at most 99 characters and words that cross lines.
class OptionsReader {
 public:
  explicit OptionsReader(const std::string& path) : file_(qi::open_regular(path)) {}

  bool failed() const { return !file_ || std::ferror(file_.get()); }
  bool at_end() const { return failed() || std::feof(file_.get()); }

  /// The next line, or 99 characters of it; at the end of the file, the one before once more.
  const char* line() {
    read(line_);
    return line_.data();
  }
  void skip_rest_of_line() {
    Line rest{};
    read(rest);
  }

  /// The next word, wherever it starts; nothing at the end of the file. No field takes more than its first
  /// 255 characters, so no more are kept.
  std::optional<std::string> word() {
    int c = std::getc(file_.get());
    while (c != EOF && is_blank(static_cast<char>(c))) c = std::getc(file_.get());
    if (c == EOF) return std::nullopt;
    std::string word;
    for (; c != EOF && !is_blank(static_cast<char>(c)); c = std::getc(file_.get()))
      if (word.size() < sizeof(NgOps::output_dir)) word += static_cast<char>(c);
    if (c != EOF) std::ungetc(c, file_.get());
    return word;
  }

 private:
  using Line = std::array<char, 100>;
  bool read(Line& line) { return std::fgets(line.data(), static_cast<int>(line.size()), file_.get()); }

  qi::File file_;
  Line line_{};
};

void set_if_read(std::span<char> field, const std::optional<std::string>& word) {
  if (word) set_option(field, *word);
}

std::string first_word(std::string_view line) {
  return std::string{
      line.substr(0, static_cast<std::size_t>(std::ranges::find_if(line, is_blank) - line.begin()))};
}

void read_options(OptionsReader& file, NgOps& options) {
  set_if_read(options.output_dir, file.word());
  set_if_read(options.output, file.word());
  file.skip_rest_of_line();
  while (!file.at_end()) {
    const std::string_view line = file.line();
    const auto found = std::ranges::find_if(
        kSearched, [&](const Option& option) { return line.find(option.key) != std::string_view::npos; });
    if (found != kSearched.end()) {
      set_option(found->field(options), found->form == Form::flag ? getopt_flag(line) : getopt_string(line));
    } else if (line.starts_with('/')) {
      set_option(options.script_path, first_word(line));
      set_if_read(options.preview_path, file.word());
      file.skip_rest_of_line();
    }
  }
}

std::string_view name_of(const Option& option) { return option.has_key() ? option.key + 1 : option.key; }

/// The names of the options that a program which starts with this file would not have as they are now.
std::vector<std::string_view> lost_options(const std::string& path) {
  NgOps read{};
  OptionsReader file{path};
  if (!file.failed()) read_options(file, read);
  std::vector<std::string_view> lost;
  for (const Option& option : kOptions)
    if (std::string_view{option.field(read).data()} != text_of(option)) lost.push_back(name_of(option));
  return lost;
}

[[noreturn]] void stop_without_options(const std::string& path) {
  std::fprintf(stderr, "Can't read convert options. %s\n", path.c_str());
  std::exit(-1);
}

}  // namespace

void set_option(std::span<char> field, std::string_view text) {
  const std::size_t length = std::min(text.size(), field.size() - 1);
  std::ranges::fill(std::ranges::copy(text.substr(0, length), field.begin()).out, field.end(), '\0');
}

std::string options_home() {
  const char* login = user_lookup.login_name();
  if (!login) std::fprintf(stderr, "Can't get login name.\n");
  const char* home = login ? user_lookup.home_of(login) : nullptr;
  if (!home) home = std::getenv("HOME");
  return home ? home : "";
}

std::string options_path_in(std::string_view home) { return set_abs_path(home, ".quilcnvops"); }

std::string getcnvoptpath() {
  const std::string home = options_home();
  std::printf("%s\n", home.c_str());
  std::string path = options_path_in(home);
  std::printf("%s\n", path.c_str());
  return path;
}

std::string set_abs_path(std::string_view dir, std::string_view name) {
  std::string path{dir};
  if (!dir.empty() && !dir.ends_with('/')) path += '/';
  return path.append(name);
}

std::string getdir(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return "./";
  return std::string{path.substr(0, std::min<std::size_t>(slash + 1, 255))};
}

bool read_options_file(const std::string& path) {
  set_option(ngops.script_path, "");
  set_option(ngops.preview_path, "");
  OptionsReader file{path};
  if (!file.failed()) read_options(file, ngops);
  return !file.failed();
}

void read_convert_options() {
  const std::string path = getcnvoptpath();
  if (!read_options_file(path)) stop_without_options(path);
  echo_convert_options();
}

int write_convert_options() { return write_and_read_back().written ? 1 : 0; }

OptionsWritten write_and_read_back() {
  echo_convert_options();
  const std::string path = getcnvoptpath();
  ReplacingFile file{path};
  if (file.stream()) {
    for (const Option& option : kFileLines) {
      const bool key_first = option.form == Form::value || option.form == Form::output_file;
      std::fprintf(file.stream(), "%s%s%s\n", key_first ? option.key : "", key_first ? " " : "",
                   text_of(option));
    }
    if (file.commit()) return {.written = true, .lost = lost_options(path)};
  }
  std::fprintf(stderr, "Can't write convert options. %s\n%s\n", path.c_str(), file.error().text().c_str());
  return {};
}

void echo_convert_options() {
  for (const Option& option : kOptions) std::printf("%s\n", text_of(option));
}

std::vector<NamedOption> named_options() {
  std::vector<NamedOption> named;
  for (const Option& option : kOptions) named.push_back({.name = name_of(option), .text = text_of(option)});
  return named;
}

std::string& cmd_quil2gfx(std::string& out) {
  out = "(cd ../kavoprev ; ./quil2gfx ";
  for (const Option& option : kCommand) {
    const std::string_view text = text_of(option);
    if (text.empty()) continue;
    out.append(" ").append(option.key).append(" ");
    if (option.form == Form::output_file) out += set_abs_path(ngops.output_dir, text);
    if (option.form == Form::value) out += text;
  }
  return out;
}

std::string getopt_string(std::string_view line) {
  line = without_end_blanks(line);
  const std::size_t blank = line.find(' ');
  if (line.find('-') == std::string_view::npos || blank == std::string_view::npos) return {};
  return std::string{line.substr(blank + 1)};
}

std::string getopt_flag(std::string_view line) {
  line = without_end_blanks(line);
  const std::size_t dash = line.find('-');
  return dash == std::string_view::npos ? std::string{} : std::string{line.substr(dash)};
}
