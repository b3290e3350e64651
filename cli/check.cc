/// @file
/// `quilscene check`: what is wrong or odd in files, whether or not their reader refuses them.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "checks/check.h"
#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/json.h"
#include "cli/lines.h"
#include "cli/printable.h"

namespace {

using checks::Finding;
using checks::Level;

struct CheckRequest {
  FileSet files;
  bool json = false, quiet = false;
  Level fail_on = Level::error;
  std::map<std::string_view, std::optional<Level>> levels;  ///< by code; nothing: ignored
  std::size_t most = std::numeric_limits<std::size_t>::max();
};

std::string joined_levels() {
  std::string text;
  for (const auto level : checks::kLevelNames) {
    if (!text.empty()) text += '|';
    text += level;
  }
  return text;
}
std::string_view name_of(Level level) { return checks::kLevelNames[static_cast<std::size_t>(level)]; }
Level level_named(const std::string& name) {
  if (const auto level = checks::find_level(name)) return *level;
  throw WrongUse("no such severity: " + name + " (" + joined_levels() + ")");
}
std::string_view code_named(const std::string& name) {
  if (const auto* const code = checks::find_code(name)) return code->name;
  throw WrongUse("no such code: " + name);
}

void declare(CLI::App& line, CheckRequest& request) {
  take_files(line, request.files);
  take_json(line, request.json);
  line.add_option_function<std::string>(
          "--fail-on", [&](const std::string& name) { request.fail_on = level_named(name); },
          "Exit with 1 from this severity on (default: error)")
      ->type_name(joined_levels());
  const auto repeated = [](CLI::Option* option) {
    option->allow_extra_args(false)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    return option;
  };
  repeated(line.add_option_function<std::vector<std::string>>(
               "--ignore",
               [&](const std::vector<std::string>& codes) {
                 for (const std::string& code : codes) request.levels[code_named(code)].reset();
               },
               "Say nothing of it; may come again"))
      ->type_name("CODE");
  repeated(line.add_option_function<std::vector<std::string>>(
               "--severity",
               [&](const std::vector<std::string>& words) {
                 for (const std::string& word : words) {
                   const std::size_t equals = std::min(word.find('='), word.size());
                   if (equals == word.size()) throw WrongUse("a severity is set by CODE=LEVEL, not " + word);
                   request.levels[code_named(word.substr(0, equals))] = level_named(word.substr(equals + 1));
                 }
               },
               "Give it another severity; may come again"))
      ->type_name("CODE=LEVEL");
  line.add_option("--max", request.most, "Print so many findings of each file, and count the others")
      ->check(no_whole_number)
      ->type_name("N");
  line.add_flag("--quiet", request.quiet, "Print nothing: the exit status tells");
  std::string codes = "\nCodes and their severities:\n";
  for (const checks::Code* code : checks::codes())
    codes += "  " + std::string{code->name} + " " + std::string{name_of(code->level)} + "\n";
  line.footer(codes);
}

/// How many findings there are of each level.
using Counts = std::array<std::size_t, std::size(checks::kLevelNames)>;

/// The findings in one file, as far as they are wanted.
class FileReport {
 public:
  FileReport(const CheckRequest& request, const std::string& file) : request_(request), file_(file) {}

  void add(const Finding& finding) {
    const auto set = request_.levels.find(finding.code->name);
    if (set != request_.levels.end() && !set->second) return;
    const Level level = set == request_.levels.end() ? finding.code->level : *set->second;
    ++counts_[static_cast<std::size_t>(level)];
    if (request_.quiet) return;
    if (shown_ == request_.most) {
      ++omitted_;
      return;
    }
    ++shown_;
    if (request_.json) {
      messages_.push_back(object_of(finding, level));
    } else {
      print(finding);
    }
  }

  void finish(checks::Reading reading) {
    if (request_.quiet) return;
    if (request_.json) {
      Json result = json_result("check", file_);
      result["reading"] = reading == checks::Reading::whole     ? "whole"
                          : reading == checks::Reading::damaged ? "damaged"
                                                                : "unreadable";
      for (std::size_t level = 0; level < counts_.size(); ++level)
        result["counts"][std::string{checks::kLevelNames[level]}] = counts_[level];
      result["messages"] = std::move(messages_);
      if (omitted_ != 0) result["omitted"] = omitted_;
      lines_.add(result.dump());
    } else if (omitted_ != 0) {
      lines_.add(printable(file_) + ": and " + std::to_string(omitted_) + " more");
    }
    lines_.flush();
  }

  const Counts& counts() const { return counts_; }
  bool fails() const {
    return std::ranges::any_of(counts_.begin(), counts_.begin() + static_cast<int>(request_.fail_on) + 1,
                               [](std::size_t count) { return count != 0; });
  }

 private:
  void print(const Finding& finding) {
    std::istringstream texts{finding.text};
    for (std::string text; std::getline(texts, text);)
      if (!text.empty())
        lines_.add(printable(file_) + ": " + std::string{finding.code->sort} + ": " + printable(text));
  }

  static Json object_of(const Finding& finding, Level level) {
    Json object{{"code", finding.code->name}, {"severity", name_of(level)}};
    if (!finding.path.empty()) object["path"] = finding.path;
    if (!finding.list.empty()) object["list"] = finding.list;
    if (finding.offset) object["offset"] = *finding.offset;
    object["text"] = escaped(finding.text);
    return object;
  }

  const CheckRequest& request_;
  const std::string& file_;
  Counts counts_{};
  std::size_t shown_ = 0, omitted_ = 0;
  Json messages_ = Json::array();
  Lines lines_;
};

/// Checks a file. The note is its counts.
Done check_one(const CheckRequest& request, const std::string& file) {
  FileReport report{request, file};
  checks::Reading reading = checks::Reading::unreadable;
  try {
    reading = checks::check_file(path_of(file), [&](const Finding& finding) { report.add(finding); });
  } catch (const std::runtime_error& error) {
    report.add({&checks::code_of(qi::MessageCode::no_input), {}, {}, {}, error.what()});
  }
  report.finish(reading);
  std::string note;
  for (const std::size_t count : report.counts()) note += std::to_string(count) + ' ';
  if (reading == checks::Reading::unreadable) return {Outcome::unreadable, note};
  return {report.fails() ? Outcome::failed : Outcome::well, note};
}

std::string counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// A list that can't be read is like a file that can't.
std::vector<std::string> readable_files(const FileSet& set) {
  try {
    return files_of(set);
  } catch (const WrongUse&) {
    throw;
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "quilscene: %s\n", printable(error.what()).c_str());
    return {};
  }
}

Outcome run(const CheckRequest& request) {
  const std::vector<std::string> files = readable_files(request.files);
  if (files.empty()) return Outcome::unreadable;
  Counts all{};
  const Outcome outcome = for_each_file(
      files, request.files.jobs, [&](const std::string& file) { return check_one(request, file); },
      [&](const Done& done) {
        std::istringstream counts{done.note};
        for (std::size_t& sum : all) {
          std::size_t count = 0;
          counts >> count;
          sum += count;
        }
      });
  if (request.quiet || request.json) return outcome;
  Lines lines;
  lines.add(counted(files.size(), "file", "files") + ": " + counted(all[0], "error", "errors") + ", " +
            counted(all[1], "warning", "warnings") + ", " + counted(all[2], "note", "notes") + ", " +
            counted(all[3], "hint", "hints"));
  lines.flush();
  return outcome;
}

}  // namespace

Work check(CLI::App& line) { return work<CheckRequest>(line, declare, run); }
