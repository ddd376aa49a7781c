#include "Dom/TargetEncoding.h"

#include "Dom/AttributeOrder.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <new>

namespace OvPlatform {

namespace {

std::string Reference(char32_t character) {
    return "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ';';
}

/// The character at `index`, which moves behind it. The text is UTF-8 throughout.
char32_t Next(std::string_view utf8, std::size_t& index) {
    UChar32 character;
    U8_NEXT_UNSAFE(utf8.data(), index, character);
    return static_cast<char32_t>(character);
}

XmlPointer<xmlBuffer> NewBuffer() {
    XmlPointer<xmlBuffer> buffer(xmlBufferCreate());
    if (buffer == nullptr) throw std::bad_alloc();
    return buffer;
}

} // namespace

std::unique_ptr<TargetEncoding> TargetEncoding::Find(const std::string& name) {
    xmlCharEncodingHandler* handler = xmlFindCharEncodingHandler(name.c_str());
    if (handler == nullptr) return nullptr;
    std::unique_ptr<TargetEncoding> encoding(new TargetEncoding(handler));
    // One that can only be written spells characters in a way that is not XML's.
    return handler->input != nullptr || handler->iconv_in != nullptr ? std::move(encoding) : nullptr;
}

bool TargetEncoding::Has(char32_t character) {
    if (character < 0x80) return true;
    const auto [known, isNew] = m_known.try_emplace(character, false);
    if (isNew) {
        std::string alone;
        char bytes[U8_MAX_LENGTH];
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, static_cast<UChar32>(character));
        // The converter itself writes a reference for what the encoding lacks.
        known->second = Encode({bytes, length}) != Encode(Reference(character));
    }
    return known->second;
}

bool TargetEncoding::HasAll(std::string_view utf8) {
    for (std::size_t index = 0; index < utf8.size();)
        if (!Has(Next(utf8, index))) return false;
    return true;
}

void TargetEncoding::Refer(std::string& utf8, std::size_t begin, std::string_view before,
                           std::string_view after) {
    if (HasAll(std::string_view(utf8).substr(begin))) return;
    const std::string source = utf8.substr(begin);
    utf8.resize(begin);
    for (std::size_t index = 0; index < source.size();) {
        const std::size_t start = index;
        const char32_t character = Next(source, index);
        if (Has(character))
            utf8.append(source, start, index - start);
        else
            utf8.append(before).append(Reference(character)).append(after);
    }
}

std::optional<std::string> TargetEncoding::Encode(std::string_view utf8) const {
    constexpr std::size_t Chunk = 1 << 20; // the library counts in int, and grows its buffers fourfold
    std::string encoded;
    const XmlPointer<xmlBuffer> source = NewBuffer();
    const XmlPointer<xmlBuffer> bytes = NewBuffer();
    while (!utf8.empty()) {
        std::size_t length = std::min(Chunk, utf8.size());
        while (length < utf8.size() && U8_IS_TRAIL(utf8[length]))
            --length;
        if (xmlBufferAdd(source.get(), AsXml(utf8.data()), static_cast<int>(length)) != 0)
            throw std::bad_alloc();
        if (xmlCharEncOutFunc(m_handler.get(), bytes.get(), source.get()) < 0) return std::nullopt;
        encoded.append(View(xmlBufferContent(bytes.get())).data(),
                       static_cast<std::size_t>(xmlBufferLength(bytes.get())));
        xmlBufferEmpty(bytes.get());
        xmlBufferEmpty(source.get());
        utf8.remove_prefix(length);
    }
    return encoded;
}

} // namespace OvPlatform
