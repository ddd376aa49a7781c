#pragma once

#include "ObjectModel/OwnObject.h"
#include "ObjectModel/PartContent.h"

#include <array>
#include <optional>
#include <string>

namespace OvPlatform {

/// What a package says of itself: title, creator and the like. The part is read when something in it is first
/// asked for, and written anew only if something was set. A text that is not there is null, a date zero.
class CorePropertiesObject final : public OwnObject<CorePropertiesObject, IXpsOMCoreProperties> {
public:
    static constexpr IID identifier = {
        0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x17}};

    static HRESULT Create(IOpcPartUri* uri, IXpsOMCoreProperties** properties);
    /// Of a package that is read. stored: null for new ones.
    CorePropertiesObject(std::string name, SharedContent stored);

    HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri** uri) override;
    HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri* uri) override;
    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPackage** package) override;
    HRESULT STDMETHODCALLTYPE GetCategory(LPWSTR* category) override;
    HRESULT STDMETHODCALLTYPE SetCategory(LPCWSTR category) override;
    HRESULT STDMETHODCALLTYPE GetContentStatus(LPWSTR* contentStatus) override;
    HRESULT STDMETHODCALLTYPE SetContentStatus(LPCWSTR contentStatus) override;
    HRESULT STDMETHODCALLTYPE GetContentType(LPWSTR* contentType) override;
    HRESULT STDMETHODCALLTYPE SetContentType(LPCWSTR contentType) override;
    HRESULT STDMETHODCALLTYPE GetCreated(SYSTEMTIME* created) override;
    HRESULT STDMETHODCALLTYPE SetCreated(const SYSTEMTIME* created) override;
    HRESULT STDMETHODCALLTYPE GetCreator(LPWSTR* creator) override;
    HRESULT STDMETHODCALLTYPE SetCreator(LPCWSTR creator) override;
    HRESULT STDMETHODCALLTYPE GetDescription(LPWSTR* description) override;
    HRESULT STDMETHODCALLTYPE SetDescription(LPCWSTR description) override;
    HRESULT STDMETHODCALLTYPE GetIdentifier(LPWSTR* identifier) override;
    HRESULT STDMETHODCALLTYPE SetIdentifier(LPCWSTR identifier) override;
    HRESULT STDMETHODCALLTYPE GetKeywords(LPWSTR* keywords) override;
    HRESULT STDMETHODCALLTYPE SetKeywords(LPCWSTR keywords) override;
    HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR* language) override;
    HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) override;
    HRESULT STDMETHODCALLTYPE GetLastModifiedBy(LPWSTR* lastModifiedBy) override;
    HRESULT STDMETHODCALLTYPE SetLastModifiedBy(LPCWSTR lastModifiedBy) override;
    HRESULT STDMETHODCALLTYPE GetLastPrinted(SYSTEMTIME* lastPrinted) override;
    HRESULT STDMETHODCALLTYPE SetLastPrinted(const SYSTEMTIME* lastPrinted) override;
    HRESULT STDMETHODCALLTYPE GetModified(SYSTEMTIME* modified) override;
    HRESULT STDMETHODCALLTYPE SetModified(const SYSTEMTIME* modified) override;
    HRESULT STDMETHODCALLTYPE GetRevision(LPWSTR* revision) override;
    HRESULT STDMETHODCALLTYPE SetRevision(LPCWSTR revision) override;
    HRESULT STDMETHODCALLTYPE GetSubject(LPWSTR* subject) override;
    HRESULT STDMETHODCALLTYPE SetSubject(LPCWSTR subject) override;
    HRESULT STDMETHODCALLTYPE GetTitle(LPWSTR* title) override;
    HRESULT STDMETHODCALLTYPE SetTitle(LPCWSTR title) override;
    HRESULT STDMETHODCALLTYPE GetVersion(LPWSTR* version) override;
    HRESULT STDMETHODCALLTYPE SetVersion(LPCWSTR version) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMCoreProperties** properties) override;

    /// Not counted: the owner calls again with null before it ends.
    void SetOwner(IXpsOMPackage* owner) { m_owner = owner; }
    bool HasOwner() const { return m_owner != nullptr; }

    const std::string& Name() const { return m_name; }
    /// Whether it is to be written anew, and the markup then: what is not known here stays as it was read.
    bool IsChanged() const { return m_isChanged; }
    std::string Markup() const;

    enum Property {
        Category,
        ContentStatus,
        ContentType,
        Created,
        Creator,
        Description,
        Identifier,
        Keywords,
        Language,
        LastModifiedBy,
        LastPrinted,
        Modified,
        Revision,
        Subject,
        Title,
        Version,
        propertyCount
    };

private:
    void Read();
    HRESULT GiveText(Property property, LPWSTR* text);
    HRESULT TakeText(Property property, LPCWSTR text);
    HRESULT GiveDate(Property property, SYSTEMTIME* date);
    HRESULT TakeDate(Property property, const SYSTEMTIME* date);

    IXpsOMPackage* m_owner = nullptr;
    std::string m_name;
    SharedContent m_stored; // until it is read
    std::string m_markup;   // as it was read; empty for new ones
    bool m_isChanged = false;
    std::array<std::optional<std::string>, propertyCount> m_values;
};

} // namespace OvPlatform
