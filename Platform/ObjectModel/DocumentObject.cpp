#include "ObjectModel/DocumentObject.h"

#include <utility>

namespace OvPlatform {

HRESULT DocumentObject::Create(IOpcPartUri* uri, IXpsOMDocument** document) {
    return ModelCall(document, [&] {
        if (uri == nullptr) return E_POINTER;
        *document = new DocumentObject(PartNameOf(uri));
        return S_OK;
    });
}

DocumentObject::DocumentObject(std::string name) : m_name(std::move(name)) {
    m_pages.Attach(new PageReferenceCollection(this));
}

DocumentObject::DocumentObject(const std::shared_ptr<SourcePackage>& package, SourceDocument document)
    : DocumentObject(document.part->name) {
    m_place = {package, m_name};
    m_part = document.part;
    m_origin = std::move(document.origin);
    for (SourcePage& page : document.pages) {
        CComPtr<PageReferenceObject> reference;
        reference.Attach(new PageReferenceObject(package, std::move(page)));
        reference->SetOwner(this);
        m_pages->Fill(reference.p);
    }
}

DocumentObject::~DocumentObject() {
    SetResourceOwner(m_structure.Changed(), nullptr);
    if (m_blocks)
        for (const auto& block : m_blocks->Items())
            SetResourceOwner(block, nullptr);
    if (m_pages) m_pages->SetOwner(nullptr);
}

HRESULT DocumentObject::GetPartName(IOpcPartUri** uri) { return GivePartUri(m_name, uri); }
HRESULT DocumentObject::SetPartName(IOpcPartUri* uri) { return TakePartName(uri, m_name); }

HRESULT DocumentObject::GetOwner(IXpsOMDocumentSequence** sequence) {
    return ModelCall(sequence, [&] {
        *sequence = CComPtr<IXpsOMDocumentSequence>(m_owner).Detach();
        return S_OK;
    });
}

HRESULT DocumentObject::GetPageReferences(IXpsOMPageReferenceCollection** pages) {
    return ModelCall(pages, [&] {
        *pages = CComPtr<PageReferenceCollection>(m_pages).Detach();
        return S_OK;
    });
}

HRESULT DocumentObject::GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) {
    return m_ticket.Give(m_place, ticket);
}
HRESULT DocumentObject::SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) {
    return m_ticket.Take(ticket);
}

HRESULT DocumentObject::GetDocumentStructureResource(IXpsOMDocumentStructureResource** structure) {
    const HRESULT result = m_structure.Give(m_place, structure);
    if (SUCCEEDED(result)) SetResourceOwner(*structure, this);
    return result;
}
HRESULT DocumentObject::SetDocumentStructureResource(IXpsOMDocumentStructureResource* structure) {
    const HRESULT result = m_structure.Take(structure);
    if (SUCCEEDED(result)) SetResourceOwner(structure, this);
    return result;
}

HRESULT DocumentObject::GetSignatureBlockResources(IXpsOMSignatureBlockResourceCollection** blocks) {
    return ModelCall(blocks, [&] {
        if (!m_blocks) {
            CComPtr<SignatureBlockCollection> made;
            made.Attach(new SignatureBlockCollection);
            if (m_place)
                for (const PackagePart* part :
                     m_place.package->AllRelated(m_place.name, Relation::SignatureDefinitions)) {
                    made->Fill(m_place.package->Resource<IXpsOMSignatureBlockResource>(*part));
                    SetResourceOwner(made->Items().back(), this);
                }
            m_blocks = made;
        }
        *blocks = CComPtr<SignatureBlockCollection>(m_blocks).Detach();
        return S_OK;
    });
}

HRESULT DocumentObject::Clone(IXpsOMDocument**) { return E_NOTIMPL; }

} // namespace OvPlatform
