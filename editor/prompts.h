/// @file
/// What the commands of the editor tell and ask the user, so that a command needs no window.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Where the choice of a file starts.
struct FileStart {
  std::string directory = {};      ///< empty: where the last choice ended
  std::string selection = {};      ///< a path that is filled in; a directory is where it starts
  const char* pattern = "*.quil";  ///< the files that are shown
};

/// Where a picture of the graph is to go.
struct PictureChoice {
  std::string path;
  bool view_only = false;  ///< what the window shows, instead of the whole graph
};

/// The converters that have options to set.
enum class Converter { quil2gfx, quil2zex };

/// Thrown by Prompts::progress().
struct StoppedByUser {};

/// The questions, warnings and waits of the commands. Each waits until the user has answered.
class Prompts {
 public:
  virtual ~Prompts() = default;

  /// Tells about a failure.
  virtual void warn(const char* text) = 0;
  /// Says something on the status line, where it stays until the next thing is said. Empty: what was said
  /// goes.
  virtual void tell(const std::string& text) = 0;
  /// @returns whether the answer is OK.
  virtual bool confirm(const char* question, const char* title = "Question") = 0;
  /// Lets the user choose one of several rows. @returns its place, from 0; nothing when the user cancels.
  virtual std::optional<std::size_t> chooseRow(const char* title, const std::vector<std::string>& rows) = 0;
  /// @returns an absolute path, of a file that need not exist; nothing when the user cancels.
  virtual std::optional<std::string> chooseFile(const char* title, const FileStart& start = {}) = 0;
  /// The same for a picture. @param selection  a path that is filled in; empty: none.
  virtual std::optional<PictureChoice> choosePicture(const char* title, const std::string& selection) = 0;
  /// Lets the user set the options in `ngops`. @returns whether the converter is to run with them.
  virtual bool setOptions(Converter converter, const char* title) = 0;

  /// Shows the program as busy until `notBusy` has been called as often; the message may be null. Everything
  /// is painted when it returns: the caller may block at once.
  virtual void busy(const char* message) = 0;
  virtual void notBusy() = 0;
  /// Shows how far a long wait has come. Throws StoppedByUser when the user wants to stop it.
  /// @param share  what is done of all, 0 to 1.
  virtual void progress(const char* message, double share) = 0;
};

/// Shows the program as busy while it lives.
class Busy {
 public:
  explicit Busy(Prompts& prompts, const char* message = nullptr) : prompts_(prompts) {
    prompts_.busy(message);
  }
  ~Busy() { prompts_.notBusy(); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Prompts& prompts_;
};
