#pragma once

#include <string>
#include <string_view>

namespace consolidator {

/// The usage text, with the name that the program was started under.
inline std::string usageText(std::string_view programName = "consolidator") {
  return std::string("Usage: ").append(programName) +
         R"( [options] --consolidated_file filename

Consolidator options:
  -a [ --add ]                   Add information to the file as opposed to 
                                 overwriting (default)
  -c [ --create ]                If the file exists, overwrite it
  -u [ --dump-dwarf ] arg        Output file to dump current DWARF information 
                                 to
  -j [ --dump-json ] arg         Output file to dump current JSON information 
                                 to
  -d [ --DWARF ] arg             Input DWARF metadata file
  --help                         Output this information
  -h [ --hierarchy ] arg         Input hierarchy metadata file generated from 
                                 System Linker
  -k [ --kernel ] arg            Input kernel.xml meta data
  -s [ --hls ] arg               Input kernel meta data generated from HLS
  -x [ --aux ] arg               Input *_auxiliary.xml meta data generated from
                                 HLS
  -l [ --ll ] arg                Input *.ll meta data generated during 
                                 bitstream generation
  -r [ --ram ] arg               Input ram utilization report file generated 
                                 from synthesis
  -f [ --consolidated_file ] arg Specify the consolidated file to add to or 
                                 create
  -p [ --project ] arg           Specify the name of the project
  -v [ --version ]               Output version information

)";
}

}  // namespace consolidator
