#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// A file that a run of the tool names on its command line.
struct RunFile {
  /// Where an option points to.
  enum class Place {
    File,
    Pipe,
    Missing,  ///< there is no such file, and none can be created
    Itself    ///< the consolidated file
  };

  char option;  ///< short name of the option
  Place place;
  std::string text;  ///< what a file or a pipe holds before the run
  std::string path;  ///< to be set when the file is put in place

  bool isDump() const { return option == 'u' || option == 'j'; }

  /// What a reader finds there while the tool reads its inputs: by then the consolidated file is
  /// empty.
  std::string content() const { return place == Place::Itself ? "" : text; }
};

/// One run of the tool, taken from the bytes of a fuzz input: first the consolidated file as it is
/// before the run, then parts, each of which is a byte F5, a letter and a text.
///
///     d h k s x l r   a file with that text for the option of that name
///     D H K S X L R   the same through a pipe
///     u j             a dump to a file that holds the text before
///     p               the project, up to the first zero byte
///     a c v o         the switches --add, --create, --version and --help
///     n               the consolidated file lies in a folder that does not exist
///
/// The text "?" stands for a missing file, "=" for the consolidated file itself. Of an option that
/// is not repeatable the last part counts; letters without a meaning and files beyond the eighth
/// are ignored.
class RunCommand {
 public:
  static constexpr std::size_t mostFiles = 8;

  explicit RunCommand(std::string_view input) {
    std::size_t end = std::min(input.find(mark), input.size());
    stored = input.substr(0, end);
    while (end < input.size()) {
      const std::string_view rest = input.substr(end + 1);
      const std::string_view part = rest.substr(0, rest.find(mark));
      if (!part.empty()) take(part.front(), part.substr(1));
      end += 1 + part.size();
    }
  }

  std::string stored;
  std::string path;  ///< of the consolidated file, to be set when that is put in place
  std::string project;
  std::vector<RunFile> files;

  bool has(char switchLetter) const { return switches_.find(switchLetter) != std::string::npos; }

  /// The file of an option that is not repeatable; null when the option is not given.
  const RunFile* fileOf(char option) const {
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const RunFile& file) { return file.option == option; });
    return found == files.end() ? nullptr : &*found;
  }

  /// The file that a section is dumped to, if the run is one that dumps.
  const RunFile* dump() const { return fileOf('u') != nullptr ? fileOf('u') : fileOf('j'); }

  /// Whether the command line asks for more than a text on standard output.
  bool opensTheFile() const { return !has('o') && !has('v') && !asksForBoth() && !files.empty(); }

  /// The command line without the name of the tool.
  std::vector<std::string> arguments() const {
    std::vector<std::string> words{"-f", path};
    if (!project.empty()) words.push_back("--project=" + project);
    for (const RunFile& file : files) words.insert(words.end(), {{'-', file.option}, file.path});
    for (const char letter : std::string_view("acv")) {
      if (has(letter)) words.push_back({'-', letter});
    }
    if (has('o')) words.emplace_back("--help");
    return words;
  }

 private:
  static constexpr char mark = '\xF5';

  bool asksForBoth() const { return has('a') && has('c'); }

  void take(char letter, std::string_view text) {
    constexpr std::string_view pipes = "DHKSXLR";
    if (const std::size_t option = pipes.find(letter); option != std::string_view::npos) {
      takeFile({"dhksxlr"[option], RunFile::Place::Pipe, std::string(text), ""});
    } else if (std::string_view("dhksxlruj").find(letter) != std::string_view::npos) {
      takeFile(fileAt(letter, text));
    } else if (letter == 'p') {
      project = text.substr(0, text.find('\0'));
    } else if (std::string_view("acvon").find(letter) != std::string_view::npos) {
      if (!has(letter)) switches_ += letter;
    }
  }

  static RunFile fileAt(char option, std::string_view text) {
    if (text == "?") return {option, RunFile::Place::Missing, "", ""};
    if (text == "=") return {option, RunFile::Place::Itself, "", ""};
    return {option, RunFile::Place::File, std::string(text), ""};
  }

  void takeFile(RunFile file) {
    if (file.option == 'd' || file.isDump()) {
      std::erase_if(files, [&](const RunFile& other) { return other.option == file.option; });
    }
    if (files.size() < mostFiles) files.push_back(std::move(file));
  }

  std::string switches_;
};

}  // namespace consolidator
