#pragma once

#include "lookup/KeyedList.h"
#include "model/BreakableCondition.h"
#include "model/HardwareVariable.h"
#include "model/VariableRecord.h"

#include <boost/container/deque.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Kind of a kernel. Files may hold other numbers; they are kept, and rendered as "Unknown".
enum class KernelType : std::uint32_t { OpenCL = 0, C = 1, RTL = 2, Unknown = 3, HLS = 4 };

/// Texts that are found by themselves.
struct TextKey : TextKeyHash {
  std::string_view operator()(const std::string& text) const { return text; }
};

using TextList = KeyedList<std::string, TextKey>;

/// Everything that is known about one accelerator kernel: a plain value that owns all it holds.
/// Lists keep the order in which their entries were first added; texts are byte strings and
/// compared exactly.
struct KernelRecord {
  std::string name;  ///< the key by which records are matched
  TextList instancePaths;
  KernelType type = KernelType::Unknown;
  VariableList arguments;
  VariableList variables;
  HardwareVariableList hardwareVariables;
  BreakableConditionList breakableConditions;
  std::vector<std::string> brams;  ///< duplicates are allowed

  /// Clears everything except `hardwareVariables`.
  void reset();

  /// Appends the path unless an equal one is present.
  void addInstancePath(std::string_view path);

  /// Appends an argument without bits unless one of that name is present.
  void addArgument(std::string_view argumentName, std::string_view second, std::string_view cType);

  /// Appends a variable without bits unless one of that name is present.
  void addVariable(std::string_view variableName, std::string_view second, std::string_view cType);

  /// Appends the variable with its locations unless one of that `rtlName` is present.
  void addHardwareVariable(HardwareVariable variable);

  /// Sets the location of one bit of the first hardware variable of that name, which is appended
  /// if absent. A list that is too short is first extended with (0, 0) up to the bit index, so it
  /// takes up to 16 bytes times the index; callers bound it.
  void setLogicLocation(std::string_view rtlName, std::uint32_t bitIndex, std::uint32_t first,
                        std::uint32_t second);

  /// The width of an argument or variable in bits, see VariableRecord::bitWidth(). Other code
  /// relies on this name.
  static std::uint32_t bitWidth(const VariableRecord& variable) { return variable.bitWidth(); }

  /// What the JSON text appends to each instance path: "/U0" if the type of an argument contains
  /// "float" or "double", else "/inst".
  std::string_view instanceSuffix() const;

  /// Appends a condition with empty file and line 0 unless an equal one is present.
  void addBreakableCondition(ConditionKind kind, std::string_view condition);

  /// Appends a copy unless an equal condition is present.
  void addBreakableCondition(const BreakableCondition& condition);

  /// Appends the name, even if it is present. Not called here, since RAM reports add nothing, but
  /// other code relies on it.
  void addBRAM(std::string_view bramName);

  /// Removes trivially true conditions and rewrites the others in prefix form with qualified
  /// names. A second call swaps the operands back, see ConditionPreparer.
  void prepareBreakableConditions();

  /// Appends the binary form: the fields in the order above, each list as a count followed by its
  /// elements. Returns how many bytes the writer took, including those that still wait for its
  /// stream; fewer once the stream has failed.
  std::uint64_t writeBinary(ByteWriter& out) const;

  /// Reads the binary form into this freshly made record. The only check is that the bytes are
  /// there: a short read returns false and keeps what was read so far. Lists take equal entries,
  /// too. A null stream returns false and changes nothing.
  bool readBinary(ByteReader& in);

  /// Skips a binary form, which takes no memory. Returns false where readBinary() does.
  static bool skipBinary(ByteReader& in);

  /// Appends the JSON object of this kernel; its conditions should have been prepared before.
  void writeJson(ByteWriter& out) const;

  friend bool operator==(const KernelRecord&, const KernelRecord&) = default;
};

/// Kernels are found by `name`.
struct KernelKey : TextKeyHash {
  std::string_view operator()(const KernelRecord& kernel) const { return kernel.name; }
};

/// Records in an order. There may be very many of these large values: in blocks they need not be
/// moved when more of them come, which would take room for all of them twice. With blocks of eight,
/// a large hierarchy takes 1.1 times the CPU time; those of std::deque are smaller still.
using KernelSequence =
    boost::container::deque<KernelRecord, void,
                            boost::container::deque_options_t<boost::container::block_size<512>>>;

using KernelList = KeyedList<KernelRecord, KernelKey, KernelSequence>;

}  // namespace consolidator
