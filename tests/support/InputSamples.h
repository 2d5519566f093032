#pragma once

#include "Bytes.h"

#include <string>
#include <string_view>

namespace consolidator {

// A small file of each kind with all that its format knows, to be damaged by tests. What they say
// is about the kernels of containerSample().

inline constexpr std::string_view hierarchySample =
    "# hierarchy of a design\n"
    "version: 1.0\n"
    "\n"
    "vadd:\n"
    "  type: clc\n"
    "  instance path: /top/vadd_1\n"
    "  instance path: /top/vadd_2 # twice\n"
    "scale:\n"
    "\ttype: hls\r\n"
    "  instance   path: /top/scale_1\n"
    "fir: type: ip\n"
    "last:";

inline constexpr std::string_view kernelXmlSample = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE project>
<!-- kernel -->
<project name="vadd"><platform vendor="v"><version major="1"/><device><core name="c">
<kernel name="vadd" language="c"><port name="m"/>
<arg name="a" addressQualifier="1" id="0" type="int*"/>
<arg name='begin_r' addressQualifier="04" type="a&lt;b&#65;&gt;"/><unknown><arg/>text</unknown>
</kernel><kernel name="fir"><arg name="x"/><![CDATA[<]]><?p i?></kernel>
</core></device></platform></project>
)";

inline constexpr std::string_view hlsSample =
    "# debug metadata\n"
    "Begin Function scale\n"
    "RTL scale fsm (state == 3'b010)\n"
    "local i\n"
    "at scale.c:11\n"
    "at scale.c:12\n"
    "last i_reg[30:0] scale\n"
    "Begin Function inner\n"
    "RTL scale fsm (state == 4) && ready \n"
    " a comment\n"
    "local product\n"
    "at a/inner.c:7\n"
    "reg: product_next[31:0]\n"
    "last product_reg[31:0] inner\n"
    "End Function inner\n"
    "End Function scale\n";

inline constexpr std::string_view auxiliarySample =
    "<?xml version=\"1.0\"?>\n"
    "<ak:acceleratorMap xmlns:ak=\"urn\" ak:functionName=\"fir\" >\n"
    "  <ak:arg ak:originalName=\"in_r\" ak:busTypeRef=\"\"acc_fifo\"\" />\n"
    "  <ak:arg ak:originalName=\"out\" ak:busTypeRef=\"acc_fifo\" ak:size=\"4\" />\n"
    "\t<ak:arg\tak:originalName=\"taps\" />\r\n"
    "</ak:acceleratorMap>\n";

inline constexpr std::string_view logicLocationSample =
    "; locations\n"
    "Revision 3\n"
    "Bit 61124 0x00401f80 96 die0 0 Block=X1Y2 Latch=AQ Net=top/vadd_1/sum_reg[0]\n"
    "Bit 61125 0x00401f81 97 die0 0 Block=X1Y2 Latch=BQ Net=top/vadd_1/sum_reg[2]\n"
    "Bit 7 401f82 4294967295 die0 0 Net=top/vadd_2/loop/i_reg\n"
    " Bit 8 0x1 2 die0 0 Net=top/scale_1/sum_reg[1]\n"
    "Bit 9 0x1 2 die0 0 Block=M3 Ram=B:BIT0\n"
    "Bit 9 0x1 2 die0 0 Net=static/sum_reg[3]";

inline constexpr std::string_view ramReportSample =
    "8. Block Ram / URAM Memory Power - Instantiated\n"
    "------------\n"
    "3. Memory Utilization - Inferred\n"
    "------------\n"
    "| Memory | Primitive |\n"
    "|/top/vadd_1/ram_1|RAMB36E2|1|\n"
    "| /top/vadd_2/m | URAM288 |\n"
    "4. Memory Performance - Inferred\n"
    "6. Memory Utilization - Instantiated\n"
    "|x/top/scale_1/top/vadd_1|RAMB18|\n"
    "7. Memory Utilization - Instantiated\n";

/// A consolidated file with all kinds of sections and three kernels.
inline std::string containerSample() {
  const std::string variable = text("sum") + text("sum_reg") + text("int") + u32(2) + u32(2) +
                               u32(1) + u32(2) + u32(3) + u32(4) + u32(0);
  const std::string bare = text("i") + text("i_reg") + text("char*") + u32(0);
  const std::string hardware =
      text("/top/scale_1/reg") + u32(2) + u32(5) + u32(6) + u32(7) + u32(8);
  const std::string conditions = u32(4) + u32(0) + text("(x == 1)") + u32(1) +
                                 text("(1'b1 == 1'b1)") + u32(2) + text("y & z") + u32(42) +
                                 text("k.c") + u32(7) + text("== a b");
  const std::string vadd = text("vadd") + u32(2) + text("/top/vadd_1") + text("/top/vadd_2") +
                           u32(0) + u32(2) + variable + bare + u32(0) + u32(0) + u32(0) + u32(0);
  const std::string scale = text("scale") + u32(1) + text("/top/scale_1") + u32(3) + u32(0) +
                            u32(1) + variable + u32(1) + hardware + conditions + u32(2) +
                            text("bram") + text("bram");
  return container({{SectionKind::ProjectName, "p"},
                    {SectionKind::Dwarf, "\177ELF and more"},
                    {SectionKind::Json, "as it was rendered"},
                    {SectionKind::KernelRecords, u32(3) + vadd + scale + kernelRecord("fir", 4)},
                    {SectionKind::ProjectName, "p"}});
}

}  // namespace consolidator
