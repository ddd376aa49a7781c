#include "EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/AttributeBytesNameSpaces.h>
#include <AttributeStore/AttributeBytesRawList.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>

namespace {

constexpr LONG noNameSpace = -1;

OvlUniquePtr<PersistentAttributes> OpenStore(const ByteBuffer& bytes) {
    constexpr bool toleratesDamage = false;
    return OvlUniquePtr<PersistentAttributes>(new PersistentAttributes(bytes, toleratesDamage, nullptr));
}

} // namespace

PrintTicketAttributeBytesReaderWriter::PrintTicketAttributeBytesReaderWriter(
    const IAttributeBytesDebugDisplayHelper& helper)
    : PrintTicketAttributeBytesReaderWriter(nullptr, helper, false) {}

PrintTicketAttributeBytesReaderWriter::PrintTicketAttributeBytesReaderWriter(
    PrintTicketXmlDocument* ticket, const IAttributeBytesDebugDisplayHelper& helper, bool flag)
    : m_ticket(ticket), m_flag(flag), m_nameSpace(noNameSpace), m_debugHelper(helper.Clone()) {}

PrintTicketAttributeBytesReaderWriter::PrintTicketAttributeBytesReaderWriter(
    const ByteBuffer& bytes, const IAttributeBytesDebugDisplayHelper& helper, bool flag)
    : m_ticket(nullptr), m_flag(flag), m_nameSpace(noNameSpace), m_bytes(bytes),
      m_debugHelper(helper.Clone()) {
    // Damage shows here, not at the first question; the list is made then.
    if (!m_bytes.empty()) m_attributes = OpenStore(m_bytes);
}

PrintTicketAttributeBytesReaderWriter::~PrintTicketAttributeBytesReaderWriter() = default;

const AttributeBytesIndexedList&
PrintTicketAttributeBytesReaderWriter::GetAttributeBytesIndexedListRef() const {
    return GetAttributeBytesIndexedListRef(PersistentAttributes::GetDataModelDocPropNameSpaceId());
}

AttributeBytesIndexedList& PrintTicketAttributeBytesReaderWriter::GetAttributeBytesIndexedListRef() {
    return GetAttributeBytesIndexedListRef(PersistentAttributes::GetDataModelDocPropNameSpaceId());
}

void PrintTicketAttributeBytesReaderWriter::Dump(DumpArgs) const {}

const AttributeBytesIndexedList& PrintTicketAttributeBytesReaderWriter::GetAttributeBytesIndexedListRef(
    AttributeBytesNameSpacesId nameSpace) const {
    return Load(nameSpace);
}

AttributeBytesIndexedList&
PrintTicketAttributeBytesReaderWriter::GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) {
    return Load(nameSpace);
}

// Without a parameter, or with an empty one, there are no settings. What cannot be read is not nothing: a job
// that is to be held, or paid for, must not print as one that is not.
ByteBuffer PrintTicketAttributeBytesReaderWriter::ReadBytes(const PrintTicketXmlDocument& ticket) {
    ByteBuffer bytes;
    const HRESULT hr = ticket.GetOrvelCompleteDocSettingsFromPrintTicket(bytes);
    if (hr == E_FAIL) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The settings in the ticket are damaged"; });
    }
    ThrowIfFailed(hr);
    return bytes;
}

AttributeBytesIndexedList&
PrintTicketAttributeBytesReaderWriter::Load(AttributeBytesNameSpacesId nameSpace) const {
    const OperationScope operation("PrintTicketAttributeBytesReaderWriter::Load");
    if (m_list) return *m_list;
    // Nothing is kept before all is read: a second question about damaged bytes must fail like the first.
    OvlUniquePtr<AttributeBytesIndexedList> list(new AttributeBytesIndexedList);
    if (m_bytes.empty() && m_ticket != nullptr) m_bytes = ReadBytes(*m_ticket);
    OvlUniquePtr<PersistentAttributes> attributes;
    if (!m_bytes.empty()) {
        attributes = OpenStore(m_bytes);
        AttributeBytesRawList rawList;
        attributes->GetAttributeBytesListForNameSpace(nameSpace, rawList);
        list->ImportFromRawList(rawList);
    }
    m_attributes = std::move(attributes);
    m_list = std::move(list);
    m_nameSpace = nameSpace.GetNameSpaceId();
    return *m_list;
}

void PrintTicketAttributeBytesReaderWriter::SetOrvelCompleteDocSettings(ByteBuffer& bytes) {
    ReplaceBytes(bytes);
}

void PrintTicketAttributeBytesReaderWriter::ReplaceBytes(ByteBuffer bytes) const {
    m_bytes = std::move(bytes);
    DropList();
}

void PrintTicketAttributeBytesReaderWriter::ClearCachedIndexedList() { DropList(); }

void PrintTicketAttributeBytesReaderWriter::DropList() const {
    m_attributes.reset();
    m_list.reset();
    m_nameSpace = noNameSpace;
}

LONG PrintTicketAttributeBytesReaderWriter::CommitChangesToPrintTicket() {
    // Deliberate: a list that stood for no bytes is never written.
    if (!m_attributes) return S_OK;
    if (m_ticket == nullptr || !m_list) return E_INVALIDARG;
    AttributeBytesRawList rawList;
    rawList.ImportFromIndexedList(*m_list);
    AttributeBytesNameSpaces nameSpaces;
    // Deliberate: a list of another name space becomes the driver's settings, too.
    nameSpaces.SetNameSpaceAttributes(PersistentAttributes::GetDataModelDocPropNameSpaceId(), rawList);
    m_attributes->SetAttributeBytesNameSpaces(nameSpaces);
    return m_ticket->AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(
        m_attributes->GetPersistentAttributesState());
}
