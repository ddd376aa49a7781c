#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "LowLevelFacilities/Strings/WhiteSpace.h"

namespace {

int hexValue(wchar_t unit) noexcept {
    if (unit >= L'0' && unit <= L'9') return unit - L'0';
    if (unit >= L'a' && unit <= L'f') return unit - L'a' + 10;
    if (unit >= L'A' && unit <= L'F') return unit - L'A' + 10;
    return -1;
}

const char* asCharacters(const ByteBuffer& bytes) noexcept {
    return reinterpret_cast<const char*>(bytes.data());
}

} // namespace

ByteBuffer::ByteBuffer(const unsigned char* bytes, size_type length) {
    if (bytes != nullptr) assign(bytes, bytes + length);
}

void ByteBuffer::setWithLpbyte(const unsigned char* bytes, size_type length) {
    *this = ByteBuffer(bytes, length);
}

void ByteBuffer::appendLpbyte(const unsigned char* bytes, size_type length) {
    const ByteBuffer copy(bytes, length);
    insert(end(), copy.begin(), copy.end());
}

void ByteBuffer::appendAsUtf8(const CXString& text) {
    const std::string utf8 = CPStringUtils::narrowToStdString(text.View().data(), text.View().size());
    insert(end(), utf8.begin(), utf8.end());
}

CXString ByteBuffer::getAsCXStringFromUtf8Buffer() const {
    return CXString(CPStringUtils::widenTo_wstring(asCharacters(*this), size()));
}

CPString ByteBuffer::getAsCPStringFromUtf8Buffer() const {
    return empty() ? CPString() : CPString(std::string(asCharacters(*this), size()));
}

ByteBuffer ByteBuffer::createByteBufferWithUtf8EncodedStringData(const CPString& text) {
    return ByteBuffer(text.utf8RawBytes(), text.view().size());
}

bool ByteBuffer::ConvertHexBinaryStringToByteBuffer(const CXString& text, ByteBuffer& bytes, bool lenient) {
    ByteBuffer result;
    bool good = true;
    int high = -1;
    for (const wchar_t unit : text.View()) {
        const bool mayBeSkipped =
            lenient && (unit == L'-' || WhiteSpace::isWhiteSpace(static_cast<char32_t>(unit)));
        if (mayBeSkipped && high < 0) continue;
        const int value = hexValue(unit);
        if (value < 0) {
            good = false;
            break;
        }
        if (high < 0) {
            high = value;
        } else {
            result.push_back(static_cast<unsigned char>(high * 16 + value));
            high = -1;
        }
    }
    good = good && high < 0;
    bytes = good ? std::move(result) : ByteBuffer();
    return good;
}
