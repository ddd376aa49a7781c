#include "Package/PartName.h"

#include <msopc.h>

#include <algorithm>
#include <random>
#include <vector>

namespace OvPlatform {

namespace {

constexpr std::string_view relationshipsFolder = "/_rels/";
constexpr std::string_view relationshipsExtension = ".rels";

constexpr bool IsAlnum(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

constexpr bool IsUnreserved(char c) {
    return IsAlnum(c) || std::string_view("-._~").find(c) != std::string_view::npos;
}

// RFC 3986 pchar, but for percent-encoding.
constexpr bool IsSegmentChar(char c) {
    return IsUnreserved(c) || std::string_view("!$&'()*+,;=:@").find(c) != std::string_view::npos;
}

// What never stands in a URI as it is, but may well be meant: octets outside ASCII, spaces and the like.
constexpr bool IsExcluded(char c) {
    return static_cast<unsigned char>(c) >= 0x80 ||
           std::string_view(" <>\"{}|^`").find(c) != std::string_view::npos;
}

constexpr int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The octet encoded at that place, -1 if there is none.
int EncodedOctet(std::string_view text, std::size_t at) {
    if (text[at] != '%' || at + 2 >= text.size()) return -1;
    const int high = HexDigit(text[at + 1]), low = HexDigit(text[at + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

void AppendEncoded(std::string& text, unsigned octet) {
    constexpr char digits[] = "0123456789ABCDEF";
    text += '%';
    text += digits[octet >> 4 & 15];
    text += digits[octet & 15];
}

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// A polynomial over the prime 2^61 - 1 at a place that nobody outside knows, so that names cannot be made to
// meet in a table; a character at a time, so that a name's folders are hashed on the way.
constexpr std::uint64_t emptyHash = 0;
constexpr unsigned primeBits = 61;
constexpr std::uint64_t prime = (std::uint64_t{1} << primeBits) - 1;

std::uint64_t HashPlace() {
    static const std::uint64_t place = [] {
        std::random_device random;
        return (std::uint64_t{random()} << 32 | random()) % (prime - 1) + 1;
    }();
    return place;
}

std::uint64_t HashOn(std::uint64_t hash, std::uint64_t place, char c) {
    const auto product =
        static_cast<unsigned __int128>(hash) * place + static_cast<unsigned char>(Lower(c)) + 1;
    const std::uint64_t sum =
        (static_cast<std::uint64_t>(product) & prime) + static_cast<std::uint64_t>(product >> primeBits);
    return sum >= prime ? sum - prime : sum;
}

[[noreturn]] void Refuse(const std::string& problem, HRESULT result = OPC_E_NONCONFORMING_URI) {
    throw PartNameError(result, problem);
}

std::string Printable(char c) {
    if (c > ' ' && c < 0x7F) return std::string("'") + c + "'";
    std::string code;
    AppendEncoded(code, static_cast<unsigned char>(c));
    return "the byte " + code.substr(1);
}

void CheckSegment(std::string_view segment) {
    if (segment.empty()) Refuse("the name has an empty segment");
    if (std::all_of(segment.begin(), segment.end(), [](char c) { return c == '.'; }))
        Refuse("the name has a segment of dots only");
    if (segment.back() == '.') Refuse("a segment of the name ends with a dot");
    for (std::size_t i = 0; i < segment.size(); ++i) {
        if (segment[i] != '%') {
            if (!IsSegmentChar(segment[i])) Refuse("the name holds " + Printable(segment[i]));
            continue;
        }
        const int octet = EncodedOctet(segment, i);
        if (octet < 0) Refuse("the name holds a '%' that encodes nothing");
        if (octet == '/' || octet == '\\') Refuse("the name holds a percent-encoded slash");
        if (IsUnreserved(static_cast<char>(octet)))
            Refuse("the name holds a percent-encoded letter, digit or mark");
        i += 2;
    }
}

std::vector<std::string_view> Segments(std::string_view path) {
    std::vector<std::string_view> segments;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = (std::min)(path.find('/', start), path.size());
        segments.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return segments;
}

// Everything up to and with the last slash.
std::string_view Folder(std::string_view name) { return name.substr(0, name.rfind('/') + 1); }

bool HasScheme(std::string_view reference) {
    const std::size_t colon = reference.find(':');
    return colon != std::string_view::npos && reference.find_first_of("/?#") > colon;
}

} // namespace

void CheckPartName(std::string_view name) {
    if (name.empty()) Refuse("the name is empty");
    if (name.front() != '/') Refuse("the name does not begin with a slash");
    if (name.back() == '/') Refuse("the name ends with a slash", OPC_E_PART_CANNOT_BE_DIRECTORY);
    for (const std::string_view segment : Segments(name.substr(1)))
        CheckSegment(segment);
}

void CheckStaysInPackage(std::string_view path) {
    if (path.find('\\') != std::string_view::npos) Refuse("the name holds a backslash");
    int depth = 0;
    for (const std::string_view segment : Segments(path)) {
        if (segment == "..")
            --depth;
        else if (!segment.empty() && segment != ".")
            ++depth;
        if (depth < 0) Refuse("the name leads out of the package");
    }
}

std::string EncodeExcluded(std::string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char c : text) {
        if (IsExcluded(c))
            AppendEncoded(encoded, static_cast<unsigned char>(c));
        else
            encoded += c;
    }
    return encoded;
}

std::string DecodeUnreserved(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int octet = EncodedOctet(text, i);
        if (octet < 0) {
            decoded += text[i];
            continue;
        }
        if (IsUnreserved(static_cast<char>(octet)))
            decoded += static_cast<char>(octet);
        else
            AppendEncoded(decoded, static_cast<unsigned>(octet));
        i += 2;
    }
    return decoded;
}

std::string ResolvePartName(std::string_view source, std::string_view reference) {
    if (reference.empty() || reference.front() == '#') return std::string(source); // the same document
    if (HasScheme(reference) || reference.starts_with("//"))
        Refuse("the reference is not within the package", OPC_E_RELATIVE_URI_REQUIRED);
    std::string path = DecodeUnreserved(EncodeExcluded(reference.substr(0, reference.find('#'))));
    if (path.find('?') != std::string::npos) Refuse("the reference holds a query");
    if (path.front() != '/') path.insert(0, Folder(source));
    CheckStaysInPackage(path);
    if (path.back() == '/') Refuse("the name ends with a slash", OPC_E_PART_CANNOT_BE_DIRECTORY);

    std::vector<std::string_view> kept;
    for (const std::string_view segment : Segments(std::string_view(path).substr(1))) {
        if (segment == "..")
            kept.pop_back(); // CheckStaysInPackage saw that there is one
        else if (segment != ".")
            kept.push_back(segment);
    }
    std::string name;
    for (const std::string_view segment : kept)
        name.append("/").append(segment);
    CheckPartName(name);
    return name;
}

std::string RelativeReference(std::string_view source, std::string_view target) {
    const std::string_view from = Folder(source);
    std::size_t common = 0; // length of the folder path that both share, with its slash
    for (std::size_t i = 0; i < from.size() && i < target.size() && from[i] == target[i]; ++i)
        if (from[i] == '/') common = i + 1;
    std::string reference;
    for (const char c : from.substr(common))
        if (c == '/') reference += "../";
    reference += target.substr(common);
    // A first segment with a colon would read as a scheme.
    return HasScheme(reference) ? std::string(target) : reference;
}

std::string RelationshipsPartName(std::string_view source) {
    const std::string_view folder = Folder(source);
    std::string name(folder);
    name.append(relationshipsFolder.substr(1))
        .append(source.substr(folder.size()))
        .append(relationshipsExtension);
    return name;
}

bool IsRelationshipsPartName(std::string_view name) {
    const std::string_view folder = Folder(name);
    return folder.size() >= relationshipsFolder.size() &&
           ComparePartNames(folder.substr(folder.size() - relationshipsFolder.size()), relationshipsFolder) ==
               0 &&
           name.size() >= folder.size() + relationshipsExtension.size() &&
           ComparePartNames(name.substr(name.size() - relationshipsExtension.size()),
                            relationshipsExtension) == 0;
}

std::string RelationshipsSource(std::string_view relationshipsPart) {
    const std::string_view folder = Folder(relationshipsPart);
    std::string_view last = relationshipsPart.substr(folder.size());
    last.remove_suffix(relationshipsExtension.size());
    std::string source(folder.substr(0, folder.size() - relationshipsFolder.size() + 1));
    return source.append(last);
}

std::string_view PartExtension(std::string_view name) {
    const std::size_t dot = name.find_last_of("./");
    return dot == std::string_view::npos || name[dot] == '/' ? std::string_view() : name.substr(dot + 1);
}

std::string FoldPartName(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), Lower);
    return folded;
}

int ComparePartNames(std::string_view left, std::string_view right) {
    const std::size_t length = (std::min)(left.size(), right.size());
    for (std::size_t i = 0; i < length; ++i)
        if (const int difference = Lower(left[i]) - Lower(right[i]); difference != 0) return difference;
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

std::size_t PartNameHash::operator()(std::string_view name) const {
    std::uint64_t hash = emptyHash;
    const std::uint64_t place = HashPlace();
    for (const char c : name)
        hash = HashOn(hash, place, c);
    return static_cast<std::size_t>(hash);
}

PartNameFolders::PartNameFolders(std::string_view name) : m_name(name), m_hash(emptyHash) {}

bool PartNameFolders::Next() {
    const std::size_t end = m_name.find('/', m_length + 1);
    if (end == std::string_view::npos) return false;
    for (const std::uint64_t place = HashPlace(); m_length < end; ++m_length)
        m_hash = HashOn(m_hash, place, m_name[m_length]);
    return true;
}

bool PartNameTreeOrder::operator()(std::string_view left, std::string_view right) const {
    // The slash comes before all characters.
    const auto rank = [](char c) { return c == '/' ? 0 : static_cast<unsigned char>(Lower(c)) + 1; };
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [&](char a, char b) { return rank(a) < rank(b); });
}

bool ExtendsPartName(std::string_view name, std::string_view folder) {
    return name.size() > folder.size() && name[folder.size()] == '/' &&
           ComparePartNames(name.substr(0, folder.size()), folder) == 0;
}

} // namespace OvPlatform
