#include "endtoend/VaddBuild.h"

#include <string>
#include <vector>

namespace consolidator {

namespace {

InputOption kernelXmlOption() {
  VaddKernel vadd;
  vadd.arguments = {R"([ "a", "a", "int*", 64])",
                    u32(1) + text("a") + text("a") + text("int*") + u32(0)};
  vadd.conditions = {
      R"({ "Start":true, "Cond":"== 1'b1 $i/bq_start"}, )"
      R"({ "Stop":true, "Cond":"== 1'b1 $i/bq_done"})",
      u32(2) + u32(0) + text("== 1'b1 $i/bq_start") + u32(1) + text("== 1'b1 $i/bq_done")};
  return {"--kernel",
          "<project><platform><device><core><kernel name=\"vadd\">"
          "<arg name=\"a\" type=\"int*\"/></kernel></core></device></platform></project>\n",
          vadd.file(), VaddKernel().file(), "Could not parse kernel file\n"};
}

InputOption hlsOption() {
  VaddKernel vadd;
  vadd.variables.json += R"(, [ "n", "n_reg", "int", 32])";
  vadd.variables.record = u32(2) + text("sum") + text("sum_reg") + text("int") + u32(0) +
                          text("n") + text("n_reg") + text("int") + u32(0);
  vadd.conditions = {R"({ "File":"vadd.cpp", "Line":12, "Cond":"== 3 $i/state"})",
                     u32(1) + u32(2) + text("== 3 $i/state") + u32(12) + text("vadd.cpp")};
  return {"--hls", "RTL vadd fsm (state == 3)\nlocal n\nat vadd.cpp:12\nlast n_reg[31:0] vadd\n",
          vadd.file(), VaddKernel().file()};
}

// Without a line that names a kernel, the kernel has an empty name.
InputOption auxiliaryOption() {
  const VaddKernel known;
  VaddKernel vadd;
  vadd.arguments = {R"([ "b", "b", "int", 32])",
                    u32(1) + text("b") + text("b") + text("int") + u32(0)};
  return {"--aux",
          "<ak:acceleratorMap ak:functionName=\"vadd\" >\n"
          "<ak:arg ak:originalName=\"b\" ak:busTypeRef=\"acc_fifo\" />\n",
          vadd.file(),
          container({jsonSection(known.json() + ", " + kernelJson("", "Unknown")),
                     recordsSection({known.record(), kernelRecord("", 3)})})};
}

InputOption logicLocationOption() {
  VaddKernel vadd;
  vadd.hardwareVariables = {R"("Hardware Variables" : [ { "RTLName" : "/top/vadd_1/sum_reg", )"
                            R"("Logic Locations" : [ [ 4096, 17]] } ], )",
                            u32(1) + text("/top/vadd_1/sum_reg") + u32(1) + u32(4096) + u32(17)};
  return {"--ll", "Bit 1000 0x1000 17 die0 0 Net=top/vadd_1/sum_reg[0]\n", vadd.file(),
          VaddKernel().file()};
}

InputOption ramReportOption() {
  const std::string unchanged = VaddKernel().file();
  return {"--ram",
          "8. Block Ram / URAM Memory Power - Instantiated\n3. Memory Utilization - Inferred\n"
          "|/top/vadd_1/buffer_reg|RAMB36E2|\n",
          unchanged, unchanged};
}

InputOption dwarfOption() {
  using namespace std::string_literals;
  const VaddKernel vadd;
  const std::string dwarf = "DW\0ARF\n"s;
  return {
      "--DWARF",
      dwarf,
      container({jsonSection(vadd.json()), recordsSection({vadd.record()}), dwarfSection(dwarf)}),
      vadd.file(),
      "",
      true};
}

}  // namespace

std::string VaddKernel::json() const {
  return R"({ "Name" : "vadd", "Instance Paths" : [ )" + paths.json +
         R"( ], "Type" : "HLS", "Arguments" : [ )" + arguments.json + R"(], "Variables" : [ )" +
         variables.json + "], " + hardwareVariables.json + R"("Breakable Conditions" : [)" +
         conditions.json + "] }";
}

std::string VaddKernel::record() const {
  return text("vadd") + paths.record + u32(4) + arguments.record + variables.record +
         hardwareVariables.record + conditions.record + u32(0);
}

InputOption hierarchyOption() {
  VaddKernel vadd;
  vadd.paths = {R"("/top/vadd_1/inst", "/top/vadd_2/inst")",
                u32(2) + text("/top/vadd_1") + text("/top/vadd_2")};
  return {"--hierarchy", "vadd: instance path: /top/vadd_2\n", vadd.file(), VaddKernel().file()};
}

std::string createdFromHierarchy() {
  return container({jsonSection(kernelJson("vadd", "Unknown", {"/top/vadd_2"})),
                    recordsSection({kernelRecord("vadd", 3, {"/top/vadd_2"})})});
}

std::vector<InputOption> inputOptions() {
  return {dwarfOption(),     hierarchyOption(),     kernelXmlOption(), hlsOption(),
          auxiliaryOption(), logicLocationOption(), ramReportOption()};
}

}  // namespace consolidator
