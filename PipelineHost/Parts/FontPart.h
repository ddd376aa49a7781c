#pragma once

#include "Parts/PartObject.h"

namespace OvPipeline {

/// A font. Filters read and write it plain, whatever form it has in a package.
class FontPart final : public PartObject<IPartFont2> {
public:
    explicit FontPart(PartCore core);

    HRESULT STDMETHODCALLTYPE GetFontProperties(BSTR* contentType, EXpsFontOptions* options) override;
    HRESULT STDMETHODCALLTYPE SetFontContent(PCWSTR contentType) override {
        return SetContentType(contentType);
    }
    HRESULT STDMETHODCALLTYPE SetFontOptions(EXpsFontOptions options) override;
    /// The embedding bits of the font's OS/2 table; installable where it has none.
    HRESULT STDMETHODCALLTYPE GetFontRestriction(EXpsFontRestriction* restriction) override;

private:
    ~FontPart() override = default;

    std::unique_ptr<ByteReader> OpenForFilter() override;

    EXpsFontOptions m_options;
};

/// A font's bytes as they lie in a package under that name, with the content type that they need there. No
/// bytes where they are those of the font's own content.
/// Throws HostError where the font must be obfuscated and its name gives no key.
struct PackagedFont {
    std::string contentType;
    std::unique_ptr<ByteReader> bytes;
};
PackagedFont PackFont(IPartFont* font, const std::string& partName);

} // namespace OvPipeline
