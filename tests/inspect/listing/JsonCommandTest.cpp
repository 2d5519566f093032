#include "consolidated/ConsolidatedFile.h"
#include "inspect/InspectRun.h"
#include "inspect/output/Utf8.h"
#include "support/FullContainer.h"
#include "support/MemoryFile.h"
#include "support/Rounds.h"
#include "support/StrictJson.h"

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

std::vector<std::string> seeds() {
  std::vector<std::string> all{fullContainer()};
  for (const char* const corpus : {"Container", "Reading"}) {
    const std::string folder = std::string(CONSOLIDATOR_CORPORA) + "/" + corpus;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      std::string bytes = readFile(entry.path());
      if (bytes.size() >= 16) all.push_back(std::move(bytes));
    }
  }
  return all;
}

// Changes some bytes, and leaves the magic number.
std::string mutated(std::string bytes, std::mt19937& random) {
  constexpr std::string_view likely("\0\1\2\3\x1F\"\\\x7F\x80\xC3\xE2\xED\xF0\xF4\xFF", 15);
  for (auto changes = random() % 8; changes > 0; --changes) {
    bytes[4 + random() % (bytes.size() - 4)] = likely[random() % likely.size()];
  }
  if (random() % 8 == 0) bytes.resize(16 + random() % (bytes.size() - 15));
  return bytes;
}

// Writes the kernels of the tool's own model without any detour.
class PlainKernels {
 public:
  template <typename Kernels>
  static rapidjson::Document of(const Kernels& kernels) {
    PlainKernels plain;
    plain.writeList(kernels);
    rapidjson::Document document;
    document.Parse(plain.buffer_.GetString(), plain.buffer_.GetSize());
    return document;
  }

 private:
  template <typename Items>
  void writeList(const Items& items) {
    writer_.StartArray();
    for (const auto& item : items) write(item);
    writer_.EndArray();
  }

  template <typename Items>
  void writeList(const char* key, const Items& items) {
    writer_.Key(key);
    writeList(items);
  }

  void write(const std::string& text) {
    const std::string mended = wellFormed(text);
    writer_.String(mended.data(), static_cast<rapidjson::SizeType>(mended.size()));
  }

  void write(const char* key, std::string_view text) {
    writer_.Key(key);
    write(std::string(text));
  }

  void write(const char* key, std::uint32_t number) {
    writer_.Key(key);
    writer_.Uint(number);
  }

  void write(const BitLocation& location) {
    writer_.StartArray();
    writer_.Uint(location.first);
    writer_.Uint(location.second);
    writer_.EndArray();
  }

  void write(const std::vector<BitLocation>& locations) { writeList(locations); }

  void write(const VariableRecord& variable) {
    writer_.StartObject();
    write("name", variable.name);
    write("second", variable.second);
    write("c_type", variable.cType);
    write("bit_width", variable.bitWidth());
    writeList("instance_bits", variable.instanceBits);
    writer_.EndObject();
  }

  void write(const HardwareVariable& variable) {
    writer_.StartObject();
    write("rtl_name", variable.rtlName);
    writeList("logic_locations", variable.logicLocations);
    writer_.EndObject();
  }

  void write(const BreakableCondition& condition) {
    constexpr std::array names = {"start", "stop", "source_line"};
    const auto kind = static_cast<std::uint32_t>(condition.kind);
    writer_.StartObject();
    write("kind", kind < names.size() ? names.at(kind) : "error");
    write("kind_number", kind);
    write("condition", condition.condition);
    if (condition.kind == ConditionKind::SourceLine) {
      write("file", condition.file);
      write("line", condition.line);
    }
    writer_.EndObject();
  }

  void write(const KernelRecord& kernel) {
    constexpr std::array names = {"OpenCL", "C", "RTL", "Unknown", "HLS"};
    const auto type = static_cast<std::uint32_t>(kernel.type);
    writer_.StartObject();
    write("name", kernel.name);
    write("type", type < names.size() ? names.at(type) : "Unknown");
    write("type_number", type);
    writeList("instance_paths", kernel.instancePaths);
    write("instance_suffix", kernel.instanceSuffix());
    writeList("arguments", kernel.arguments);
    writeList("variables", kernel.variables);
    writeList("hardware_variables", kernel.hardwareVariables);
    writeList("breakable_conditions", kernel.breakableConditions);
    writeList("brams", kernel.brams);
    writer_.EndObject();
  }

  rapidjson::StringBuffer buffer_;
  rapidjson::Writer<rapidjson::StringBuffer> writer_{buffer_};
};

bool isExact(const rapidjson::Value& number) {
  return number.IsString() || number.GetUint64() < std::uint64_t{1} << 53U;
}

TEST(JsonCommand, HoldsTheKernelsOfTheToolForAnyFile) {
  const std::vector<std::string> files = seeds();
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same each time
  const MemoryFile stored;
  ConsolidatedFile tool;
  for (int i = 0; i < rounds(10'000); ++i) {
    stored.write(mutated(files[random() % files.size()], random));
    const Outcome outcome = inspect({"json", stored.path()});
    rapidjson::Document document;
    ASSERT_EQ(jsonFault(outcome.out, document), "") << outcome.out;
    if (outcome.status == 2) {
      EXPECT_TRUE(document.HasMember("error"));
      continue;
    }
    EXPECT_EQ(tool.readExisting(stored.path()), document["complete"].GetBool());
    EXPECT_EQ(outcome.status, document["complete"].GetBool() ? 0 : 1);
    EXPECT_TRUE(document["kernels"] == PlainKernels::of(tool.kernels())) << outcome.out;
    for (const auto& section : document["sections"].GetArray()) {
      EXPECT_TRUE(isExact(section["offset"]));
    }
    tool.close();
  }
}

}  // namespace
}  // namespace consolidator::inspect
