#include "Dom/TargetEncoding.h"

#include "Dom/AttributeOrder.h"

#include <utf8coder.h>

#include <algorithm>
#include <new>

namespace OvPlatform {

namespace {

std::string Reference(char32_t character) {
    return "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ';';
}

/// The character at `index`, which moves behind it. The text is UTF-8 throughout.
char32_t Next(std::string_view utf8, std::size_t& index) {
    const char* next = utf8.data() + index;
    const char32_t character = Utf8::Decode(next, utf8.data() + utf8.size());
    index = static_cast<std::size_t>(next - utf8.data());
    return character;
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
        char bytes[Utf8::MostBytes];
        const std::size_t length = Utf8::Encode(character, bytes);
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
    constexpr std::size_t chunk = 1 << 20; // the library counts in int, and grows its buffers fourfold
    std::string encoded;
    const XmlPointer<xmlBuffer> source = NewBuffer();
    const XmlPointer<xmlBuffer> bytes = NewBuffer();
    while (!utf8.empty()) {
        std::size_t length = std::min(chunk, utf8.size());
        while (length < utf8.size() && Utf8::IsTrail(utf8[length]))
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
