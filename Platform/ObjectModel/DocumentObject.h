#pragma once

#include "ObjectModel/OwnedCollection.h"
#include "ObjectModel/PageReferenceObject.h"
#include "ObjectModel/RelatedPart.h"

#include <string>

namespace OvPlatform {

using PageReferenceCollection =
    OwnedCollection<IXpsOMPageReferenceCollection, IXpsOMPageReference, PageReferenceObject, IXpsOMDocument>;

class DocumentObject final : public OwnObject<DocumentObject, IXpsOMDocument> {
public:
    static constexpr IID identifier = {
        0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x14}};

    static HRESULT Create(IOpcPartUri* uri, IXpsOMDocument** document);
    DocumentObject(const std::shared_ptr<SourcePackage>& package, SourceDocument document);

    HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri** uri) override;
    HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri* uri) override;
    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocumentSequence** sequence) override;
    HRESULT STDMETHODCALLTYPE GetPageReferences(IXpsOMPageReferenceCollection** pages) override;
    HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) override;
    HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) override;
    HRESULT STDMETHODCALLTYPE
    GetDocumentStructureResource(IXpsOMDocumentStructureResource** structure) override;
    HRESULT STDMETHODCALLTYPE
    SetDocumentStructureResource(IXpsOMDocumentStructureResource* structure) override;
    HRESULT STDMETHODCALLTYPE
    GetSignatureBlockResources(IXpsOMSignatureBlockResourceCollection** blocks) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMDocument** document) override;

    /// Not counted: the owner calls again with null before it ends.
    void SetOwner(IXpsOMDocumentSequence* owner) { m_owner = owner; }
    bool HasOwner() const { return m_owner != nullptr; }

    const std::string& Name() const { return m_name; }
    const SourcePlace& Place() const { return m_place; }
    const PackagePart* StoredPart() const { return m_part; }
    const SourceOrigin& Origin() const { return m_origin; }
    const PageReferenceCollection& Pages() const { return *m_pages; }
    const RelatedTicket& Ticket() const { return m_ticket; }
    const RelatedPart<IXpsOMDocumentStructureResource>& Structure() const { return m_structure; }
    /// Null where nobody has asked for them.
    const SignatureBlockCollection* SignatureBlocks() const { return m_blocks; }

private:
    explicit DocumentObject(std::string name);
    ~DocumentObject() override;

    IXpsOMDocumentSequence* m_owner = nullptr;
    std::string m_name;
    SourcePlace m_place;
    const PackagePart* m_part = nullptr;
    SourceOrigin m_origin;
    CComPtr<PageReferenceCollection> m_pages;
    RelatedTicket m_ticket{Relation::PrintTicket, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT};
    RelatedPart<IXpsOMDocumentStructureResource> m_structure{Relation::DocumentStructure,
                                                             XPS_E_MULTIPLE_REFERENCES_TO_PART};
    CComPtr<SignatureBlockCollection> m_blocks;
};

} // namespace OvPlatform
