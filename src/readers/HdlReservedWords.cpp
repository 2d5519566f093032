#include "readers/HdlReservedWords.h"

#include <algorithm>
#include <array>

namespace consolidator {

namespace {

// Not the textbook lists: the metadata follows these with their slips ("rtanif1" for rtranif1,
// "untis" for units), and names of the standard packages and predefined attributes count as
// reserved. 22 words stand in both.
constexpr std::string_view listedWords =
    // Verilog
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
    "wor xnor xor "

    // VHDL
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

constexpr auto reservedWords = [] {
  std::array<std::string_view, 1 + std::ranges::count(listedWords, ' ')> words;
  std::string_view rest = listedWords;
  for (std::string_view& word : words) {
    word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(word.size() + 1, rest.size()));
  }
  std::ranges::sort(words);
  return words;
}();

constexpr std::string_view suffix = "_r";

bool isReserved(std::string_view word) { return std::ranges::binary_search(reservedWords, word); }

}  // namespace

void buildHdlReservedWords(HdlReservedWords& words) {
  words.insert(reservedWords.begin(), reservedWords.end());
}

// Odd, but to be kept: a name that also holds the suffix before its end is left alone.
std::string restoreReservedWordName(std::string_view name) {
  const std::string_view stem = name.substr(0, name.find(suffix));
  const bool isSuffixed = stem.size() + suffix.size() == name.size();
  return std::string(isSuffixed && isReserved(stem) ? stem : name);
}

std::string addReservedWordSuffix(std::string_view name) {
  std::string result(name);
  if (isReserved(name)) result += suffix;
  return result;
}

}  // namespace consolidator
