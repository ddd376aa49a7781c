#pragma once

#include "ObjectModel/DocumentObject.h"
#include "ObjectModel/OwnedCollection.h"
#include "ObjectModel/RelatedPart.h"

#include <string>

namespace OvPlatform {

using DocumentCollection =
    OwnedCollection<IXpsOMDocumentCollection, IXpsOMDocument, DocumentObject, IXpsOMDocumentSequence>;

class DocumentSequenceObject final : public OwnObject<DocumentSequenceObject, IXpsOMDocumentSequence> {
public:
    static constexpr IID identifier = {
        0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x15}};

    static HRESULT Create(IOpcPartUri* uri, IXpsOMDocumentSequence** sequence);
    /// Reads the documents and the list of their pages. Throws PackageError.
    explicit DocumentSequenceObject(const std::shared_ptr<SourcePackage>& package);

    HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri** uri) override;
    HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri* uri) override;
    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPackage** package) override;
    HRESULT STDMETHODCALLTYPE GetDocuments(IXpsOMDocumentCollection** documents) override;
    HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) override;
    HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) override;

    /// Not counted: the owner calls again with null before it ends.
    void SetOwner(IXpsOMPackage* owner) { m_owner = owner; }
    bool HasOwner() const { return m_owner != nullptr; }

    const std::string& Name() const { return m_name; }
    const SourcePlace& Place() const { return m_place; }
    const PackagePart* StoredPart() const { return m_part; }
    const DocumentCollection& Documents() const { return *m_documents; }
    const RelatedTicket& Ticket() const { return m_ticket; }

private:
    explicit DocumentSequenceObject(std::string name);
    ~DocumentSequenceObject() override;

    IXpsOMPackage* m_owner = nullptr;
    std::string m_name;
    SourcePlace m_place;
    const PackagePart* m_part = nullptr;
    CComPtr<DocumentCollection> m_documents;
    RelatedTicket m_ticket{Relation::PrintTicket, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE};
};

} // namespace OvPlatform
