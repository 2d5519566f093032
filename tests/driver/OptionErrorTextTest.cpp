#include "driver/CommandLineParser.h"
#include "driver/ConsolidatorOptions.h"
#include "driver/OptionErrorText.h"
#include "support/ChildRun.h"
#include "support/RandomText.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace po = boost::program_options;

namespace consolidator {
namespace {

using TextMaker = std::function<std::string(po::error_with_option_name&)>;

// What is made of the error that the word gives; nothing when there is none, or one without a name.
std::optional<std::string> textOf(const std::string& word, const TextMaker& makeText) {
  static const ConsolidatorOptions options(0, nullptr);
  const std::array<const char*, 1> words{word.c_str()};
  try {
    parseWords(options, words);
  } catch (po::error_with_option_name& error) {
    return makeText(error);
  } catch (const po::error&) {
  }
  return std::nullopt;
}

std::optional<std::string> text(const std::string& word) {
  return textOf(word, [](po::error_with_option_name& error) { return optionErrorText(error); });
}

// What the library says; nothing when it does not come to an end.
std::optional<std::string> libraryText(const std::string& word) {
  const ChildResult child = runInChild([&] {
    constexpr suseconds_t ample = 10'000;
    const itimerval limit{{}, {0, ample}};
    setitimer(ITIMER_VIRTUAL, &limit, nullptr);
    std::cout << *textOf(word, [](po::error_with_option_name& error) { return error.what(); });
  });
  if (child.status < 0) return std::nullopt;
  return child.out;
}

// What there is to say of a word that is shown as it is.
std::string literalText(const std::string& word) {
  constexpr char standIn = '@';
  std::string plain = word;
  std::replace(plain.begin(), plain.end(), '%', standIn);
  std::string shown = *text(plain);
  std::replace(shown.begin(), shown.end(), standIn, '%');
  return shown;
}

std::string unrecognised(const std::string& shown) { return "unrecognised option '" + shown + "'"; }

TEST(OptionErrorText, IsThatOfTheLibrary) {
  for (const std::string word :
       {"--none", "-az", "--d", "--h=1", "--add=1", "--kernel", "-f", "--kernel=", "--=", "--50%",
        "--%", "--%%", "--%none%", "--%value%", "--%invalid_line%"}) {
    EXPECT_EQ(text(word), libraryText(word)) << word;
  }
}

TEST(OptionErrorText, ShowsAWordAsItIsWhereTheLibraryWouldNeverEnd) {
  for (const std::string word :
       {"--%canonical_option%", "--%original_token%", "--a%canonical_option%b", "-%original_token%",
        "-a%canonical_option%", "--%canonical_option%=1", "-z%option%%original_token%"}) {
    EXPECT_EQ(libraryText(word), std::nullopt) << word;
    EXPECT_EQ(text(word), unrecognised(word));
  }
  for (const std::string name : {"%canonical_option%", "%option%", "%original_token%"}) {
    EXPECT_EQ(libraryText("--" + name + "="), std::nullopt) << name;
    EXPECT_EQ(text("--" + name + "="), "the argument for option '--" + name +
                                           "' should follow immediately after the equal sign");
  }
  EXPECT_EQ(text("--d=%canonical_option%"),
            "option '--d=%canonical_option%' is ambiguous and matches '--dump-dwarf', and "
            "'--dump-json'");
}

// The library leaves out or replaces what it knows in the word that it shows.
TEST(OptionErrorText, ShowsAWordAsTheLibraryDoesWhereThatEnds) {
  for (const auto& [word, shown] :
       {std::pair{"--%option%x", "--x"}, std::pair{"--%prefix%", "----"},
        std::pair{"--%opt%option%ion%", "--"},
        std::pair{"--%orig%option%inal_token%", "----%orig%option%inal_token%"}}) {
    EXPECT_EQ(text(word), unrecognised(shown));
    EXPECT_EQ(libraryText(word), unrecognised(shown));
  }
}

TEST(OptionErrorText, AWordThatGrowsWithEachReplacementIsShownAsItIs) {
  std::string word = "--%orig%option%inal_token%";
  for (int i = 0; i < 30'000; ++i) word += "en%";
  word += "%original_tok";
  EXPECT_EQ(text(word), unrecognised(word));
}

TEST(OptionErrorText, GivesWhatTheLibraryGivesForRandomWordsIfThatEnds) {
  constexpr std::array<std::string_view, 20> parts{"%canonical_option%",
                                                   "%option%",
                                                   "%original_token%",
                                                   "%prefix%",
                                                   "%value%",
                                                   "%invalid_line%",
                                                   "canonical_option",
                                                   "option",
                                                   "original_token",
                                                   "%",
                                                   "%",
                                                   "%opt",
                                                   "ion%",
                                                   "%prefix",
                                                   "inal_token%",
                                                   "%orig",
                                                   "x",
                                                   "-",
                                                   "=",
                                                   "="};
  constexpr std::array<std::string_view, 6> starts{"--", "--", "-", "-a", "--d", "--dump-="};
  std::mt19937 random(22);
  int endless = 0;
  for (int round = 0; round < rounds(200); ++round) {
    std::string word(pick(random, starts));
    for (std::size_t i = random() % 5; i > 0; --i) word += pick(random, parts);
    const std::optional<std::string> shown = text(word);
    if (!shown) continue;
    const std::optional<std::string> expected = libraryText(word);
    endless += expected ? 0 : 1;
    EXPECT_EQ(shown, expected.value_or(literalText(word))) << word;
  }
  EXPECT_GT(endless, rounds(200) / 40);
}

}  // namespace
}  // namespace consolidator
