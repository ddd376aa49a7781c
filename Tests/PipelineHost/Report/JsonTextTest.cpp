#include <Report/JsonText.h>

#include <gtest/gtest.h>

using namespace OvPipeline;

namespace {

TEST(JsonTextTest, NestsAndSeparatesMembers) {
    JsonText json;
    json.BeginObject().Key("a").Number(-9007199254740993).Key("b").BeginArray().Null().BeginObject();
    json.EndObject().EndArray().Key("c").BeginArray().EndArray().Key("d").Bool(false).EndObject();
    EXPECT_EQ(R"({
  "a": -9007199254740993,
  "b": [
    null,
    {}
  ],
  "c": [],
  "d": false
})",
              json.Result());
}

TEST(JsonTextTest, EscapesWhatJsonDoesNotTakeInTextsAndKeys) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {
        {"C:\\a \"b\"/", R"("C:\\a \"b\"/")"},
        {"\x01\n\t\x1f\x7f"s, R"("\u0001\u000a\u0009\u001f\u007f")"},
        {"\u009b2J\u202e\u2028\U000E0041", R"("\u009b2J\u202e\u2028\udb40\udc41")"}, // acts on terminals
        {"a\0b"s, R"("a\u0000b")"},
        {"\u00fc \u65e5 \U0001F5A8", "\"\u00fc \u65e5 \U0001F5A8\""}, // the last needs two units of UTF-16
        {"\xed\xa0\x80", R"("\ufffd\ufffd\ufffd")"},                  // half of a pair
    };
    for (const auto& [text, written] : cases) {
        EXPECT_EQ(written, JsonText().Text(text).Result());
        EXPECT_EQ("{\n  " + written + ": null\n}",
                  JsonText().BeginObject().Key(text).Null().EndObject().Result());
    }
}

} // namespace
