#include "inspect/output/JsonDocument.h"
#include "inspect/output/PlainText.h"
#include "inspect/output/Utf8.h"
#include "support/Bytes.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

template <typename Fill>
std::string documentOf(Fill fill, JsonLayout layout = JsonLayout::Compact) {
  const MemoryFile file;
  OutputSink out(file.descriptor());
  JsonDocument document(out, layout);
  fill(document);
  document.end();
  EXPECT_TRUE(out.flush());
  return file.read();
}

std::string documentOfText(std::string_view text) {
  return documentOf([&](JsonDocument& document) { document.value(text); });
}

std::string byRapidJson(std::string_view text) {
  const std::string mended = wellFormed(text);
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  writer.String(mended.data(), static_cast<rapidjson::SizeType>(mended.size()));
  return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

std::string pairsOf(const std::vector<std::uint32_t>& numbers) {
  std::string stored;
  for (const std::uint32_t number : numbers) stored += u32(number);
  return stored;
}

TEST(JsonDocument, WritesEachKindOfValue) {
  const auto fill = [](JsonDocument& document) {
    document.beginObject().member("text", "x").member("number", std::uint32_t{4294967295U});
    document.member("negative", std::int32_t{-2147483647 - 1}).member("true", true);
    document.key("list").beginArray().null().value(false).endArray();
    document.key("empty").beginObject().endObject().endObject();
  };
  EXPECT_EQ(documentOf(fill),
            "{\"text\":\"x\",\"number\":4294967295,\"negative\":-2147483648,\"true\":true,"
            "\"list\":[null,false],\"empty\":{}}\n");
}

TEST(JsonDocument, LaysADocumentOutForPeople) {
  const std::string stored = pairsOf({1, 2, 3, 4});
  const auto fill = [&](JsonDocument& document) {
    document.beginObject().member("a", "b");
    document.member("c", consolidated::Locations(stored, 0)).member("d", "e").endObject();
  };
  EXPECT_EQ(documentOf(fill, JsonLayout::Pretty),
            "{\n  \"a\": \"b\",\n  \"c\": [\n    [\n      1,\n      2\n    ],\n    [\n      3,\n"
            "      4\n    ]\n  ],\n  \"d\": \"e\"\n}\n");
}

TEST(JsonDocument, WritesNumbersAboveTheExactOnesAsTexts) {
  const auto written = [](std::uint64_t number) {
    return documentOf([&](JsonDocument& document) { document.value(number); });
  };
  EXPECT_EQ(written(0), "0\n");
  EXPECT_EQ(written(9007199254740991U), "9007199254740991\n");
  EXPECT_EQ(written(9007199254740992U), "\"9007199254740992\"\n");
  EXPECT_EQ(written(18446744073709551615U), "\"18446744073709551615\"\n");
}

TEST(JsonDocument, EscapesEachAsciiCharacterAsItMust) {
  for (int c = 0; c < 0x7F; ++c) {
    const std::string text = {'<', static_cast<char>(c), '>'};
    EXPECT_EQ(documentOfText(text), byRapidJson(text)) << c;
  }
}

TEST(JsonDocument, EscapesWhatNoTerminalShouldGet) {
  EXPECT_EQ(documentOfText("\x7F"), "\"\\u007F\"\n");
  EXPECT_EQ(documentOfText("\xC2\x9B"), "\"\\u009B\"\n");
  EXPECT_EQ(documentOfText("\xE2\x80\xAE"), "\"\\u202E\"\n");
  EXPECT_EQ(documentOfText("\xF3\xA0\x81\x81"), "\"\\uDB40\\uDC41\"\n");
  EXPECT_EQ(documentOfText("\xC2\xA0\xF0\x9F\x98\x80"), "\"\xC2\xA0\xF0\x9F\x98\x80\"\n");
}

TEST(JsonDocument, WritesAnyBytesMendedAndShowable) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same each time
  constexpr std::string_view bytes =
      "ab\"\\\n\x01\x7F\x80\x81\xA0\xAE\xBF\xC2\xC3\xE2\x82\xAC\xF0\xF3\x9F\x98\xFF";
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    for (auto size = random() % 40; size > 0; --size) text += bytes[random() % bytes.size()];
    std::string written = documentOfText(text);
    rapidjson::Document read;
    read.Parse(written.data(), written.size());
    ASSERT_TRUE(read.IsString());
    EXPECT_EQ(std::string(read.GetString(), read.GetStringLength()), wellFormed(text));
    written.pop_back();
    EXPECT_EQ(plain(written), written);
  }
}

TEST(JsonDocument, CountsTextsThatAreNotUtf8) {
  documentOf([](JsonDocument& document) {
    document.beginArray().value("fine").value("\xC3\xA4").value("\xC3").value("\xFF\xFF");
    document.endArray();
    EXPECT_EQ(document.lossyTexts(), 2U);
  });
}

TEST(JsonDocument, WritesPairsAsListsOfTwoNumbers) {
  const std::string stored = pairsOf({0, 9, 10, 99, 4294967295U, 4294967295U, 1000000, 123456789});
  const auto fill = [&](JsonDocument& document) {
    document.beginArray().value(consolidated::Locations(stored, 0));
    document.value(consolidated::Locations()).value(true).endArray();
  };
  EXPECT_EQ(documentOf(fill),
            "[[[0,9],[10,99],[4294967295,4294967295],[1000000,123456789]],[],true]\n");
}

TEST(JsonDocument, WritesManyPairsAsAPlainWriterDoes) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp)
  std::vector<std::uint32_t> numbers;
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    numbers.push_back(static_cast<std::uint32_t>(random() >> random() % 32));
    expected += i % 2 == 0 ? (i == 0 ? "[" : ",[") : ",";
    expected += std::to_string(numbers.back()) + (i % 2 == 0 ? "" : "]");
  }
  const std::string stored = pairsOf(numbers);
  EXPECT_EQ(documentOf([&](JsonDocument& document) {
              document.value(consolidated::Locations(stored, 0));
            }),
            "[" + expected + "]\n");
}

}  // namespace
}  // namespace consolidator::inspect
