#include "driver/CommandLineParser.h"
#include "driver/ConsolidatorOptions.h"
#include "support/RandomText.h"
#include "support/Rounds.h"

#include <boost/program_options/parsers.hpp>
#include <boost/program_options/positional_options.hpp>
#include <boost/program_options/variables_map.hpp>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace po = boost::program_options;

namespace consolidator {
namespace {

using Words = std::vector<std::string>;

// The tool's options; they are described when it parses an empty command line.
const po::options_description& known() {
  static const ConsolidatorOptions options(0, nullptr);
  return options;
}

// The values by name, or the message of the error.
std::string outcome(const std::function<po::parsed_options()>& parse) {
  try {
    po::variables_map given;
    po::store(parse(), given);
    std::string text;
    for (const auto& [name, value] : given) {
      text += name + ":";
      if (const auto* one = boost::any_cast<std::string>(&value.value())) text += " " + *one;
      if (const auto* list = boost::any_cast<Words>(&value.value())) {
        for (const std::string& one : *list) text += " " + one;
      }
      text += "\n";
    }
    return text;
  } catch (const po::multiple_occurrences& error) {
    return "repeated " + error.get_option_name();
  } catch (const po::error& error) {
    return error.what();
  }
}

std::string parsed(const Words& words) {
  std::vector<const char*> pointers;
  for (const std::string& word : words) pointers.push_back(word.c_str());
  return outcome([&] { return parseWords(known(), pointers); });
}

std::string parsedByLibrary(const Words& words) {
  return outcome([&] {
    return po::command_line_parser(words)
        .options(known())
        .positional(po::positional_options_description())
        .run();
  });
}

// A word of any kind; most can be part of a command line that is right.
std::string randomWord(std::mt19937& random) {
  constexpr std::array<std::string_view, 16> longNames{
      "--add",  "--create",  "--dump-dwarf", "--dump-json", "--DWARF", "--help",
      "--hi",   "--kernel",  "--hls",        "--aux",       "--ll",    "--ram",
      "--cons", "--project", "--version",    "---k"};
  constexpr std::array<std::string_view, 12> odd{
      "--", "-", "", "--=", "--=x", "---", "--dump", "--h", "--add=", "--none", "-z", "file"};
  constexpr std::string_view letters = "acujdhksxlrfpvz-=";
  switch (random() % 8) {
    case 0:
      return std::string(pick(random, odd));
    case 1:
    case 2:
      return std::string(pick(random, longNames));
    case 3:
      return std::string(pick(random, longNames)) + "=" + randomWord(random);
    case 4:
      return mutated(std::string(pick(random, longNames)) + "=value", random);
    default: {
      std::string word = "-";
      const std::size_t length = random() % 4;
      for (std::size_t i = 0; i <= length; ++i) word += letters[random() % letters.size()];
      return word;
    }
  }
}

// Such a command line often has no error, unlike one of random words.
Words correctWords(std::mt19937& random) {
  Words words;
  for (const std::string_view text : {"-u", "-j", "--DWARF", "-f", "--proj"}) {
    if (random() % 3 == 0) words.insert(words.end(), {std::string(text), "x" + randomWord(random)});
  }
  for (std::size_t i = random() % 6; i > 0; --i) {
    constexpr std::array<std::string_view, 6> lists{"-h", "--kern", "--hls", "-x", "-l", "--ram"};
    const std::string option(pick(random, lists));
    words.push_back(option);
    if (random() % 2 == 0) {
      words.push_back(randomWord(random));
    } else {
      words.back() += (option.size() > 2 ? "=v" : "") + randomWord(random);
    }
  }
  if (random() % 4 == 0) words.emplace_back("-a");
  if (random() % 4 == 0) words.emplace_back("-vc");
  if (random() % 4 == 0) words.emplace_back("--");
  return words;
}

void expectAsByLibrary(Words words) {
  for (std::string& word : words) word.resize(std::min(word.find('\0'), word.size()));
  const std::string expected = parsedByLibrary(words);
  EXPECT_EQ(parsed(words), expected) << testing::PrintToString(words);
}

TEST(CommandLineParser, GivesWhatTheLibraryGivesForRandomWords) {
  std::mt19937 random(20);
  for (int round = 0; round < rounds(20000); ++round) {
    Words words(random() % 7);
    for (std::string& word : words) word = randomWord(random);
    expectAsByLibrary(words);
  }
}

TEST(CommandLineParser, GivesWhatTheLibraryGivesForCommandLinesThatAreMostlyRight) {
  std::mt19937 random(21);
  int accepted = 0;
  for (int round = 0; round < rounds(20000); ++round) {
    const Words words = correctWords(random);
    expectAsByLibrary(words);
    accepted += parsed(words).find(": ") != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(accepted, rounds(20000) / 4);
}

TEST(CommandLineParser, GivesWhatTheLibraryGivesForEveryPairOfShortWords) {
  constexpr std::string_view letters = "ahfz-=";
  Words shortWords{""};
  for (std::size_t i = 0; shortWords[i].size() < 3; ++i) {
    for (const char letter : letters) shortWords.push_back(shortWords[i] + letter);
  }
  for (const std::string& first : shortWords) {
    if (first.size() == 3 && !first.starts_with('-')) continue;  // like one that is shorter
    for (const std::string& second : shortWords) {
      if (second.size() < 3 || second.starts_with("--")) expectAsByLibrary({first, second});
    }
  }
}

TEST(CommandLineParser, TheFirstWordThatIsWrongCounts) {
  EXPECT_EQ(parsed({"file", "-f", "a", "-f", "b", "--none", "-k"}), "unrecognised option '--none'");
  EXPECT_EQ(parsed({"file", "-f", "a", "-f", "b"}),
            "too many positional options have been specified on the command line");
  EXPECT_EQ(parsed({"-aaa", "-f", "a", "-f", "b"}), "repeated --add");
}

TEST(CommandLineParser, KeepsTwoOccurrencesOfASwitch) {
  const std::array<const char*, 3> words{"-aaaaaaaa", "-a", "--add"};
  EXPECT_EQ(parseWords(known(), words).options.size(), 2U);
}

}  // namespace
}  // namespace consolidator
