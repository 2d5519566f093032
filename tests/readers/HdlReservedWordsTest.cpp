#include "readers/HdlReservedWords.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

using Words = std::vector<std::string>;

// All reserved words in the order of a sorted set.
constexpr const char* sortedWords =
    "abs access active after alias all always and architecture array ascending assert assign "
    "attribute automatic base begin bit bit_vector block body boolean buf buffer bufif0 bufif1 "
    "bus case casex casez cell character cmos component config configuration constant deassign "
    "default defparam delayed design disable disconnect downto driving driving_value edge else "
    "elsif end endcase endconfig endfile endfunction endgenerate endmodule endprimitive "
    "endspecify endtable endtask entity event exit falling_edge file file_close file_open for "
    "force forever fork function generate generic genvar group guarded high highz0 highz1 if "
    "ifnone image impure in inertial initial inout input instance instance_name integer is join "
    "label large last_active last_event last_value left leftof length liblist library line "
    "linkage literal localparam loop low macromodule map medium mod module nand natural negedge "
    "new next nmos none nor noshowcancelled not notif0 notif1 null of on open or others out "
    "output package parameter path_name pmos port pos posedge positive postponed pred primitive "
    "procedure process pull0 pull1 pulldown pullup pulsestyle_ondetect pulsestyle_onevent pure "
    "quiet range rcmos read readline real realtime record reg register reject release rem "
    "repeat report return reverse_range right rightof rising_edge rnmos rol ror rpmos rtanif1 "
    "rtran rtranif0 scalared select severity shared showcancelled signal signed simple_name sla "
    "sll small specify specparam sra srl stable std_logic std_logic_vector strength string "
    "strong0 strong1 subtype succ supply0 supply1 table task text then time to tran tranif0 "
    "tranif1 transaction transport tri tri0 tri1 triand trior trireg type unaffected unsigned "
    "until untis use val value variable vectored wait wand weak0 weak1 when while wire with wor "
    "write writeline xnor xor";

Words expectedWords() {
  std::istringstream in(sortedWords);
  Words words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

TEST(HdlReservedWords, HoldsExactly249WordsInByteOrder) {
  HdlReservedWords words;
  buildHdlReservedWords(words);
  EXPECT_EQ(words.size(), 249U);
  EXPECT_EQ(Words(words.begin(), words.end()), expectedWords());
}

TEST(HdlReservedWords, AreAddedToWhatTheSetHolds) {
  HdlReservedWords words{"begin", "mine"};
  buildHdlReservedWords(words);
  EXPECT_EQ(words.size(), 250U);
}

TEST(HdlReservedWords, ANameOfUpToTwoCharactersIsReturnedAsItIs) {
  for (const std::string_view name : {""sv, "a"sv, "ab"sv, "_r"sv, "or"sv}) {
    EXPECT_EQ(restoreReservedWordName(name), name);
  }
}

TEST(HdlReservedWords, EveryReservedWordIsRestoredUnlessItHoldsTheSuffixItself) {
  for (const std::string& word : expectedWords()) {
    const bool holdsSuffix = word == "reverse_range";
    EXPECT_EQ(restoreReservedWordName(word + "_r"), holdsSuffix ? word + "_r" : word);
    EXPECT_EQ(restoreReservedWordName(word), word);
    EXPECT_EQ(restoreReservedWordName(word + "_R"), word + "_R");
  }
}

TEST(HdlReservedWords, RestoresTheStemOfASuffixedReservedWord) {
  EXPECT_EQ(restoreReservedWordName("begin_r"), "begin");
  EXPECT_EQ(restoreReservedWordName("wire_r"), "wire");
  EXPECT_EQ(restoreReservedWordName("in_r"), "in");
  EXPECT_EQ(restoreReservedWordName("or_r"), "or");
  EXPECT_EQ(restoreReservedWordName("end_r"), "end");
  EXPECT_EQ(restoreReservedWordName("pulsestyle_onevent_r"), "pulsestyle_onevent");
}

TEST(HdlReservedWords, ANameThatHoldsTheSuffixEarlierIsLeftAlone) {
  EXPECT_EQ(restoreReservedWordName("end_r_r"), "end_r_r");
  EXPECT_EQ(restoreReservedWordName("my_reg_r"), "my_reg_r");
  EXPECT_EQ(restoreReservedWordName("a_rbegin_r"), "a_rbegin_r");
  EXPECT_EQ(restoreReservedWordName("falling_edge_r"), "falling_edge") << "no earlier _r in it";
  EXPECT_EQ(restoreReservedWordName("reverse_range_r"), "reverse_range_r");
}

TEST(HdlReservedWords, TheListsSlipsAreKept) {
  EXPECT_EQ(restoreReservedWordName("rtranif1_r"), "rtranif1_r");
  EXPECT_EQ(restoreReservedWordName("rtanif1_r"), "rtanif1");
  EXPECT_EQ(restoreReservedWordName("units_r"), "units_r");
  EXPECT_EQ(restoreReservedWordName("untis_r"), "untis");
}

TEST(HdlReservedWords, ComparesExactly) {
  for (const std::string_view name :
       {"Begin_r"sv, "STD_LOGIC_r"sv, "count_r"sv, "data_r"sv, "_r_r"sv, "begin_rr"sv, "begin_r "sv,
        "beginr"sv, "__r"sv, "begin\0_r"sv}) {
    EXPECT_EQ(restoreReservedWordName(name), name);
  }
}

TEST(HdlReservedWords, AddsTheSuffixToReservedWordsOnly) {
  for (const std::string& word : expectedWords()) {
    EXPECT_EQ(addReservedWordSuffix(word), word + "_r");
  }
  for (const std::string_view name : {""sv, "data"sv, "Begin"sv, "begin_r"sv, "_r"sv}) {
    EXPECT_EQ(addReservedWordSuffix(name), name);
  }
}

}  // namespace
}  // namespace consolidator
