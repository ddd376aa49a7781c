#include "ObjectModel/DocumentSequenceObject.h"

#include <utility>

namespace OvPlatform {

HRESULT DocumentSequenceObject::Create(IOpcPartUri* uri, IXpsOMDocumentSequence** sequence) {
    return ModelCall(sequence, [&] {
        if (uri == nullptr) return E_POINTER;
        *sequence = new DocumentSequenceObject(PartNameOf(uri));
        return S_OK;
    });
}

DocumentSequenceObject::DocumentSequenceObject(std::string name) : m_name(std::move(name)) {
    m_documents.Attach(new DocumentCollection(this));
}

DocumentSequenceObject::DocumentSequenceObject(const std::shared_ptr<SourcePackage>& package)
    : DocumentSequenceObject(package->Sequence().name) {
    m_place = {package, m_name};
    m_part = &package->Sequence();
    for (SourceDocument& each : package->ReadDocuments()) {
        CComPtr<DocumentObject> document;
        document.Attach(new DocumentObject(package, std::move(each)));
        document->SetOwner(this);
        m_documents->Fill(document.p);
    }
}

DocumentSequenceObject::~DocumentSequenceObject() {
    if (m_documents) m_documents->SetOwner(nullptr);
}

HRESULT DocumentSequenceObject::GetPartName(IOpcPartUri** uri) { return GivePartUri(m_name, uri); }
HRESULT DocumentSequenceObject::SetPartName(IOpcPartUri* uri) { return TakePartName(uri, m_name); }

HRESULT DocumentSequenceObject::GetOwner(IXpsOMPackage** package) {
    return ModelCall(package, [&] {
        *package = CComPtr<IXpsOMPackage>(m_owner).Detach();
        return S_OK;
    });
}

HRESULT DocumentSequenceObject::GetDocuments(IXpsOMDocumentCollection** documents) {
    return ModelCall(documents, [&] {
        *documents = CComPtr<DocumentCollection>(m_documents).Detach();
        return S_OK;
    });
}

HRESULT DocumentSequenceObject::GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) {
    return m_ticket.Give(m_place, ticket);
}
HRESULT DocumentSequenceObject::SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) {
    return m_ticket.Take(ticket);
}

} // namespace OvPlatform
