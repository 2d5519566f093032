#include "driver/CommandLineParser.h"

#include <boost/program_options/cmdline.hpp>
#include <boost/program_options/errors.hpp>
#include <boost/program_options/option.hpp>
#include <boost/program_options/positional_options.hpp>
#include <boost/program_options/value_semantic.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace po = boost::program_options;

namespace consolidator {

namespace {

constexpr std::string_view dashes = "--";

bool isLongOption(std::string_view word) {
  return word.starts_with(dashes) && word.size() > dashes.size();
}

bool isShortOption(std::string_view word) {
  return word.starts_with('-') && word.size() > 1 && word[1] != '-';
}

// Whether nothing follows the first equal sign.
bool lacksItsValue(std::string_view longOption) {
  return longOption.find('=') == longOption.size() - 1;
}

po::parsed_options parseByLibrary(const po::options_description& known, CommandLineWords words) {
  return po::command_line_parser({words.begin(), words.end()})
      .options(known)
      .positional(po::positional_options_description())
      .run();
}

class Parser {
 public:
  explicit Parser(const po::options_description& known)
      : known_(known), result_(&known, po::command_line_style::allow_long) {}

  po::parsed_options parse(CommandLineWords words) {
    std::size_t taken = 0;
    for (; !words.empty() && words.front() != dashes; words = words.subspan(taken)) {
      taken = take(words);
      // The library says what is wrong: that depends on this word and the one after it.
      if (taken == 0) {
        return parseByLibrary(known_, words.first(std::min(words.size(), std::size_t{2})));
      }
    }
    if (hasBareWord_ || words.size() > 1) throw po::too_many_positional_options_error();
    return std::move(result_);
  }

 private:
  // These return how many of the words they took; 0 when the first one is wrong.

  std::size_t take(CommandLineWords words) {
    const std::string_view word = words.front();
    if (isLongOption(word)) return takeLong(words);
    if (isShortOption(word)) return takeShort(words);
    hasBareWord_ = true;
    return 1;
  }

  std::size_t takeLong(CommandLineWords words) {
    const std::string_view word = words.front();
    if (lacksItsValue(word)) return 0;
    const std::string_view name = word.substr(dashes.size(), word.find('=') - dashes.size());
    if (name.empty()) {
      hasBareWord_ = true;  // the library takes "--=value" for one
      return 1;
    }
    const std::size_t valueStart = std::min(dashes.size() + name.size() + 1, word.size());
    return takeOption(find(name), word.substr(valueStart), words);
  }

  // All but the last letter of a word are switches; what follows the last one is its value.
  std::size_t takeShort(CommandLineWords words) {
    const std::string_view word = words.front();
    for (std::size_t at = 1;; ++at) {
      const char name[] = {'-', word[at]};
      const po::option_description* const option = find({name, sizeof name});
      const std::string_view rest = word.substr(at + 1);
      if (option == nullptr || takesValue(*option) || rest.empty()) {
        return takeOption(option, rest, words);
      }
      keepSwitch(*option);
    }
  }

  std::size_t takeOption(const po::option_description* option, std::string_view value,
                         CommandLineWords words) {
    if (option == nullptr || (!takesValue(*option) && !value.empty())) return 0;
    if (!takesValue(*option)) {
      keepSwitch(*option);
      return 1;
    }
    if (!value.empty()) {
      keepValue(*option, value);
      return 1;
    }
    if (words.size() < 2 || !isValue(words[1])) return 0;
    keepValue(*option, words[1]);
    return 2;
  }

  static bool takesValue(const po::option_description& option) {
    return option.semantic()->max_tokens() > 0;
  }

  // Any word may be a value, except a known short option and a long one whose value is missing.
  bool isValue(std::string_view word) {
    if (isLongOption(word)) return !lacksItsValue(word);
    return !isShortOption(word) || word.size() > 2 || find(word) == nullptr;
  }

  const po::option_description* find(std::string_view name) {
    if (const auto known = found_.find(name); known != found_.end()) return known->second;
    try {
      const std::string text(name);
      const po::option_description* const option = known_.find_nothrow(text, true);
      if (option != nullptr) found_.emplace(text, option);
      return option;
    } catch (const po::ambiguous_option&) {
      return nullptr;
    }
  }

  // A switch that is given twice is refused when it is stored, so more need not be kept.
  void keepSwitch(const po::option_description& option) {
    if (++switches_[&option] <= 2) keep(option);
  }

  void keepValue(const po::option_description& option, std::string_view value) {
    keep(option).value.emplace_back(value);
  }

  po::option& keep(const po::option_description& option) {
    po::option& kept = result_.options.emplace_back();
    kept.string_key = option.long_name();
    return kept;
  }

  const po::options_description& known_;
  po::parsed_options result_;
  bool hasBareWord_ = false;
  std::map<std::string, const po::option_description*, std::less<>> found_;
  std::map<const po::option_description*, int> switches_;  // how often each was given
};

}  // namespace

po::parsed_options parseWords(const po::options_description& known, CommandLineWords words) {
  return Parser(known).parse(words);
}

}  // namespace consolidator
