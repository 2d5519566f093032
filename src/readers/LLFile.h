#pragma once

#include "readers/InputFile.h"
#include "readers/RegisterIndex.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace consolidator {

class NetBit;
class SharedNets;

/// Reader of the logic-location file of bitstream generation, which says where in the device's
/// configuration memory each bit of a net lives:
///
///     ; comment
///     Revision 3
///     Bit 1234 0x00401f80 17 die0 0 Block=X1Y2 Latch=AQ Net=top/u0/acc_reg[5]
///
/// A line that starts with the word "Bit" has a number, the location (a hexadecimal number of which
/// the low 32 bits count, and a decimal one), a word, another number, and further words; the first
/// of these that starts with "Net=" names the net. The reader adds locations to kernels that are
/// known before: those where a net lies inside an instance and is the register of an argument or
/// a variable.
///
/// The files reach gigabytes and few of their lines concern a kernel, so a line is read field by
/// field only if a word that may be its net ends in the name of a known register.
class LLFile : public InputFile {
 public:
  /// Greatest length of a line; longer ones are ignored as a whole.
  static constexpr std::size_t lineBound = 2047;

  using InputFile::InputFile;

  /// Takes a copy of the kernels to which parse() adds. To be called before it.
  void setKernels(const KernelList& kernels);

  /// Sets the bits of all nets that are registers of kernels as hardware variables of these, named
  /// by the hierarchical name with a "/" in front. Lines that say nothing about a kernel, malformed
  /// ones included, are skipped silently; only a reader that is not valid makes the result false.
  bool parse() override;

 private:
  void readBit(std::string_view line, RegisterIndex& registers, SharedNets& sharedNets);
  bool observeUnknown(std::string_view line, const RegisterIndex& registers);
  bool observeIndex(std::string_view line, const std::optional<NetBit>& bit,
                    std::optional<std::uint32_t> index);
  bool observeBit(std::string_view line, const std::optional<NetBit>& bit,
                  std::optional<std::uint32_t> index, std::uint64_t address,
                  const LogicLocation& location, RegisterIndex& registers);
  bool replaces(const RegisterIndex::Found& found, std::uint32_t bit,
                const LogicLocation& location);
  void observeComment(std::string_view line);
  void observeOther(std::string_view line);

  std::vector<std::size_t> knownBefore_;  // of an observed reader: hardware variables of kernels
};

}  // namespace consolidator
