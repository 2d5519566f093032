#include "readers/HdlReservedWords.h"

#include "readers/FieldReader.h"

#include <cstddef>

namespace consolidator {

namespace {

// Not the textbook lists, deliberately: the metadata follows them with their slips ("rtanif1" for
// rtranif1, "untis" for units), and names of the standard packages and predefined attributes count
// as reserved. The 22 words that both languages bring to the set stand in both lists.
constexpr std::string_view verilogWords =
    "always and assign automatic begin buf bufif0 bufif1 case casex casez cell cmos config "
    "deassign default defparam design disable edge else end endcase endconfig endfunction "
    "endgenerate endmodule endprimitive endspecify endtable endtask event for force forever "
    "fork function generate genvar highz0 highz1 if ifnone initial inout input instance integer "
    "join large liblist library localparam macromodule medium module nand negedge nmos nor "
    "noshowcancelled not notif0 notif1 or output parameter pmos posedge primitive pull0 pull1 "
    "pulldown pullup pulsestyle_ondetect pulsestyle_onevent rcmos real realtime reg release "
    "repeat rnmos rpmos rtanif1 rtran rtranif0 scalared showcancelled signed small specify "
    "specparam strength strong0 strong1 supply0 supply1 table task time tran tranif0 tranif1 "
    "tri tri0 tri1 triand trior trireg unsigned use vectored wait wand weak0 weak1 while wire "
    "wor xnor xor";

constexpr std::string_view vhdlWords =
    "abs access active after alias all architecture array ascending assert attribute base begin "
    "bit bit_vector block body boolean buffer bus case character component configuration "
    "constant delayed disconnect downto driving driving_value else elsif end endfile entity "
    "event exit falling_edge file file_close file_open for function generate generic group "
    "guarded high if image impure in inertial inout instance_name integer is label last_active "
    "last_event last_value left leftof length library line linkage literal loop low map mod "
    "nand natural new next none nor not null of on open or others out package path_name port "
    "pos positive postponed pred procedure process pure quiet range read readline real record "
    "register reject rem report return reverse_range right rightof rising_edge rol ror select "
    "severity shared signal signed simple_name sla sll sra srl stable std_logic "
    "std_logic_vector string subtype succ text then time to transaction transport type "
    "unaffected until untis use val value variable wait when while with write writeline";

constexpr std::string_view suffix = "_r";
constexpr std::size_t shortestRestored = 3;

void insertWords(HdlReservedWords& words, std::string_view list) {
  FieldReader listed(list);
  for (auto word = listed.readWord(); !word.empty(); word = listed.readWord()) words.emplace(word);
}

}  // namespace

void buildHdlReservedWords(HdlReservedWords& words) {
  insertWords(words, verilogWords);
  insertWords(words, vhdlWords);
}

HdlReservedWords& processHdlReservedWords() {
  static HdlReservedWords words;
  return words;
}

std::string restoreReservedWordName(std::string_view name) {
  if (name.size() < shortestRestored) return std::string(name);
  HdlReservedWords& words = processHdlReservedWords();
  if (words.empty()) buildHdlReservedWords(words);
  return restoreReservedWordName(name, words);
}

// A name that holds the suffix earlier as well is left alone, deliberately.
std::string restoreReservedWordName(std::string_view name, const HdlReservedWords& words) {
  const std::size_t stemSize = name.find(suffix);
  const bool isSuffixed =
      stemSize != std::string_view::npos && stemSize + suffix.size() == name.size();
  if (name.size() < shortestRestored || !isSuffixed) return std::string(name);
  const std::string_view stem = name.substr(0, stemSize);
  return std::string(words.contains(stem) ? stem : name);
}

std::string addReservedWordSuffix(std::string_view name, const HdlReservedWords& words) {
  std::string result(name);
  if (words.contains(name)) result += suffix;
  return result;
}

}  // namespace consolidator
