// A reader is made to parse once. Who does it again gets nothing again: the input is at its end.

#include "readers/AuxiliaryXMLFile.h"
#include "readers/HLSFile.h"
#include "readers/HierarchyFile.h"
#include "readers/LLFile.h"
#include "readers/RAMFile.h"
#include "support/InputSamples.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator {
namespace {

// The state of the reader is that of its stream, which has met the end of the file.
void expectNothingOfASecondParse(InputFile& reader, std::size_t records, bool secondResult) {
  EXPECT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.parse());
  EXPECT_FALSE(reader.isValid());
  EXPECT_EQ(reader.kernels().size(), records);
  EXPECT_EQ(reader.parse(), secondResult);
  EXPECT_EQ(reader.kernels().size(), records);
}

// Reads a text in memory, and the same text from a file.
template <typename Reader>
void expectNothingOfASecondParse(std::string_view text, bool secondResult) {
  const TemporaryFolder folder;
  Reader first("sample", text);
  ASSERT_TRUE(first.parse());
  const std::size_t records = first.kernels().size();
  Reader inMemory("sample", text);
  expectNothingOfASecondParse(inMemory, records, secondResult);
  const std::string path = folder.write("sample", text);
  Reader inFile(path.c_str());
  expectNothingOfASecondParse(inFile, records, secondResult);
}

TEST(SecondParse, AddsNothing) {
  expectNothingOfASecondParse<HierarchyFile>(hierarchySample, true);
  expectNothingOfASecondParse<HLSFile>(hlsSample, false);
  expectNothingOfASecondParse<AuxiliaryXMLFile>(auxiliarySample, false);
  expectNothingOfASecondParse<LLFile>(logicLocationSample, false);
}

TEST(SecondParse, OfARamReportAddsNothing) {
  const KernelList kernels;
  RAMFile reader("sample", ramReportSample, kernels);
  expectNothingOfASecondParse(reader, 0, false);
}

TEST(SecondParse, OfInputsWithoutALineEndOrWithoutAnythingAddsNothing) {
  expectNothingOfASecondParse<HierarchyFile>("k:", true);
  expectNothingOfASecondParse<HierarchyFile>("", true);
  expectNothingOfASecondParse<HLSFile>("", false);
  expectNothingOfASecondParse<AuxiliaryXMLFile>("<ak:arg", false);
  expectNothingOfASecondParse<LLFile>("; end", false);
}

}  // namespace
}  // namespace consolidator
