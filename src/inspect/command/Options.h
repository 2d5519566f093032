#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace consolidator::inspect {

/// An option or operand that was declared, to say more of it.
class DeclaredOption {
 public:
  /// Returns why a value is refused, or nothing.
  using Check = std::function<std::string(const std::string&)>;

  explicit DeclaredOption(CLI::Option& option) : option_(&option) {}

  DeclaredOption& required();

  /// What the help shows for the value.
  DeclaredOption& placeholder(const std::string& text);

  /// Each value has to be one of these.
  DeclaredOption& among(const std::vector<std::string>& values);

  DeclaredOption& check(const Check& check);

  /// A value is a list, which this separates.
  DeclaredOption& separator(char character);

 private:
  CLI::Option* option_;
};

/// The options and operands of one command, and where their values go. A library parses them; only
/// one source sees it, since it makes compiling slow.
class Options {
 public:
  /// `name` is what a user types before them.
  Options(const std::string& name, const std::string& summary);
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  ~Options();

  /// What a user types before them.
  const std::string& name() const;

  /// An option without a value.
  void flag(const std::string& name, bool& value, const std::string& help);

  /// An option that may stand without a value, which is "true" then.
  DeclaredOption flag(const std::string& name, std::string& value, const std::string& help);

  /// The same with all of its values.
  DeclaredOption flag(const std::string& name, std::vector<std::string>& values,
                      const std::string& help);

  /// An option with a value; or an operand, if the name does not begin with "-".
  DeclaredOption option(const std::string& name, std::string& value, const std::string& help);
  DeclaredOption option(const std::string& name, std::optional<std::string>& value,
                        const std::string& help);

  /// An option that may be repeated, with a value each time.
  DeclaredOption option(const std::string& name, std::vector<std::string>& values,
                        const std::string& help);

  /// The only file to read, an operand.
  void input(std::string& path);

  /// Files to read, one at least.
  void input(std::vector<std::string>& paths);

  /// What the help says at its end.
  void footer(const std::string& text);

  /// Takes the words after "--", which has to come first after the options; `otherwise` says that
  /// it does not. "-h" asks for no help then: it may be meant for those words.
  void rest(std::vector<std::string>& words, const std::string& otherwise);

  /// What became of parsing.
  enum class Outcome { Parsed, WantsHelp, Wrong };

  /// Reads the words after the name and stores their values. Leaves in `text` the help where it is
  /// wanted, and what is wrong.
  Outcome parse(const std::vector<std::string>& words, std::string& text);

 private:
  std::unique_ptr<CLI::App> app_;
};

}  // namespace consolidator::inspect
