#include "SystemServices/OrvelUtilities.h"

#include "LowLevelFacilities/Strings/Base64.h"

#include <algorithm>
#include <climits>

namespace {

std::size_t atLeastZero(int count) noexcept { return count < 0 ? 0 : static_cast<std::size_t>(count); }

int clampToInt(std::size_t count) noexcept {
    return count > static_cast<std::size_t>(INT_MAX) ? INT_MAX : static_cast<int>(count);
}

template <typename Character>
bool encodeInto(const unsigned char* bytes, int byteCount, Character* text, int* length,
                unsigned int options) noexcept {
    if (length == nullptr) return false;
    const std::size_t room = atLeastZero(*length);
    const std::size_t needed = Base64::encodedLength(atLeastZero(byteCount));
    *length = 0;
    if (options != OrvelUtilities::base64WithoutLineBreaks || text == nullptr || needed > room) return false;
    Base64::encode(bytes, atLeastZero(byteCount), text);
    if (needed < room) text[needed] = Character{};
    *length = static_cast<int>(needed);
    return true;
}

template <typename Character>
bool decodeInto(const Character* text, int characterCount, unsigned char* bytes, int* length) {
    if (length == nullptr) return false;
    const std::size_t room = atLeastZero(*length);
    *length = 0;
    std::vector<unsigned char> decoded;
    if (!Base64::decode(text, text == nullptr ? 0 : atLeastZero(characterCount), decoded)) return false;
    if (decoded.size() > room || (bytes == nullptr && !decoded.empty())) return false;
    std::copy(decoded.begin(), decoded.end(), bytes);
    *length = static_cast<int>(decoded.size());
    return true;
}

int behindLastSeparator(const CXString& path) noexcept {
    return 1 + std::max({path.ReverseFind(L'\\'), path.ReverseFind(L'/'), path.ReverseFind(L':')});
}

} // namespace

int OrvelUtilities::Base64EncodeGetRequiredLength(int byteCount, unsigned int) noexcept {
    return clampToInt(Base64::encodedLength(atLeastZero(byteCount)));
}

bool OrvelUtilities::Base64Encode(const unsigned char* bytes, int byteCount, char* text, int* length,
                                  unsigned int options) noexcept {
    return encodeInto(bytes, byteCount, text, length, options);
}

bool OrvelUtilities::Base64Encode(const unsigned char* bytes, int byteCount, wchar_t* text, int* length,
                                  unsigned int options) noexcept {
    return encodeInto(bytes, byteCount, text, length, options);
}

int OrvelUtilities::Base64DecodeGetRequiredLength(int characterCount) noexcept {
    return clampToInt(atLeastZero(characterCount) / 4 * 3 + 3);
}

bool OrvelUtilities::Base64Decode(const char* text, int characterCount, unsigned char* bytes, int* length) {
    return decodeInto(text, characterCount, bytes, length);
}

bool OrvelUtilities::Base64Decode(const wchar_t* text, int characterCount, unsigned char* bytes,
                                  int* length) {
    return decodeInto(text, characterCount, bytes, length);
}

CXString OrvelUtilities::getFileNameFromFullPath(const CXString& path) {
    return path.Mid(behindLastSeparator(path));
}

CXString OrvelUtilities::getPathFromFileName(const CXString& path) {
    return path.Left(behindLastSeparator(path));
}

void OrvelUtilities::parseCharacterSeparatedStrings(std::vector<CXString>& out, const CXString& text,
                                                    wchar_t separator, bool trimPieces,
                                                    bool skipEmptyPieces) {
    for (CXString& piece : text.Tokenize(separator)) {
        if (trimPieces) piece.Trim();
        if (!skipEmptyPieces || !piece.IsEmpty()) out.push_back(std::move(piece));
    }
}
