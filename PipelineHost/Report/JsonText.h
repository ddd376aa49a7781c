#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace OvPipeline {

/// Builds a JSON text. Inside an object, Key comes before each value. Texts are UTF-8; bytes that are not are
/// replaced, and what would act on a terminal stands by its number. Each member stands on its own line,
/// indented by its level.
class JsonText {
public:
    JsonText& BeginObject() { return Begin('{'); }
    JsonText& EndObject() { return End('}'); }
    JsonText& BeginArray() { return Begin('['); }
    JsonText& EndArray() { return End(']'); }
    JsonText& Key(std::string_view key);

    JsonText& Text(std::string_view text);
    JsonText& Number(long long number) { return Value(std::to_string(number)); }
    /// A number by its digits, with a decimal point or without.
    JsonText& Decimal(std::string_view digits) { return Value(digits); }
    JsonText& Bool(bool value) { return Value(value ? "true" : "false"); }
    JsonText& Null() { return Value("null"); }
    /// What another one has built.
    JsonText& Whole(std::string_view json);

    const std::string& Result() const { return m_text; }
    /// What has been built since it was last taken: of a text that is longer than memory should hold.
    std::string Take() { return std::exchange(m_text, {}); }

private:
    JsonText& Begin(char bracket);
    JsonText& End(char bracket);
    JsonText& Value(std::string_view text);
    void StartValue();

    std::string m_text;
    std::size_t m_depth = 0;
    bool m_isFirst = true; // of its object or array
    bool m_isAfterKey = false;
};

} // namespace OvPipeline
