#pragma once

#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// A command line of the program "consolidator".
class Arguments {
 public:
  explicit Arguments(std::vector<std::string> words) : words_(std::move(words)) {
    pointers_.push_back("consolidator");
    for (const std::string& word : words_) pointers_.push_back(word.c_str());
    pointers_.push_back(nullptr);
  }

  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments() = default;

  int count() const { return static_cast<int>(words_.size()) + 1; }

  const char* const* values() const { return pointers_.data(); }

 private:
  std::vector<std::string> words_;
  std::vector<const char*> pointers_;
};

/// The usage text of that program.
inline constexpr const char* usage =
    "Usage: consolidator [options] --consolidated_file filename\n"
    "\n"
    "Consolidator options:\n"
    "  -a [ --add ]                   Add information to the file as opposed to \n"
    "                                 overwriting (default)\n"
    "  -c [ --create ]                If the file exists, overwrite it\n"
    "  -u [ --dump-dwarf ] arg        Output file to dump current DWARF information \n"
    "                                 to\n"
    "  -j [ --dump-json ] arg         Output file to dump current JSON information \n"
    "                                 to\n"
    "  -d [ --DWARF ] arg             Input DWARF metadata file\n"
    "  --help                         Output this information\n"
    "  -h [ --hierarchy ] arg         Input hierarchy metadata file generated from \n"
    "                                 System Linker\n"
    "  -k [ --kernel ] arg            Input kernel.xml meta data\n"
    "  -s [ --hls ] arg               Input kernel meta data generated from HLS\n"
    "  -x [ --aux ] arg               Input *_auxiliary.xml meta data generated from\n"
    "                                 HLS\n"
    "  -l [ --ll ] arg                Input *.ll meta data generated during \n"
    "                                 bitstream generation\n"
    "  -r [ --ram ] arg               Input ram utilization report file generated \n"
    "                                 from synthesis\n"
    "  -f [ --consolidated_file ] arg Specify the consolidated file to add to or \n"
    "                                 create\n"
    "  -p [ --project ] arg           Specify the name of the project\n"
    "  -v [ --version ]               Output version information\n"
    "\n";

}  // namespace consolidator
