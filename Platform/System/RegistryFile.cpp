#include "System/RegistryFile.h"

#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"

#include <utf16units.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>

namespace OvPlatform {
namespace {

constexpr std::string_view firstLine = "OvRegistry 1";
constexpr std::array<std::wstring_view, 4> roots = {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER",
                                                    L"HKEY_LOCAL_MACHINE", L"HKEY_USERS"};

// Values by the word that begins them. What has no word of its own is written as hex(type).
struct TextForm {
    std::string_view word;
    DWORD type;
};
constexpr std::array<TextForm, 3> textForms = {
    {{"", REG_SZ}, {"expand:", REG_EXPAND_SZ}, {"multi:", REG_MULTI_SZ}}};
struct NumberForm {
    std::string_view word;
    DWORD type;
    std::size_t bytes;
};
constexpr std::array<NumberForm, 2> numberForms = {{{"dword:", REG_DWORD, 4}, {"qword:", REG_QWORD, 8}}};

struct EscapeForm {
    char letter;
    wchar_t unit;
};
constexpr std::array<EscapeForm, 6> escapes = {
    {{'\\', L'\\'}, {'"', L'"'}, {'n', L'\n'}, {'r', L'\r'}, {'t', L'\t'}, {'0', L'\0'}}};

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

bool TakeWord(std::string_view& text, std::string_view word) {
    if (text.substr(0, word.size()) != word) return false;
    text.remove_prefix(word.size());
    return true;
}

template <typename T>
std::optional<T> ParseHex(std::string_view digits) {
    T number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

class Parser {
public:
    explicit Parser(std::string_view bytes) : m_rest(bytes) {}

    RegistryContents Parse() {
        if (m_rest.size() > maximumRegistryFileBytes) Refuse("the file is larger than 4 MB");
        if (m_rest.substr(0, 3) == "\xEF\xBB\xBF") m_rest.remove_prefix(3);
        if (NextLine() != firstLine) Refuse("the first line is not \"OvRegistry 1\"");
        while (!m_rest.empty())
            ParseLine(NextLine());
        return std::move(m_contents);
    }

private:
    [[noreturn]] void Refuse(const std::string& what) const { throw RegistryFileError(m_line, what); }

    std::string_view NextLine() {
        ++m_line;
        const auto end = m_rest.find('\n');
        const std::string_view line = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return Trim(line);
    }

    void ParseLine(std::string_view line) {
        if (line.empty() || line.front() == ';') return;
        if (line.front() == '[')
            ParseKey(line);
        else
            ParseValue(line);
    }

    void ParseKey(std::string_view line) {
        if (line.back() != ']' || line.size() < 3) Refuse("a key has no closing bracket");
        const std::wstring path = FromUtf8(line.substr(1, line.size() - 2));
        if (path.size() > maximumRegistryPathUnits) Refuse("the key's path is too long");
        if (path.find(L'\0') != std::wstring::npos) Refuse("the key's path holds a zero");
        if (path.back() == L'\\' || path.find(L"\\\\") != std::wstring::npos)
            Refuse("the key's path has an empty part");
        const std::wstring root = FoldRegistryName(path.substr(0, path.find(L'\\')));
        if (std::none_of(roots.begin(), roots.end(),
                         [&](auto name) { return FoldRegistryName(name) == root; }))
            Refuse("the key begins with no known root");
        m_key = &m_contents.Create(path);
    }

    void ParseValue(std::string_view line) {
        if (m_key == nullptr) Refuse("a value stands before the first key");
        RegistryValue value;
        if (!TakeWord(line, "@")) value.name = ParseText(line);
        if (value.name.size() > maximumRegistryNameUnits) Refuse("the value's name is too long");
        line = Trim(line);
        if (!TakeWord(line, "=")) Refuse("a value has no '='");
        line = Trim(line);
        ParseContents(line, value);
        if (!Trim(line).empty()) Refuse("there is something behind the value");
        const std::wstring folded = FoldRegistryName(value.name);
        if (!m_key->values.emplace(folded, std::move(value)).second)
            Refuse("the value stands twice in its key");
    }

    void ParseContents(std::string_view& line, RegistryValue& value) {
        for (const TextForm& form : textForms) {
            std::string_view rest = line;
            if (!TakeWord(rest, form.word) || rest.empty() || rest.front() != '"') continue;
            line = rest;
            value.type = form.type;
            value.text = ParseText(line);
            return;
        }
        for (const NumberForm& form : numberForms) {
            if (!TakeWord(line, form.word)) continue;
            value.type = form.type;
            value.bytes = ParseNumber(line, form.bytes);
            line = {};
            return;
        }
        if (!TakeWord(line, "hex")) Refuse("the value is of no known form");
        value.type = REG_BINARY;
        if (TakeWord(line, "(")) {
            const auto end = line.find(')');
            const auto type = ParseHex<DWORD>(line.substr(0, end));
            if (end == std::string_view::npos || !type) Refuse("the value's type is no number");
            value.type = *type;
            if (value.IsText()) Refuse("text is not written in hexadecimal");
            line.remove_prefix(end + 1);
        }
        if (!TakeWord(line, ":")) Refuse("the value has no ':'");
        ParseBytes(line, value.bytes);
        line = {};
    }

    std::vector<BYTE> ParseNumber(std::string_view digits, std::size_t bytes) const {
        const auto number = digits.size() <= 2 * bytes ? ParseHex<ULONGLONG>(digits) : std::nullopt;
        if (!number) Refuse("the number is malformed");
        std::vector<BYTE> result(bytes);
        for (std::size_t index = 0; index < bytes; ++index)
            result[index] = static_cast<BYTE>(*number >> (8 * index));
        return result;
    }

    void ParseBytes(std::string_view text, std::vector<BYTE>& bytes) const {
        text = Trim(text);
        while (!text.empty()) {
            const auto comma = text.find(',');
            const auto byte = ParseHex<BYTE>(Trim(text.substr(0, comma)));
            if (!byte) Refuse("the bytes are malformed");
            bytes.push_back(*byte);
            if (comma == std::string_view::npos) return;
            text.remove_prefix(comma + 1);
            if (text.empty()) Refuse("the bytes end in a comma");
        }
    }

    /// Takes a quoted text from the front of the line.
    std::wstring ParseText(std::string_view& line) const {
        if (!TakeWord(line, "\"")) Refuse("a text does not begin with a quote");
        std::wstring text;
        std::string plain;
        const auto flush = [&] {
            text += FromUtf8(plain);
            plain.clear();
        };
        while (!line.empty() && line.front() != '"') {
            if (line.front() != '\\') {
                plain += line.front();
                line.remove_prefix(1);
                continue;
            }
            flush();
            line.remove_prefix(1);
            text += ParseEscape(line);
        }
        if (!TakeWord(line, "\"")) Refuse("a text does not end with a quote");
        flush();
        return text;
    }

    wchar_t ParseEscape(std::string_view& line) const {
        if (TakeWord(line, "u")) {
            const auto unit = line.size() >= 4 ? ParseHex<WORD>(line.substr(0, 4)) : std::nullopt;
            if (!unit) Refuse("\\u is not followed by four digits");
            line.remove_prefix(4);
            return static_cast<wchar_t>(*unit);
        }
        for (const EscapeForm& escape : escapes) {
            if (line.empty() || line.front() != escape.letter) continue;
            line.remove_prefix(1);
            return escape.unit;
        }
        Refuse("a backslash is followed by no known letter");
    }

    std::string_view m_rest;
    std::size_t m_line = 0;
    RegistryContents m_contents;
    RegistryKey* m_key = nullptr;
};

constexpr std::string_view hexDigits = "0123456789abcdef";

void PrintHex(ULONGLONG number, int digits, std::string& out) {
    for (int place = digits - 1; place >= 0; --place)
        out += hexDigits[number >> (4 * place) & 15];
}

void PrintText(std::wstring_view text, std::string& out) {
    out += '"';
    std::wstring plain;
    const auto flush = [&] {
        out += ToUtf8(plain);
        plain.clear();
    };
    for (std::size_t index = 0; index < text.size(); ++index) {
        const wchar_t unit = text[index];
        const auto escape = std::find_if(escapes.begin(), escapes.end(),
                                         [&](const EscapeForm& form) { return form.unit == unit; });
        if (escape != escapes.end()) {
            flush();
            out += '\\';
            out += escape->letter;
        } else if (unit < 0x20 || Utf16::IsSurrogate(unit)) {
            // Surrogates one by one, so that a lone one survives.
            flush();
            out += "\\u";
            PrintHex(static_cast<ULONGLONG>(unit), 4, out);
        } else {
            plain += unit;
        }
    }
    flush();
    out += '"';
}

void PrintBytes(const RegistryValue& value, std::string& out) {
    for (const NumberForm& form : numberForms) {
        if (value.type != form.type || value.bytes.size() != form.bytes) continue;
        ULONGLONG number = 0;
        for (std::size_t index = form.bytes; index-- > 0;)
            number = number << 8 | value.bytes[index];
        out += form.word;
        PrintHex(number, static_cast<int>(2 * form.bytes), out);
        return;
    }
    out += "hex";
    if (value.type != REG_BINARY) {
        char digits[16];
        out += '(';
        out.append(digits, std::to_chars(digits, digits + sizeof(digits), value.type, 16).ptr);
        out += ')';
    }
    out += ':';
    for (std::size_t index = 0; index < value.bytes.size(); ++index) {
        if (index > 0) out += ',';
        PrintHex(value.bytes[index], 2, out);
    }
}

void PrintValue(const RegistryValue& value, std::string& out) {
    if (value.name.empty())
        out += '@';
    else
        PrintText(value.name, out);
    out += '=';
    const auto form = std::find_if(textForms.begin(), textForms.end(),
                                   [&](const TextForm& text) { return text.type == value.type; });
    if (form != textForms.end()) {
        out += form->word;
        PrintText(value.text, out);
    } else {
        PrintBytes(value, out);
    }
    out += '\n';
}

} // namespace

std::wstring FoldRegistryName(std::wstring_view name) {
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), SimpleUpper);
    return folded;
}

RegistryKey* RegistryContents::Find(std::wstring_view path) {
    const auto found = m_keys.find(FoldRegistryName(path));
    return found == m_keys.end() ? nullptr : &found->second;
}

RegistryKey& RegistryContents::Create(std::wstring_view path) {
    for (auto end = path.find(L'\\'); end != std::wstring_view::npos; end = path.find(L'\\', end + 1)) {
        const std::wstring_view parent = path.substr(0, end);
        m_keys.try_emplace(FoldRegistryName(parent), RegistryKey{std::wstring(parent), {}});
    }
    return m_keys.try_emplace(FoldRegistryName(path), RegistryKey{std::wstring(path), {}}).first->second;
}

RegistryContents ParseRegistryFile(std::string_view bytes) { return Parser(bytes).Parse(); }

std::string PrintRegistryFile(const RegistryContents& contents) {
    std::string out(firstLine);
    out += '\n';
    for (const auto& [folded, key] : contents.Keys()) {
        if (key.values.empty()) continue;
        out += "\n[" + ToUtf8(key.path) + "]\n";
        for (const auto& [foldedName, value] : key.values)
            PrintValue(value, out);
    }
    return out;
}

} // namespace OvPlatform
