#include "consolidated/ConsolidatedFile.h"
#include "driver/GrowthCases.h"
#include "support/Bytes.h"
#include "support/CollidingKeys.h"
#include "support/MemoryFile.h"
#include "support/StreamCapture.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace consolidator {

namespace {

using AddInput = void (ConsolidatedFile::*)(const std::string& path);

using MakeText = std::function<std::string(std::size_t size)>;

// A run that adds an input to a consolidated file, which is empty unless it is given.
Work addition(AddInput add, std::string_view text, std::string container = "") {
  struct Files {
    MemoryFile input;
    MemoryFile stored;
    std::string container;
  };

  const auto files = std::make_shared<Files>();
  files->input.write(text);
  files->container = std::move(container);
  return [files, add] {
    const StreamCapture capture;
    files->stored.write(files->container);
    ConsolidatedFile file;
    file.openOrCreate(files->stored.path(), false, false);
    (file.*add)(files->input.path());
    file.save();
    file.close();
  };
}

PrepareWork adding(AddInput add, MakeText makeText) {
  return [add, makeText](std::size_t size) { return addition(add, makeText(size)); };
}

PrepareWork adding(AddInput add, MakeText makeText, MakeText makeContainer) {
  return [=](std::size_t size) { return addition(add, makeText(size), makeContainer(size)); };
}

std::string number(std::size_t value) { return std::to_string(value); }

// Long texts in steps, so that they are long soon.
std::string longText(std::size_t size, char c = 'x') { return std::string(256 * size, c); }

// A consolidated file of these records.
std::string stored(std::size_t count, const std::string& records) {
  return container(
      {{SectionKind::KernelRecords, u32(static_cast<std::uint32_t>(count)) + records}});
}

// The record of a kernel with these paths and one variable for each register.
std::string registerRecord(const std::string& name, const std::vector<std::string>& paths,
                           const std::vector<std::string>& registers) {
  std::string bytes = text(name) + u32(static_cast<std::uint32_t>(paths.size()));
  for (const std::string& path : paths) bytes += text(path);
  bytes += u32(4) + u32(0) + u32(static_cast<std::uint32_t>(registers.size()));
  for (std::size_t i = 0; i < registers.size(); ++i) {
    bytes += text("v" + number(i)) + text(registers[i]) + text("int") + u32(0);
  }
  return bytes + u32(0) + u32(0) + u32(0);
}

std::vector<std::string> keys(const KeyShape& shape, std::size_t count,
                              const std::string& before = "") {
  std::vector<std::string> list;
  for (std::size_t i = 0; i < count; ++i) list.push_back(before + shape.key(i));
  return list;
}

void addHierarchyCases(std::vector<GrowthCase>& cases) {
  const auto add = &ConsolidatedFile::addHierarchy;
  const auto put = [&](const std::string& name, MakeText makeText) {
    cases.push_back({"Hierarchy" + name, adding(add, makeText)});
  };
  for (const KeyShape& shape : keyShapes()) {
    put("Kernels" + shape.name, [shape](std::size_t size) {
      return joined(size, [&](std::size_t i) { return shape.key(i) + ":\n instance path: /a\n"; });
    });
    put("Paths" + shape.name, [shape](std::size_t size) {
      return "k:\n" +
             joined(size, [&](std::size_t i) { return " instance path: " + shape.key(i) + "\n"; });
    });
    const MakeText kernels = [shape](std::size_t size) {
      return joined(size, [&](std::size_t i) { return shape.key(i) + ": instance path: /b\n"; });
    };
    const MakeText known = [shape](std::size_t size) {
      return stored(
          size, joined(size, [&](std::size_t i) { return kernelRecord(shape.key(i), 3, {"/a"}); }));
    };
    cases.push_back({"HierarchyMergedKernels" + shape.name, adding(add, kernels, known)});
  }
  put("Comments", [](std::size_t size) { return joined(size, [](auto) { return "#c\n"; }); });
  put("Types", [](std::size_t size) { return joined(size, [](auto) { return "type: c "; }); });
  put("Versions",
      [](std::size_t size) { return joined(size, [](auto) { return "version: 1 "; }); });
  put("NamelessKernels", [](std::size_t size) { return joined(size, [](auto) { return ": "; }); });
  put("LongName", [](std::size_t size) { return longText(size); });
  put("LongPath", [](std::size_t size) { return "k: instance path: " + longText(size); });
  put("LongComment", [](std::size_t size) { return "#" + longText(size); });
  put("LongWhiteSpace", [](std::size_t size) { return "k:" + longText(size, ' ') + "l:"; });
  put("LongVersion", [](std::size_t size) { return "version: 0." + longText(size, '1'); });
  put("LongExponent", [](std::size_t size) { return "version: 1e-" + longText(size, '1'); });
}

std::string inKernel(const std::string& content) {
  return "<project><platform><device><core><kernel name='k'>" + content +
         "</kernel></core></device></platform></project>";
}

void addKernelXmlCases(std::vector<GrowthCase>& cases) {
  const auto put = [&](const std::string& name, MakeText makeContent) {
    cases.push_back({"KernelXml" + name,
                     adding(&ConsolidatedFile::addKernelXml, [makeContent](std::size_t size) {
                       return inKernel(makeContent(size));
                     })});
  };
  const auto repeat = [&](const std::string& name, const std::string& part) {
    put(name, [part](std::size_t size) { return joined(size, [&](auto) { return part; }); });
  };
  for (const KeyShape& shape : keyShapes()) {
    put("Arguments" + shape.name, [shape](std::size_t size) {
      return joined(size, [&](std::size_t i) {
        return "<arg name='" + shape.key(i) + "' id='1' type='int*'/>";
      });
    });
  }
  repeat("Kernels", "</kernel><kernel name='l'>");
  for (const std::size_t names : {1U, 2U, 16U}) {
    put("ArgumentsInKernelsOf" + number(names) + "Names", [names](std::size_t size) {
      return joined(size, [&](std::size_t i) {
        return "</kernel><kernel name='l" + number(i % names) + "'><arg name='" + number(i) + "'/>";
      });
    });
  }
  repeat("UnknownElements", "<x y='z'/>");
  repeat("Comments", "<!-- c -->");
  repeat("References", "&lt;&#65;");
  repeat("Lines", "\n");
  repeat("Modules", "<module name='m'><rtlPort/></module>");
  put("Attributes", [](std::size_t size) {
    return "<arg " + joined(size, [](std::size_t i) { return "a" + number(i) + "='' "; }) + "/>";
  });
  put("Names", [](std::size_t size) {
    return joined(size, [](std::size_t i) { return "<a" + number(i) + "/>"; });
  });
  put("LongAttribute", [](std::size_t size) { return "<arg name='" + longText(size) + "'/>"; });
  put("LongName", [](std::size_t size) { return "<" + longText(size) + "/>"; });
  put("LongComment", [](std::size_t size) { return "<!--" + longText(size) + "-->"; });
  put("LongInstruction", [](std::size_t size) { return "<?p " + longText(size) + "?>"; });
  put("LongText", [](std::size_t size) { return longText(size); });
  put("LongCdata", [](std::size_t size) { return "<![CDATA[" + longText(size) + "]]>"; });
  put("LongWhiteSpace", [](std::size_t size) { return "<arg" + longText(size, ' ') + "/>"; });
  put("LongNumber",
      [](std::size_t size) { return "<arg addressQualifier='" + longText(size, '0') + "'/>"; });
  put("LongReference", [](std::size_t size) { return "&#" + longText(size, '0') + "65;"; });
}

void addHlsCases(std::vector<GrowthCase>& cases) {
  const auto add = &ConsolidatedFile::addHls;
  const auto put = [&](const std::string& name, MakeText makeText) {
    cases.push_back({"Hls" + name, adding(add, makeText)});
  };
  for (const KeyShape& shape : keyShapes()) {
    put("Locals" + shape.name, [shape](std::size_t size) {
      return "RTL a b c\n" + joined(size, [&](std::size_t i) {
               return "local " + shape.key(i) + "\nat x.c:1\nend r[7:0] x\n";
             });
    });
    put("Files" + shape.name, [shape](std::size_t size) {
      return "RTL a b c\nlocal l\n" +
             joined(size, [&](std::size_t i) { return "at " + shape.key(i) + ":1\n"; });
    });
  }
  // Multiples of a power of two share their low bits.
  const auto putNumbers = [&](const std::string& name, auto lineNumber) {
    put("Functions" + name, [=](std::size_t size) {
      return joined(size, [=](std::size_t i) {
        return "RTL a b n\nlocal v\nat x.c:" + number(lineNumber(i)) + "\nend r\n";
      });
    });
    put("Lines" + name, [=](std::size_t size) {
      return "RTL a b c\nlocal l\n" +
             joined(size, [=](std::size_t i) { return "at x.c:" + number(lineNumber(i)) + "\n"; });
    });
  };
  for (const unsigned shift : {0U, 4U, 12U, 16U, 20U, 31U}) {
    putNumbers("By" + number(std::size_t{1} << shift),
               [shift](std::size_t i) { return (i << shift) & 0xFFFFFFFFU; });
  }
  const auto colliding =
      std::make_shared<CollidingNumbers>([](std::uint32_t line) { return line; });
  putNumbers("CollidingWithoutASeed", [colliding](std::size_t i) { return (*colliding)[i]; });
  put("Comments", [](std::size_t size) { return joined(size, [](auto) { return "#\n \n\n"; }); });
  put("CommentsInABlock", [](std::size_t size) {
    return "RTL a b c\nlocal l\n" + joined(size, [](auto) { return "#\n \n\n"; });
  });
  put("OpenScopes",
      [](std::size_t size) { return joined(size, [](auto) { return "Begin Function f\n"; }); });
  put("EmptyFunctions",
      [](std::size_t size) { return joined(size, [](auto) { return "RTL a b c\n"; }); });
  put("LongLine", [](std::size_t size) { return longText(size) + "\n"; });
}

void addAuxiliaryCases(std::vector<GrowthCase>& cases) {
  const auto put = [&](const std::string& name, MakeText makeText) {
    cases.push_back({"Auxiliary" + name, adding(&ConsolidatedFile::addAuxiliary, makeText)});
  };
  for (const KeyShape& shape : keyShapes()) {
    put("Arguments" + shape.name, [shape](std::size_t size) {
      return joined(size, [&](std::size_t i) {
        return "<ak:arg ak:originalName=\"" + shape.key(i) + "\" />\n";
      });
    });
  }
  put("OtherLines", [](std::size_t size) { return joined(size, [](auto) { return "<x>\n"; }); });
  put("Names", [](std::size_t size) {
    return joined(size, [](auto) { return "<ak:acceleratorMap ak:functionName=\"f\" >\n"; });
  });
  put("LongLine", [](std::size_t size) { return longText(size) + "\n"; });
}

std::string netLine(const std::string& net) {
  return "Bit 1 0x2 3 die0 0 Block=X1 Net=" + net + "\n";
}

void addLogicLocationCases(std::vector<GrowthCase>& cases) {
  const auto put = [&](const std::string& name, MakeText makeText, MakeText makeContainer) {
    cases.push_back({"LogicLocation" + name,
                     adding(&ConsolidatedFile::addLogicLocations, makeText, makeContainer)});
  };
  const MakeText oneRegister = [](auto) {
    return stored(1, registerRecord("k", {"/top/k"}, {"reg"}));
  };
  for (const KeyShape& shape : keyShapes()) {
    const auto lines = [shape](const std::string& before, const std::string& after) {
      return [=](std::size_t size) {
        return joined(size, [&](std::size_t i) { return netLine(before + shape.key(i) + after); });
      };
    };
    put("Registers" + shape.name, lines("top/k/", "[3]"), [shape](std::size_t size) {
      return stored(1, registerRecord("k", {"/top/k"}, keys(shape, size)));
    });
    put("Paths" + shape.name, lines("top/", "/reg[3]"), [shape](std::size_t size) {
      return stored(1, registerRecord("k", keys(shape, size, "/top/"), {"reg"}));
    });
    put("Kernels" + shape.name, lines("top/", "/reg[3]"), [shape](std::size_t size) {
      return stored(
          size, joined(size, [&](std::size_t i) {
            return registerRecord("k" + number(i), {"/top/k" + number(i)}, {"reg", shape.key(i)});
          }));
    });
    put("Scopes" + shape.name, lines("top/k/", "/other[3]"), oneRegister);
  }
  put(
      "Bits",
      [](std::size_t size) {
        return joined(size, [](std::size_t i) { return netLine("top/k/reg[" + number(i) + "]"); });
      },
      oneRegister);
  put(
      "BitsDownwards",
      [](std::size_t size) {
        return joined(
            size, [&](std::size_t i) { return netLine("top/k/reg[" + number(size - i) + "]"); });
      },
      oneRegister);
  const auto repeat = [&](const std::string& name, const std::string& part,
                          const std::string& before = "") {
    put(
        name, [=](std::size_t size) { return before + joined(size, [&](auto) { return part; }); },
        oneRegister);
  };
  repeat("LinesOfOneBit", netLine("top/k/reg[1]"));
  repeat("Comments", ";\n");
  repeat("Revisions", "Revision 3 Net=top/k/reg \n");
  repeat("NetsInOneLine", "Net=top/k/reg ", "Bit 1 2 3 d 0 ");
  repeat("MarksInOneLine", "Net=");
  repeat("BracketsInOneLine", "[", "Bit 1 2 3 d 0 Net=top/k/reg[");
  repeat("SlashesInLines", "Bit 1 2 3 d 0 Net=" + std::string(1500, '/') + "reg \n");
  repeat("LineEnds", "\n");
  put(
      "LongLine", [](std::size_t size) { return longText(size); }, oneRegister);
  put(
      "LongWhiteSpace", [](std::size_t size) { return longText(size, ' '); }, oneRegister);
}

// Half of the kernels have the path that all nets contain, the others the registers.
std::string kernelsWithPathOrRegisters(std::size_t size) {
  const std::string inside = registerRecord("k", {"/top"}, {});
  const std::string outside = registerRecord("l", {"/other"}, {"r", "s"});
  return stored(2 * size, joined(size, [&](auto) { return inside + outside; }));
}

std::string kernelsWithPathAndRegisters(std::size_t size) {
  const std::string kernel = registerRecord("k", {"/top"}, {"r", "s"});
  return stored(size, joined(size, [&](auto) { return kernel; }));
}

// Nets that alternate, so that none is like the one before.
std::string alternatingNets(std::size_t size) {
  return joined(size, [](std::size_t i) { return netLine(i % 2 == 0 ? "top/r" : "top/s"); });
}

// Many kernels for each net, of which only the lines and what is found may be many.
void addSharedNetCases(std::vector<GrowthCase>& cases) {
  const auto put = [&](const std::string& name, MakeText makeText, MakeText makeContainer) {
    cases.push_back({"LogicLocation" + name,
                     adding(&ConsolidatedFile::addLogicLocations, makeText, makeContainer)});
  };
  const MakeText differentScopes = [](std::size_t size) {
    return joined(size, [](std::size_t i) { return netLine("top/" + number(i) + "/r"); });
  };
  const MakeText oneBit = [](std::size_t size) {
    return joined(size, [](auto) { return netLine("top/r[3]"); });
  };
  put("AlternatingNetsOfNoKernel", alternatingNets, kernelsWithPathOrRegisters);
  put("DifferentNetsOfNoKernel", differentScopes, kernelsWithPathOrRegisters);
  put("AlternatingNetsOfOneKernel", alternatingNets, [](std::size_t size) {
    const std::string inside = registerRecord("k", {"/top"}, {});
    const std::string outside = registerRecord("l", {"/other"}, {"r", "s"});
    return stored(2 * size + 1, registerRecord("m", {"/top"}, {"r", "s"}) +
                                    joined(size, [&](auto) { return inside + outside; }));
  });
  put("OneBitOfManyKernels", oneBit, kernelsWithPathAndRegisters);
  put("AlternatingNetsOfManyKernels", alternatingNets, kernelsWithPathAndRegisters);
}

void addRamReportCases(std::vector<GrowthCase>& cases) {
  const std::string start =
      "8. Block Ram / URAM Memory Power - Instantiated\n3. Memory Utilization - Inferred\n";
  const auto put = [&](const std::string& name, MakeText makeRows, MakeText makeContainer) {
    cases.push_back({"RamReport" + name,
                     adding(
                         &ConsolidatedFile::addRamReport,
                         [=](std::size_t size) { return start + makeRows(size); }, makeContainer)});
  };
  const MakeText oneKernel = [](auto) { return stored(1, kernelRecord("k", 3, {"/top/k"})); };
  for (const KeyShape& shape : keyShapes()) {
    const MakeText rows = [shape](std::size_t size) {
      return joined(size, [&](std::size_t i) { return "|/top/" + shape.key(i) + "|RAMB36E2|\n"; });
    };
    put("Rows" + shape.name, rows, oneKernel);
    put("Paths" + shape.name, rows, [shape](std::size_t size) {
      return stored(1, registerRecord("k", keys(shape, size, "/top/"), {}));
    });
    put("Kernels" + shape.name, rows, [shape](std::size_t size) {
      return stored(size, joined(size, [&](std::size_t i) {
                      return registerRecord("k" + number(i), {"/top", "/top/" + shape.key(i)}, {});
                    }));
    });
  }
  const auto repeat = [&](const std::string& name, const std::string& part) {
    put(
        name, [=](std::size_t size) { return joined(size, [&](auto) { return part; }); },
        oneKernel);
  };
  repeat("FieldsInOneLine", "|");
  repeat("PathsInOneLine", "/top/k");
  repeat("Titles", "4. Memory Performance - Inferred\n3. Memory Utilization - Inferred\n");
  repeat("LineEnds", "\n");
  put(
      "LongLine", [](std::size_t size) { return longText(size); }, oneKernel);
  put(
      "LongWhiteSpace", [](std::size_t size) { return longText(size, ' '); }, oneKernel);
}

}  // namespace

const std::vector<KeyShape>& keyShapes() {
  static const std::vector<KeyShape> shapes{
      {"Different", [](std::size_t i) { return "k" + number(i); }},
      {"Equal", [](std::size_t /*i*/) { return std::string("key"); }},
      {"WithCommonStart", [](std::size_t i) { return std::string(120, 'k') + number(i); }},
      {"WithCommonEnds",
       [](std::size_t i) { return "beginning" + number(10'000'000 + i) + "the_end_of_it"; }},
      {"CollidingWithoutASeed", collidingText}};
  return shapes;
}

std::vector<GrowthCase> inputGrowthCases() {
  std::vector<GrowthCase> cases;
  addHierarchyCases(cases);
  addKernelXmlCases(cases);
  addHlsCases(cases);
  addAuxiliaryCases(cases);
  addLogicLocationCases(cases);
  addSharedNetCases(cases);
  addRamReportCases(cases);
  return cases;
}

}  // namespace consolidator
