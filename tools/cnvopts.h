/// @file
/// The conversion options: the record, the per-user file that keeps them, and the converter's command line.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Every option of the external converters, as zero-terminated text; an empty field is an option not given.
/// A flag holds its own name ("-nocomdef") when set. The sizes are the limits of the format: longer texts
/// are cut (see `set_option`).
struct NgOps {
  char output_dir[256];  ///< directory that receives converter output
  char header[32];       ///< name of the header file to generate
  char output[32];       ///< name of the C source to generate
  char label[32];        ///< prefix of the generated symbols
  char scale[32];
  char quilinfo[100];  ///< information file, inside the output directory
  char nocomdef[16];   ///< flag
  char vtxshare[32];
  char vtxcache[32];
  char strictflat[16];  ///< flag
  char noalignpad[16];  ///< flag
  char outobj[256];
  char nogeomclr[16];  ///< flag
  char regmask[32];    ///< mask of display-processor registers, decimal
  char outmask[32];    ///< kinds of data left out, decimal
  char preview[32];
  char vtxseg[32];
  char imgseg[32];
  char tlutseg[32];
  char strictcidx[32];  ///< flag
  char vtxload[32];
  char noreduct[32];       ///< flag
  char script_path[256];   ///< viewer script
  char preview_path[256];  ///< viewer file
  char fogoff[16];         ///< flag
  char envseg[32];
};

/// A field of the record, whatever its size.
using OptionField = std::span<char> (*)(NgOps& options);
template <auto Member>
std::span<char> option_field(NgOps& options) {
  return options.*Member;
}

/// The options of this process: zero at start, filled once by `read_convert_options`.
[[gnu::visibility("default")]] extern NgOps ngops;  // tests look at it in the built program

/// Stores a text in a field of `NgOps`, cut to the field's size less its terminating zero.
void set_option(std::span<char> field, std::string_view text);

/// Where the user's name and home directory come from: the system's `getlogin` and `getpwnam`.
/// Tests put their own functions here, so that they never meet the options of the person who runs them.
struct UserLookup {
  const char* (*login_name)();                ///< nullptr: there is none
  const char* (*home_of)(const char* login);  ///< nullptr: no such user
};
extern UserLookup user_lookup;

/// The directory that holds the options file: the login user's home directory, or $HOME when the login name
/// ("Can't get login name.\n" on standard error) or its home directory is not known.
std::string options_home();

/// The path of the options file in that directory: ".quilcnvops".
std::string options_path_in(std::string_view home);

/// The options file's path, in `options_home`. Writes the home directory and the path to standard output, a
/// line each.
std::string getcnvoptpath();

/// `dir` and `name` joined, with "/" between them when `dir` is not empty and does not end with one.
std::string set_abs_path(std::string_view dir, std::string_view name);

/// The directory part of a path, its last "/" included and at most 255 characters of it; "./" without one.
std::string getdir(std::string_view path);

/// Fills `ngops` from an options file; the script and preview file are empty when it doesn't hold them.
/// @returns whether it could be read; nothing but a regular file can.
bool read_options_file(const std::string& path);

/// Fills `ngops` from the user's options file and echoes it to standard output. The program can't run without
/// the file: when it can't be read, a message goes to standard error and the process ends with status -1.
void read_convert_options();

/// Echoes `ngops` to standard output, then writes it to the options file. The file that is there stays
/// whole until the new one is complete.
/// @returns 1, or 0 (with a line on standard error) when the file could not be written.
int write_convert_options();

/// What became of the options in the file.
struct OptionsWritten {
  bool written = false;
  std::vector<std::string_view> lost = {};  ///< names (see NamedOption) of those that it can't give back
};
/// The same; also reads what it wrote. The format can't hold, for instance, names with blanks, or an empty
/// output name.
OptionsWritten write_and_read_back();

/// Writes every field of `ngops` to standard output, a line each, in the order of the record.
void echo_convert_options();

/// An option by its name, which is its key in the file without the dash ("vtxshare"), or "output_dir",
/// "output", "script_path" or "preview_path".
struct NamedOption {
  std::string_view name;
  std::string_view text;
};

/// All of `ngops`, in the order of the record. The texts are those of the record itself.
std::vector<NamedOption> named_options();

/// Makes `out` the start of the display-list converter's command line, from the options in `ngops`.
/// The parenthesis that it opens is the caller's to close. Returns `out`.
std::string& cmd_quil2gfx(std::string& out);

/// The value on a line of the options file: what follows the first blank, without white space at the end.
/// Empty when the line holds no "-" or no blank.
std::string getopt_string(std::string_view line);

/// The flag on a line of the options file: from the first "-" to the end, without white space there.
std::string getopt_flag(std::string_view line);
