#include "readers/HierarchyFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

struct Reading {
  bool result = false;
  float version = 0;
  std::vector<std::string> names;
  std::string messages;
};

Reading parseVersion(std::string_view text) {
  const StreamCapture capture;
  HierarchyFile reader("in.hierarchy", text);
  Reading reading;
  reading.result = reader.parse();
  reading.version = reader.version();
  for (const KernelRecord& kernel : reader.kernels()) reading.names.push_back(kernel.name);
  reading.messages = capture.err();
  EXPECT_EQ(capture.out(), "");
  return reading;
}

std::string refusal(std::string_view version) {
  return "Unsupported hierarchy file: in.hierarchy\nVersion: " + std::string(version) +
         "\nSupported Version: 1\n";
}

using Names = std::vector<std::string>;

TEST(HierarchyFileVersion, WithoutAVersionLineItStaysMinusOne) {
  const Reading reading = parseVersion("a:");
  EXPECT_TRUE(reading.result);
  EXPECT_EQ(reading.version, -1.0F);
  EXPECT_EQ(reading.names, Names{"a"});
}

TEST(HierarchyFileVersion, UpToOneIsAccepted) {
  for (const auto& [text, version] : {std::pair{"1.0"sv, 1.0F},
                                      {"1"sv, 1.0F},
                                      {"+1"sv, 1.0F},
                                      {".5"sv, 0.5F},
                                      {"1."sv, 1.0F},
                                      {"0"sv, 0.0F},
                                      {"-7.25"sv, -7.25F},
                                      {"1e-3"sv, 0.001F},
                                      {"10e-1"sv, 1.0F},
                                      {"1.00000001"sv, 1.0F}}) {
    const Reading reading = parseVersion("version: " + std::string(text) + " a:");
    EXPECT_TRUE(reading.result) << text;
    EXPECT_EQ(reading.version, version) << text;
    EXPECT_EQ(reading.names, Names{"a"}) << text;
    EXPECT_EQ(reading.messages, "") << text;
  }
}

TEST(HierarchyFileVersion, AboveOneIsRefusedWithThreeLines) {
  for (const auto& [text, shown] : {std::pair{"1.01"sv, "1.01"sv},
                                    {"2.0"sv, "2"sv},
                                    {"1.5"sv, "1.5"sv},
                                    {"1e6"sv, "1e+06"sv},
                                    {"123456.7"sv, "123457"sv},
                                    {"3a"sv, "3"sv}}) {
    const Reading reading = parseVersion("version: " + std::string(text) + " a:");
    EXPECT_FALSE(reading.result) << text;
    EXPECT_EQ(reading.messages, refusal(shown)) << text;
  }
}

TEST(HierarchyFileVersion, ARefusalAfterKernelsKeepsThoseStored) {
  const Reading reading = parseVersion("a: b: version: 2.0 c:");
  EXPECT_FALSE(reading.result);
  EXPECT_EQ(reading.names, Names{"a"});
  EXPECT_EQ(reading.messages, refusal("2"));
}

TEST(HierarchyFileVersion, TheNumberMayStandOnAnotherLine) {
  const Reading reading = parseVersion("version:\n\n\t1.0\r\na:");
  EXPECT_TRUE(reading.result);
  EXPECT_EQ(reading.version, 1.0F);
  EXPECT_EQ(reading.names, Names{"a"});
}

TEST(HierarchyFileVersion, TheLastAcceptedNumberCounts) {
  const Reading reading = parseVersion("version: 0.5 version: 0.25 a:");
  EXPECT_EQ(reading.version, 0.25F);
}

TEST(HierarchyFileVersion, WhatFollowsTheDigitsIsTheNextWord) {
  EXPECT_EQ(parseVersion("version: 1.0f a:").names, Names{"a"}) << "f is a header without a name";
  EXPECT_EQ(parseVersion("version: 1.0fx: a:").names, (Names{"fx", "a"}));
  EXPECT_EQ(parseVersion("version: 0x1p3 a:").names, (Names{"x1p", "a"}));
  EXPECT_EQ(parseVersion("version: 1.0.5 a:").names, (Names{".", "a"}));
  EXPECT_EQ(parseVersion("version: 1,5 a:").names, (Names{",", "a"}));
  EXPECT_EQ(parseVersion("version: 1.0type: a: b:").names, Names{"b"});
}

TEST(HierarchyFileVersion, OverflowReadsAsTheLargestFloatAndIsRefused) {
  const Reading reading = parseVersion("version: 1e99 a:");
  EXPECT_FALSE(reading.result);
  EXPECT_EQ(reading.version, FLT_MAX);
  EXPECT_EQ(reading.messages, refusal("3.40282e+38"));
}

TEST(HierarchyFileVersion, NegativeOverflowEndsTheReading) {
  const Reading reading = parseVersion("a: version: -1e99 b:");
  EXPECT_TRUE(reading.result);
  EXPECT_EQ(reading.version, -FLT_MAX);
  EXPECT_EQ(reading.names, Names{"a"});
  EXPECT_EQ(reading.messages, "");
}

TEST(HierarchyFileVersion, WithoutANumberItEndsTheReadingAndKeepsWhatWasCollected) {
  for (const std::string_view number :
       {"abc"sv, "."sv, "+"sv, "-"sv, "1e"sv, "1e+"sv, "nan"sv, "inf"sv, "#1.0"sv, "e5"sv, ""sv}) {
    const Reading reading =
        parseVersion("a: type: c b: version: " + std::string(number) + "\nc:\nd:");
    EXPECT_TRUE(reading.result) << number;
    EXPECT_EQ(reading.names, (Names{"a", "b"})) << number;
    EXPECT_EQ(reading.messages, "") << number;
  }
}

TEST(HierarchyFileVersion, WithoutANumberAtTheEndNothingIsLost) {
  for (const std::string_view text : {"a: version:"sv, "a: version: \n"sv}) {
    const Reading reading = parseVersion(text);
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.names, Names{"a"});
    EXPECT_EQ(reading.messages, "");
  }
}

}  // namespace
}  // namespace consolidator
