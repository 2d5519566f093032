#include "inspect/lines/LineTableReader.h"

#include "inspect/lines/SourceLineSet.h"

#include <dwarf.h>
#include <elfutils/libdw.h>
#include <elfutils/libdwfl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_set>

namespace consolidator::inspect {

namespace {

// Debugging information elsewhere is none of the file's.
// NOLINTNEXTLINE(readability-function-size): as the library calls it
int findNothing(Dwfl_Module* /*module*/, void** /*userData*/, const char* /*moduleName*/,
                Dwarf_Addr /*base*/, const char* /*fileName*/, const char* /*debugLink*/,
                GElf_Word /*checksum*/, char** /*found*/) {
  return -1;
}

constexpr Dwfl_Callbacks callbacks{nullptr, findNothing, dwfl_offline_section_address, nullptr};

// The end of the library is that of the process.
void endReading() __attribute__((noreturn));

void endReading() { ::_exit(1); }

struct DwflEnd {
  void operator()(Dwfl* session) const { dwfl_end(session); }
};

// Goes over the units of a DWARF file.
class LineTableWalk {
 public:
  explicit LineTableWalk(Dwarf* dwarf) : dwarf_(dwarf) {}

  void run() {
    Dwarf_Off at = 0;
    Dwarf_Off next = 0;
    std::size_t headerSize = 0;
    int result = 0;
    for (; (result = dwarf_nextcu(dwarf_, at, &next, &headerSize, nullptr, nullptr, nullptr)) == 0;
         at = next) {
      Dwarf_Die unit;
      if (dwarf_offdie(dwarf_, at + headerSize, &unit) == nullptr) {
        ++damaged_;
      } else if (dwarf_hasattr(&unit, DW_AT_stmt_list) != 0) {
        addTable(unit);
      }
    }
    if (result < 0) ++damaged_;
  }

  SourceLines take() {
    SourceLines lines{lines_.take(), {}, !tables_.empty()};
    if (damaged_ > 0) {
      lines.problem = fmt::format("{} of its units cannot be read", damaged_);
    } else if (tables_.empty()) {
      lines.problem = "it holds no line tables";
    }
    return lines;
  }

 private:
  // Units may share a table, which the library then reads once.
  void addTable(Dwarf_Die& unit) {
    Dwarf_Lines* table = nullptr;
    std::size_t rows = 0;
    if (dwarf_getsrclines(&unit, &table, &rows) != 0) {
      ++damaged_;
    } else if (tables_.insert(table).second) {
      addRows(unit, table, rows);
    }
  }

  void addRows(Dwarf_Die& unit, Dwarf_Lines* table, std::size_t rows) {
    const char* path = nullptr;  // of the last row, whose file is the same as a rule
    std::uint32_t file = 0;
    for (std::size_t i = 0; i < rows; ++i) {
      Dwarf_Line* const row = dwarf_onesrcline(table, i);
      const char* const source = dwarf_linesrc(row, nullptr, nullptr);
      int line = 0;
      bool isEnd = false;
      if (source == nullptr || dwarf_lineno(row, &line) != 0 || line <= 0 ||
          dwarf_lineendsequence(row, &isEnd) != 0 || isEnd) {
        continue;
      }
      if (source != path) file = lines_.file(resolved(unit, path = source));
      lines_.add(file, static_cast<std::uint32_t>(line));
    }
  }

  // A path as the library resolves it, which leaves what a table relative to the compile directory
  // says as it is.
  static std::string resolved(Dwarf_Die& unit, std::string_view path) {
    Dwarf_Attribute attribute;
    if (path.starts_with('/')) return std::string(path);
    const char* const folder = dwarf_formstring(dwarf_attr(&unit, DW_AT_comp_dir, &attribute));
    if (folder == nullptr || *folder != '/') return std::string(path);
    return fmt::format("{}/{}", folder, path);
  }

  Dwarf* dwarf_;
  SourceLineSet lines_;
  std::unordered_set<const Dwarf_Lines*> tables_;
  std::uint64_t damaged_ = 0;  // units
};

SourceLines libraryFailure() { return {{}, dwfl_errmsg(-1), false}; }

}  // namespace

SourceLines readLineTables(int descriptor) {
  const std::unique_ptr<Dwfl, DwflEnd> session(dwfl_begin(&callbacks));
  if (!session) return libraryFailure();
  Dwfl_Module* const module = dwfl_report_offline(session.get(), "dwarf", "dwarf", descriptor);
  if (module == nullptr) return libraryFailure();
  dwfl_report_end(session.get(), nullptr, nullptr);
  Dwarf_Addr bias = 0;
  Dwarf* const dwarf = dwfl_module_getdwarf(module, &bias);
  if (dwarf == nullptr) return libraryFailure();
  dwarf_new_oom_handler(dwarf, endReading);
  LineTableWalk walk(dwarf);
  walk.run();
  return walk.take();
}

}  // namespace consolidator::inspect
