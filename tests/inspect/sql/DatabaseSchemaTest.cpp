#include "inspect/coverage/KernelCoverage.h"
#include "inspect/diff/Differences.h"
#include "inspect/output/Utf8.h"
#include "inspect/sql/SqlFixture.h"
#include "model/RandomKernels.h"
#include "support/FullContainer.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

class DatabaseSchemaTest : public SqlFixture {
 protected:
  /// How SQLite goes about a query, in one text.
  static std::string planOf(const DatabaseQuery& database, const std::string& query) {
    std::string plan;
    for (const std::string& row : database.rows("EXPLAIN QUERY PLAN " + query)) plan += row + "\n";
    return plan;
  }
};

TEST_F(DatabaseSchemaTest, MarksDatabase) {
  const DatabaseQuery database = databaseOf(fullContainer());
  EXPECT_EQ(database.row("PRAGMA application_id"), "1668182892");
  EXPECT_EQ(database.row("PRAGMA user_version"), "1");
  EXPECT_EQ(database.row("PRAGMA integrity_check"), "ok");
  EXPECT_TRUE(database.rows("PRAGMA foreign_key_check").empty());
}

TEST_F(DatabaseSchemaTest, FindsByLocationWithoutScan) {
  const DatabaseQuery database = databaseOf(fullContainer());
  for (const std::string source : {"logic_location", "instance_bit", "register_at"}) {
    const std::string plan =
        planOf(database, "SELECT bit FROM " + source + " WHERE first = 5 AND second = 6");
    EXPECT_NE(plan.find("(first=? AND second=?)"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("SCAN l"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("SCAN b"), std::string::npos) << plan;
  }
}

TEST_F(DatabaseSchemaTest, FindsByNameWithoutScan) {
  const DatabaseQuery database = databaseOf(fullContainer());
  for (const std::string column :
       {"kernel.name", "argument.name", "argument.second", "variable.name", "variable.second",
        "hardware_variable.rtl_name", "instance_path.path", "bram.name", "file.real_path"}) {
    const std::string table = column.substr(0, column.find('.'));
    const std::string plan =
        planOf(database, "SELECT * FROM " + table + " WHERE " + column + " = 'a'");
    EXPECT_NE(plan.find("SEARCH"), std::string::npos) << plan;
  }
}

TEST_F(DatabaseSchemaTest, RemovesFileWithoutScan) {
  const DatabaseQuery database = databaseOf(fullContainer());
  for (const std::string child :
       {"section.file_id", "kernel.file_id", "instance_path.kernel_id", "argument.kernel_id",
        "variable.kernel_id", "instance_bit.argument_id", "instance_bit.variable_id",
        "hardware_variable.kernel_id", "logic_location.hardware_variable_id",
        "breakable_condition.kernel_id", "bram.kernel_id"}) {
    const std::string table = child.substr(0, child.find('.'));
    const std::string plan = planOf(database, "DELETE FROM " + table + " WHERE " + child + " = 1");
    EXPECT_NE(plan.find("SEARCH"), std::string::npos) << plan;
  }
}

TEST_F(DatabaseSchemaTest, TellsWhoIsAtLocation) {
  const DatabaseQuery database = databaseOf(fullContainer());
  EXPECT_EQ(database.rows("SELECT kernel, rtl_name, register, name, instance, bit FROM register_at "
                          "WHERE first = 7 AND second = 8"),
            (std::vector<std::string>{"second|reg|reg|||1"}));
  EXPECT_EQ(database.rows("SELECT kernel, rtl_name, register, name, instance, bit FROM register_at "
                          "WHERE first = 3 AND second = 4"),
            (std::vector<std::string>{"second||a_r|a|0|1", "second||a_r|a|0|1"}));
}

// The rows of the view as the class that computes the same would have them.
std::vector<std::string> coverageRows(const std::string& bytes) {
  const auto file = consolidated::File::fromBytes(bytes);
  std::vector<std::string> rows;
  for (const consolidated::Kernel& kernel : file->kernels()) {
    const KernelCoverage coverage(kernel);
    for (const VariableKind kind : {VariableKind::Argument, VariableKind::Variable}) {
      std::uint32_t instance = 0;
      for (const consolidated::Text& path : kernel.instancePaths()) {
        coverage.forEach(kind, instance, [&](const auto& variable, const BitCoverage& found) {
          std::string row(kernel.name().view());
          row.append("|").append(std::to_string(instance)).append("|").append(path.view());
          row.append(kind == VariableKind::Argument ? "|argument|" : "|variable|");
          row.append(variable.name).append("|").append(variable.registerName);
          row.append("|").append(nameOf(found.state)).append("|");
          row.append(std::to_string(found.bits)).append("|").append(std::to_string(found.highest));
          rows.push_back(wellFormed(row));
        });
        ++instance;
      }
    }
  }
  return rows;
}

// Names that often fit together, and stored bits.
KernelRecord coveredKernel(RandomKernels& random) {
  KernelRecord kernel = random.next(4);
  const auto name = [&] {
    constexpr std::array<std::string_view, 5> texts{"/t/k_1", "/t/k_10", "/t", "/r", "k"};
    return std::string(texts.at(random.below(texts.size())));
  };
  for (std::size_t i = random.below(4); i-- > 0;) kernel.instancePaths.append(name());
  for (std::size_t i = random.below(4); i-- > 0;) kernel.addArgument(name(), "r", "int");
  for (std::size_t i = random.below(8); i-- > 0;) {
    kernel.setLogicLocation(name() + name() + "/r", static_cast<std::uint32_t>(random.below(3)), 1,
                            1);
  }
  return kernel;
}

TEST_F(DatabaseSchemaTest, CoversWhatTheRuleSays) {
  RandomKernels random(11);
  std::set<std::string> states;
  for (int round = 0; round < 60; ++round) {
    const std::string bytes =
        fileOf({coveredKernel(random), coveredKernel(random), coveredKernel(random)});
    const DatabaseQuery database = databaseOf(bytes);
    std::vector<std::string> found = database.rows(
        "SELECT kernel, instance, path, what, name, register, state, bits, highest FROM coverage");
    std::vector<std::string> wanted = coverageRows(bytes);
    std::ranges::sort(found);
    std::ranges::sort(wanted);
    EXPECT_EQ(found, wanted);
    for (std::string& state : database.rows("SELECT DISTINCT state FROM coverage")) {
      states.insert(std::move(state));
    }
  }
  EXPECT_EQ(states, (std::set<std::string>{"doubtful", "none", "with_gap", "without_gap"}));
}

}  // namespace
}  // namespace consolidator::inspect
