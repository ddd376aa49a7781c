#include "Parts/FontPart.h"

#include "Parts/FontObfuscation.h"

#include <atlcomcli.h>
#include <xpsobjectmodel.h>

#include <array>

namespace OvPipeline {

namespace {

// Bytes that lie obfuscated in the job's package and whose name gives the key; one without a key stays as it
// is.
std::optional<ObfuscationKey> StoredKey(const PartCore& core) {
    if (!core.stored || !IsObfuscatedFontType(core.stored->contentType)) return {};
    return ObfuscationKeyOf(core.stored->name);
}

bool ReadExactly(ByteReader& reader, std::uint64_t position, unsigned char* buffer, std::size_t size) {
    reader.Seek(position);
    while (size > 0) {
        const std::size_t read = reader.Read(buffer, size);
        if (read == 0) return false;
        buffer += read;
        size -= read;
    }
    return true;
}

unsigned U16(const unsigned char* p) { return static_cast<unsigned>(p[0] << 8 | p[1]); }
std::uint32_t U32(const unsigned char* p) { return std::uint32_t{U16(p)} << 16 | U16(p + 2); }

// OS/2.fsType, or 0.
unsigned EmbeddingBits(ByteReader& font) {
    std::array<unsigned char, 16> record;
    std::uint64_t directory = 0;
    if (!ReadExactly(font, 0, record.data(), 12)) return 0;
    if (U32(record.data()) == 0x74746366) { // a collection: its first font
        if (!ReadExactly(font, 12, record.data(), 4)) return 0;
        directory = U32(record.data());
        if (!ReadExactly(font, directory, record.data(), 12)) return 0;
    }
    const unsigned tables = U16(record.data() + 4);
    for (unsigned i = 0; i < tables; ++i) {
        if (!ReadExactly(font, directory + 12 + 16 * std::uint64_t{i}, record.data(), 16)) return 0;
        if (U32(record.data()) != 0x4f532f32) continue;
        const std::uint64_t table = U32(record.data() + 8);
        return ReadExactly(font, table + 8, record.data(), 2) ? U16(record.data()) : 0;
    }
    return 0;
}

} // namespace

FontPart::FontPart(PartCore core)
    : PartObject(std::move(core)),
      m_options(IsObfuscatedFontType(m_core.contentType) ? Font_Obfusticate : Font_Normal) {}

std::unique_ptr<ByteReader> FontPart::OpenForFilter() {
    auto bytes = m_core.content->Open();
    if (const auto key = StoredKey(m_core)) bytes = Obfuscate(std::move(bytes), *key);
    return bytes;
}

HRESULT FontPart::GetFontProperties(BSTR* contentType, EXpsFontOptions* options) {
    if (options == nullptr) return E_POINTER;
    const HRESULT hr = GetContentType(contentType);
    if (SUCCEEDED(hr)) *options = m_options;
    return hr;
}

HRESULT FontPart::SetFontOptions(EXpsFontOptions options) {
    return Guarded([&] {
        if (options != Font_Normal && options != Font_Obfusticate) return E_INVALIDARG;
        m_options = options;
        return S_OK;
    });
}

HRESULT FontPart::GetFontRestriction(EXpsFontRestriction* restriction) {
    if (restriction == nullptr) return E_POINTER;
    return Guarded([&] {
        const unsigned bits = EmbeddingBits(*OpenForFilter());
        // The most restrictive bit counts.
        *restriction = bits & Xps_Restricted_Font_NoEmbedding    ? Xps_Restricted_Font_NoEmbedding
                       : bits & Xps_Restricted_Font_PreviewPrint ? Xps_Restricted_Font_PreviewPrint
                       : bits & Xps_Restricted_Font_Editable     ? Xps_Restricted_Font_Editable
                                                                 : Xps_Restricted_Font_Installable;
        return S_OK;
    });
}

PackagedFont PackFont(IPartFont* font, const std::string& partName) {
    CComPtr<IHostPart> own;
    font->QueryInterface(&own);
    if (!own)
        throw HostError(E_NOINTERFACE, partName, partName + " is a font that the pipeline did not make");
    const PartCore& core = own->Core();

    CComBSTR type;
    EXpsFontOptions options = Font_Normal;
    if (const HRESULT hr = font->GetFontProperties(&type, &options); FAILED(hr))
        throw HostError(hr, partName, partName + ": its font properties cannot be read");

    PackagedFont packed{core.contentType, {}};
    const bool isStoredObfuscated = core.stored && IsObfuscatedFontType(core.stored->contentType);
    const bool wantsObfuscated = options == Font_Obfusticate;
    if (wantsObfuscated)
        packed.contentType = obfuscatedFontContentType;
    else if (IsObfuscatedFontType(core.contentType))
        packed.contentType = fontContentType;
    if (isStoredObfuscated == wantsObfuscated) return packed;

    const auto key = ObfuscationKeyOf(isStoredObfuscated ? core.stored->name : partName);
    if (!key)
        throw HostError(XPS_E_INVALID_OBFUSCATED_FONT_URI, partName,
                        partName + ": a font that is obfuscated needs a GUID as its name");
    packed.bytes = Obfuscate(core.content->Open(), *key);
    return packed;
}

} // namespace OvPipeline
