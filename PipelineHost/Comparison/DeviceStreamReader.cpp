#include "Comparison/DeviceStreamReader.h"

#include "Comparison/ContentDigest.h"
#include "Comparison/PostScriptSetup.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace OvPipeline {

namespace {

constexpr std::string_view universalExit = "\x1B%-12345X";
constexpr std::string_view pjlMark = "@PJL";
constexpr std::string_view blanks = " \t\r\n";
constexpr std::size_t longestPiece = 64u << 10;    // of a line: longer ones come in pieces
constexpr std::size_t longestPageSetup = 1u << 20; // about; what comes then is not asked for keys
constexpr std::size_t heldBeside = 64;             // bytes that a text costs beside its own

// Comments of PostScript whose value is a time at which something was made.
constexpr std::array timeComments{std::string_view("CreationDate")};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The first word, which goes from the text.
std::string_view TakeWord(std::string_view& text) {
    text = Trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text = Trimmed(text.substr(word.size()));
    return word;
}

// Words in capitals, a blank between them.
std::string PlainName(std::string_view text) {
    std::string name;
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        if (!name.empty()) name += ' ';
        for (const char c : word)
            name += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return name;
}

struct NamedValue {
    std::string name;
    std::string value;
};

// "SET COPIES = 2" and "COMMENT OID_ATT_JOB_NAME ...;" have names. What has none is a value of its first
// word.
NamedValue ReadPjl(std::string_view line) {
    line = Trimmed(line.substr(pjlMark.size()));
    std::string_view rest = line;
    std::string name = PlainName(TakeWord(rest));
    if (name == "COMMENT") {
        if (rest.starts_with("OID_")) name += " " + std::string(TakeWord(rest));
        return {std::move(name), std::string(rest)};
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return {std::move(name), std::string(rest)};
    return {PlainName(line.substr(0, equals)), std::string(Trimmed(line.substr(equals + 1)))};
}

// "%%Title: (x)" and "%%BeginFeature: *Duplex None".
NamedValue ReadComment(std::string_view line) {
    line.remove_prefix(2);
    const std::size_t end = (std::min)(line.find_first_of(": \t\r\n"), line.size());
    std::string name(line.substr(0, end));
    std::string_view value = line.substr(end);
    if (value.starts_with(':')) value.remove_prefix(1);
    value = Trimmed(value);
    if (name == "BeginFeature") name += " " + std::string(TakeWord(value));
    return {std::move(name), std::string(value)};
}

// One reading, line by line.
class Reading {
public:
    explicit Reading(std::istream& stream) : m_stream(stream) {}

    DeviceStream Run() {
        while (TakeLine())
            TakePiece(m_line);
        EndPage();
        EndSetup();
        return std::move(m_result);
    }

private:
    enum class State { Pjl, Setup, Page, Data };

    // The next line with its end, or a piece of a long one. Binary data that is announced comes as such too.
    bool TakeLine() {
        m_isStart = m_isWhole;
        m_line.clear();
        std::streambuf& bytes = *m_stream.rdbuf();
        constexpr int end = std::char_traits<char>::eof();
        for (int byte = bytes.sbumpc(); byte != end; byte = bytes.sbumpc()) {
            m_line += static_cast<char>(byte);
            if (m_skipped > 0 && --m_skipped == 0) break;
            if (m_skipped == 0 && (byte == '\n' || IsLoneReturn(byte, bytes.sgetc()))) break;
            if (m_line.size() >= longestPiece) {
                m_isWhole = false;
                return true;
            }
        }
        m_isWhole = true;
        return !m_line.empty();
    }
    static bool IsLoneReturn(int byte, int next) { return byte == '\r' && next != '\n'; }

    void TakePiece(std::string_view line) {
        if (m_wasData) { // what was announced as binary
            m_wasData = m_skipped > 0;
            return Keep(line);
        }
        while (true) {
            const std::size_t exit = line.find(universalExit);
            if (const std::string_view part = line.substr(0, exit); !part.empty())
                m_state == State::Pjl ? TakePjl(part) : TakeContent(part);
            if (exit == std::string_view::npos) return;
            EndPage();
            EndSetup();
            m_state = State::Pjl;
            m_isStart = true;
            line.remove_prefix(exit + universalExit.size());
        }
    }

    void TakePjl(std::string_view line) {
        if (!m_isStart) return Hold(line.size()); // no command is so long
        if (line.starts_with("%!")) {
            m_state = State::Setup;
            return TakeContent(line);
        }
        if (!line.starts_with(pjlMark)) {
            if (Trimmed(line).empty()) return;
            BeginData();
            return TakeContent(line);
        }
        Hold(line.size());
        NamedValue command = ReadPjl(line);
        if (command.name == "ENTER LANGUAGE") {
            m_state = State::Setup;
            if (PlainName(command.value) != "POSTSCRIPT") BeginData();
        }
        m_result.pjl[command.name].push_back(std::move(command.value));
    }

    void TakeContent(std::string_view line) {
        if (m_state == State::Data) return Keep(line);
        if (m_isStart && m_state == State::Setup && line.starts_with("%!"))
            return AddComment("%!", line.substr(2));
        if (!m_isStart || !line.starts_with("%%")) return Keep(line);
        const NamedValue comment = ReadComment(line);
        const bool wasInside = m_embedded > 0;
        if (comment.name == "BeginDocument") ++m_embedded;
        if (comment.name == "EndDocument" && wasInside) --m_embedded;
        if (comment.name == "BeginBinary" || comment.name == "BeginData") Announce(comment);
        if (DeviceStream::IsTime(comment.name) && m_state == State::Page) {
            Hold(line.size());
            m_page.times.push_back(comment.value);
            return;
        }
        if (wasInside) return Keep(line);
        if (comment.name == "Page") {
            EndPage();
            EndSetup();
            m_state = State::Page;
            if (m_result.pages.size() >= DeviceStreamReader::mostPages)
                throw DeviceStreamError("it has too many pages");
            return; // its number says nothing of it
        }
        if (comment.name == "Trailer" || comment.name == "EOF") {
            EndPage();
            m_state = State::Setup;
        }
        if (m_state == State::Page) {
            if (comment.name == "BeginPageSetup") m_isPageSetup = true;
            if (comment.name == "EndPageSetup") m_isPageSetup = false;
            return Keep(line);
        }
        // An end says no more than its beginning.
        if (!comment.name.starts_with("End")) AddComment(comment.name, comment.value);
    }

    void AddComment(const std::string& name, std::string_view value) {
        Hold(name.size() + value.size());
        m_result.comments[name].emplace_back(Trimmed(value));
    }

    // "%%BeginData: 1234 Binary Bytes", in lines where it says so; "%%BeginBinary: 1234".
    void Announce(const NamedValue& comment) {
        std::uint64_t count = 0;
        const char* const end = comment.value.data() + comment.value.size();
        if (std::from_chars(comment.value.data(), end, count).ec != std::errc() || count == 0) return;
        if (comment.value.find("Lines") != std::string::npos) return;
        m_skipped = count;
        m_wasData = true;
    }

    // Bytes that belong to what is being read.
    void Keep(std::string_view bytes) {
        if (bytes.empty()) return;
        if (m_state == State::Page || m_state == State::Data) {
            m_hasPage = true;
            m_page.size += bytes.size();
            m_digest.Add(bytes.data(), bytes.size());
            if (m_isPageSetup && m_embedded == 0 && m_pageSetup.size() < longestPageSetup)
                m_pageSetup += bytes;
            return;
        }
        Hold(bytes.size());
        m_setup += bytes;
    }

    void Hold(std::size_t size) {
        m_held += size + heldBeside;
        if (m_held > DeviceStreamReader::mostHeld)
            throw DeviceStreamError("it says more around its pages than is read");
    }

    void BeginData() {
        m_state = State::Data;
        m_hasPage = true;
    }

    void EndPage() {
        if (m_state == State::Page || (m_state == State::Data && m_hasPage)) {
            m_page.digest = m_digest.Result();
            m_page.device = PostScriptSetup::Read(m_pageSetup).device;
            for (const auto& [key, values] : m_page.device)
                for (const std::string& value : values)
                    Hold(key.size() + value.size());
            (m_state == State::Page ? m_result.pages : m_result.data).push_back(std::move(m_page));
        }
        m_page = {};
        m_digest = ContentDigest();
        m_pageSetup.clear();
        m_isPageSetup = false;
        m_hasPage = false;
        m_embedded = 0;
    }

    void EndSetup() {
        PostScriptSetup setup = PostScriptSetup::Read(m_setup);
        for (auto& [key, values] : setup.device)
            for (std::string& value : values)
                m_result.device[key].push_back(std::move(value));
        for (std::string& command : setup.commands)
            m_result.commands.push_back(std::move(command));
        m_setup.clear();
    }

    std::istream& m_stream;
    DeviceStream m_result;
    State m_state = State::Pjl;
    std::string m_line;
    bool m_isStart = true;       // of a line, and no later piece of it
    bool m_isWhole = true;       // the line has been read to its end
    std::uint64_t m_skipped = 0; // bytes that are still announced as binary
    bool m_wasData = false;      // the next piece is such
    std::size_t m_embedded = 0;  // documents in one another
    std::size_t m_held = 0;
    std::string m_setup;
    std::string m_pageSetup;
    bool m_isPageSetup = false;
    bool m_hasPage = false;
    DeviceStream::Page m_page;
    ContentDigest m_digest;
};

} // namespace

bool DeviceStream::IsTime(std::string_view comment) {
    return std::ranges::find(timeComments, comment) != timeComments.end();
}

bool DeviceStreamReader::IsStream(std::string_view start) {
    return start.starts_with(universalExit) || start.starts_with(pjlMark) || start.starts_with("%!");
}

DeviceStream DeviceStreamReader::Read(std::istream& stream) {
    DeviceStream result = Reading(stream).Run();
    if (stream.bad()) throw DeviceStreamError("it cannot be read");
    return result;
}

} // namespace OvPipeline
