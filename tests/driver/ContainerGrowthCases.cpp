#include "consolidated/ConsolidatedFile.h"
#include "driver/GrowthCases.h"
#include "model/KernelMerge.h"
#include "support/Bytes.h"
#include "support/CollidingKeys.h"
#include "support/MemoryFile.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace consolidator {

namespace {

using MakeBytes = std::function<std::string(std::size_t size)>;

// A list of the binary form: its count, then its elements.
template <typename MakeElement>
std::string list(std::size_t count, MakeElement makeElement) {
  return u32(static_cast<std::uint32_t>(count)) + joined(count, makeElement);
}

// The lists of a record in the order in which they stand; the type is among them.
struct Part {
  enum Index : std::size_t {
    Paths,
    Type,
    Arguments,
    Variables,
    HardwareVariables,
    Conditions,
    Brams
  };
};

// A file with one kernel, of which one part is as given.
std::string withPart(std::size_t part, const std::string& bytes) {
  std::string record = text("k");
  for (std::size_t i = Part::Paths; i <= Part::Brams; ++i) record += i == part ? bytes : u32(0);
  return container({{SectionKind::KernelRecords, u32(1) + record}});
}

std::string condition(const std::string& expression) {
  return u32(2) + text(expression) + u32(7) + text("k.c");
}

// Reads the file and saves it, which prepares the conditions and renders the JSON text.
PrepareWork rewriting(MakeBytes makeBytes) {
  return [makeBytes](std::size_t size) -> Work {
    const auto file = std::make_shared<MemoryFile>();
    return [file, bytes = makeBytes(size)] {
      file->write(bytes);
      ConsolidatedFile consolidated;
      consolidated.openOrCreate(file->path(), false, false);
      consolidated.save();
      consolidated.close();
    };
  };
}

// Reads the file into the model; what saving it writes is more than linear by the format.
PrepareWork reading(MakeBytes makeBytes) {
  return [makeBytes](std::size_t size) -> Work {
    const auto file = std::make_shared<MemoryFile>();
    file->write(makeBytes(size));
    return [file] { ConsolidatedFile().readExisting(file->path()); };
  };
}

PrepareWork dumping(MakeBytes makeBytes) {
  return [makeBytes](std::size_t size) -> Work {
    const auto file = std::make_shared<MemoryFile>();
    const auto out = std::make_shared<MemoryFile>();
    file->write(makeBytes(size));
    return [file, out] {
      ConsolidatedFile consolidated;
      consolidated.openOrCreate(file->path(), false, true);
      consolidated.dumpDwarf(out->path());
      consolidated.dumpJson(out->path());
      consolidated.close();
    };
  };
}

// Merges a kernel into another one that has as much in it, half of it the same.
PrepareWork merging(std::function<void(KernelRecord& kernel, std::size_t number)> fill) {
  return [fill](std::size_t size) -> Work {
    const auto known = std::make_shared<KernelRecord>();
    const auto incoming = std::make_shared<KernelRecord>();
    for (std::size_t i = 0; i < size; ++i) {
      fill(*known, i);
      fill(*incoming, i + size / 2);
    }
    return [known, incoming] {
      KernelList kernels;
      kernels.append(*known);
      mergeKernel(kernels, *incoming);
    };
  };
}

void addListCases(std::vector<GrowthCase>& cases, const KeyShape& shape) {
  const auto key = shape.key;
  const auto put = [&](const std::string& name, std::size_t part, auto makeElement) {
    cases.push_back({"Stored" + name + shape.name, rewriting([=](std::size_t size) {
                       return withPart(part, list(size, makeElement));
                     })});
  };
  const auto variable = [key](std::size_t i) {
    return text(key(i)) + text("r") + text("int") + u32(0);
  };
  put("Paths", Part::Paths, [key](std::size_t i) { return text(key(i)); });
  put("Arguments", Part::Arguments, variable);
  put("Variables", Part::Variables, variable);
  put("HardwareVariables", Part::HardwareVariables,
      [key](std::size_t i) { return text(key(i)) + u32(1) + u32(1) + u32(2); });
  put("Conditions", Part::Conditions, [key](std::size_t i) { return condition(key(i)); });
  put("Brams", Part::Brams, [key](std::size_t i) { return text(key(i)); });
  cases.push_back({"StoredKernels" + shape.name, rewriting([key](std::size_t size) {
                     return container({{SectionKind::KernelRecords, list(size, [&](std::size_t i) {
                                          return kernelRecord(key(i), 0);
                                        })}});
                   })});

  const auto merge = [&](const std::string& name, auto fill) {
    cases.push_back({"Merged" + name + shape.name, merging(fill)});
  };
  merge("Paths", [key](KernelRecord& kernel, std::size_t i) { kernel.addInstancePath(key(i)); });
  merge("Arguments",
        [key](KernelRecord& kernel, std::size_t i) { kernel.addArgument(key(i), "r", "int"); });
  merge("Variables",
        [key](KernelRecord& kernel, std::size_t i) { kernel.addVariable(key(i), "r", "int"); });
  merge("HardwareVariables",
        [key](KernelRecord& kernel, std::size_t i) { kernel.setLogicLocation(key(i), 1, 2, 3); });
  merge("Conditions", [key](KernelRecord& kernel, std::size_t i) {
    kernel.addBreakableCondition(ConditionKind::Start, key(i));
  });
}

// Conditions that differ in one number alone.
void addNumberCases(std::vector<GrowthCase>& cases) {
  for (const unsigned shift : {0U, 8U, 16U, 20U, 32U}) {
    cases.push_back({"MergedConditionsOnLinesBy" + std::to_string(std::size_t{1} << shift),
                     merging([shift](KernelRecord& kernel, std::size_t i) {
                       BreakableCondition added(ConditionKind::SourceLine, "a");
                       added.line = static_cast<std::uint32_t>(i << shift);
                       kernel.addBreakableCondition(added);
                     })});
  }
  // What is equal of them counts for one in a hash without a seed, their lines one by one.
  const auto lines = std::make_shared<CollidingNumbers>([](std::uint32_t line) {
    constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15U;
    const std::hash<std::string_view> hash;
    const std::uint64_t texts = hash("a") * goldenRatio + hash("");
    return (texts * goldenRatio + line) * goldenRatio + 2;
  });
  cases.push_back({"MergedConditionsOnLinesCollidingWithoutASeed",
                   merging([lines](KernelRecord& kernel, std::size_t i) {
                     BreakableCondition added(ConditionKind::SourceLine, "a");
                     added.line = (*lines)[i];
                     kernel.addBreakableCondition(added);
                   })});
  cases.push_back({"MergedConditionKinds", merging([](KernelRecord& kernel, std::size_t i) {
                     kernel.addBreakableCondition(static_cast<ConditionKind>(i << 8U), "a");
                   })});
}

void addInnerListCases(std::vector<GrowthCase>& cases) {
  const auto put = [&](const std::string& name, std::size_t part, auto makeElement) {
    cases.push_back({"Stored" + name, rewriting([=](std::size_t size) {
                       return withPart(part, u32(1) + makeElement(size));
                     })});
  };
  const auto location = [](std::size_t i) { return u64(i); };
  const std::string variable = text("a") + text("r") + text("int");
  put("Instances", Part::Arguments,
      [=](std::size_t size) { return variable + list(size, [](auto) { return u32(0); }); });
  put("InstanceBits", Part::Variables,
      [=](std::size_t size) { return variable + u32(1) + list(size, location); });
  put("Locations", Part::HardwareVariables,
      [=](std::size_t size) { return text("r") + list(size, location); });
  put("LongName", Part::Paths, [](std::size_t size) { return text(std::string(256 * size, 'n')); });
  put("LongNameOfZeros", Part::Paths,
      [](std::size_t size) { return text(std::string(256 * size, '\0')); });
}

void addConditionCases(std::vector<GrowthCase>& cases) {
  struct Shape {
    const char* name;
    const char* part;
  };

  static constexpr std::array shapes{
      Shape{"Chain", "a == "},     Shape{"Operands", "a "},          Shape{"Operators", "== "},
      Shape{"Openings", "( "},     Shape{"ClosedTokens", "(a) "},    Shape{"LongToken", "aaaaaaaa"},
      Shape{"Spaces", "        "}, Shape{"Postfix", "a a a == == "}, Shape{"Brackets", "()"}};
  for (const Shape& shape : shapes) {
    cases.push_back({std::string("LongCondition") + shape.name,
                     rewriting([part = shape.part](std::size_t size) {
                       const std::string parts = joined(size, [&](auto) { return part; });
                       return withPart(Part::Conditions, u32(1) + condition(parts + "z"));
                     })});
  }
  cases.push_back({"TriviallyTrueConditions", rewriting([](std::size_t size) {
                     return withPart(Part::Conditions, list(size, [](auto) {
                                       return u32(0) + text("(1'b1 == 1'b1)");
                                     }));
                   })});
}

// Many entries that all describe the same few bytes: a project's name, DWARF, records without any,
// a JSON text.
void addTableCases(std::vector<GrowthCase>& cases) {
  const auto table = [](std::uint32_t kind) {
    return [kind](std::size_t size) {
      const std::size_t end = 16 + 24 * size;
      return header(static_cast<std::uint32_t>(size)) +
             joined(size, [&](auto) { return entry(kind, end, 4); }) + u32(0) +
             std::string(24 * size, 'x');
    };
  };
  for (const std::uint32_t kind : {0U, 1U, 2U, 3U, 4U}) {
    const std::string name = "TableOfKind" + std::to_string(kind);
    cases.push_back({name, rewriting(table(kind))});
    cases.push_back({name + "ToDump", dumping(table(kind))});
  }
  const auto section = [](SectionKind kind) {
    return [kind](std::size_t size) { return container({{kind, std::string(256 * size, 's')}}); };
  };
  cases.push_back({"LongProjectName", rewriting(section(SectionKind::ProjectName))});
  cases.push_back({"LongDwarf", rewriting(section(SectionKind::Dwarf))});
  cases.push_back({"LongDwarfToDump", dumping(section(SectionKind::Dwarf))});
  cases.push_back({"LongJsonToDump", dumping(section(SectionKind::Json))});
  cases.push_back(
      {"NoContainer", rewriting([](std::size_t size) { return std::string(256 * size, 'x'); })});
}

// Many entries that describe all that follows the table, and the name of a project in the end.
// Names are so long that reading them takes longer than finding them.
void addOverlapCases(std::vector<GrowthCase>& cases) {
  const auto table = [](SectionKind kind, auto makePayload) {
    return [=](std::size_t size) {
      const std::size_t end = 16 + 24 * (size + 1);
      const std::string payload = makePayload(size);
      const std::string one = entry(kind, end, static_cast<std::uint32_t>(payload.size()));
      return header(static_cast<std::uint32_t>(size + 1)) +
             joined(size, [&](auto) { return one; }) + entry(SectionKind::ProjectName, 0, 4) +
             payload;
    };
  };
  const auto bytes = [](std::size_t size) { return std::string(256 * size, 's'); };
  cases.push_back({"OverlappingNames", reading(table(SectionKind::ProjectName, bytes))});
  cases.push_back({"OverlappingNamesToDump", dumping(table(SectionKind::ProjectName, bytes))});
  cases.push_back({"OverlappingDwarf", reading(table(SectionKind::Dwarf, bytes))});
  const auto kernels = [](std::size_t size) {
    return list(size, [](auto) { return kernelRecord("k", 0); });
  };
  const auto paths = [](std::size_t size) {
    return u32(1) + text("k") + list(8 * size, [](auto) { return text(""); }) + u32(3) + u32(0) +
           u32(0) + u32(0) + u32(0) + u32(0);
  };
  cases.push_back(
      {"OverlappingKernelsToDump", dumping(table(SectionKind::KernelRecords, kernels))});
  cases.push_back({"OverlappingPathsToDump", dumping(table(SectionKind::KernelRecords, paths))});
}

}  // namespace

std::vector<GrowthCase> containerGrowthCases() {
  std::vector<GrowthCase> cases;
  for (const KeyShape& shape : keyShapes()) addListCases(cases, shape);
  addNumberCases(cases);
  addInnerListCases(cases);
  addConditionCases(cases);
  addTableCases(cases);
  addOverlapCases(cases);
  return cases;
}

}  // namespace consolidator
