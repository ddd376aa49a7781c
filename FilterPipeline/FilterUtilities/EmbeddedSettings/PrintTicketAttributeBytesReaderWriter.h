#pragma once

#include "DataModel/DumpArgs.h"
#include "EmbeddedSettings/AttributeBytesReaderWriter.h"

#include <AttributeStore/AttributeBytesNameSpacesId.h>
#include <AttributeStore/IAttributeBytesDebugDisplayHelper.h>
#include <AttributeStore/PersistentAttributes.h>
#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

class PrintTicketXmlDocument;

/// The attribute bytes that a ticket carries, as a list of one name space. The bytes are read on the first
/// question and the list is kept; a change of it reaches the ticket with CommitChangesToPrintTicket only.
///
/// There is one list: the name space that is asked for first stays in force until the list is cleared. Bytes
/// that are damaged throw what PersistentAttributes throws, at every question, and a parameter that cannot be
/// read throws CPComException. One thread at a time, also for constant access, which may load the list.
class OV_FILTER_UTILITIES_API PrintTicketAttributeBytesReaderWriter : public AttributeBytesReaderWriter {
public:
    // A clone of the helper is kept. The flag is kept for derived classes.

    /// Over nothing, until SetOrvelCompleteDocSettings.
    explicit PrintTicketAttributeBytesReaderWriter(const IAttributeBytesDebugDisplayHelper& helper);
    /// The ticket stays the caller's, and must outlive this object.
    PrintTicketAttributeBytesReaderWriter(PrintTicketXmlDocument* ticket,
                                          const IAttributeBytesDebugDisplayHelper& helper, bool flag);
    /// Over bytes that come from elsewhere. Throws if they are damaged.
    PrintTicketAttributeBytesReaderWriter(const ByteBuffer& bytes,
                                          const IAttributeBytesDebugDisplayHelper& helper, bool flag);
    PrintTicketAttributeBytesReaderWriter(const PrintTicketAttributeBytesReaderWriter&) = delete;
    PrintTicketAttributeBytesReaderWriter& operator=(const PrintTicketAttributeBytesReaderWriter&) = delete;
    ~PrintTicketAttributeBytesReaderWriter() override;

    /// Without a name space: that of the driver's settings in a ticket. The list is valid until it is
    /// cleared.
    [[nodiscard]] const AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() const override;
    [[nodiscard]] AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() override;
    /// For diagnostic builds; without effect in this one.
    virtual void Dump(DumpArgs arguments) const;
    [[nodiscard]] virtual const AttributeBytesIndexedList&
    GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) const;
    [[nodiscard]] virtual AttributeBytesIndexedList&
    GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace);

    /// Replaces the bytes, also those of the ticket, which is not asked any more unless these are empty.
    void SetOrvelCompleteDocSettings(ByteBuffer& bytes);
    /// Changes that were not committed are lost.
    void ClearCachedIndexedList();
    /// Writes the list into the ticket as the driver's settings; other name spaces stay. S_OK, and nothing
    /// written, if no bytes were read: also if attributes were added to the list that stood for no bytes.
    /// E_INVALIDARG without a ticket; otherwise the result of writing the parameter.
    LONG CommitChangesToPrintTicket();

protected:
    /// The bytes of a ticket; none if it has no such parameter. Throws as the questions do.
    [[nodiscard]] static ByteBuffer ReadBytes(const PrintTicketXmlDocument& ticket);
    /// As SetOrvelCompleteDocSettings, for derived classes that find their bytes at the first question.
    void ReplaceBytes(ByteBuffer bytes) const;

private:
    AttributeBytesIndexedList& Load(AttributeBytesNameSpacesId nameSpace) const;
    void DropList() const;

    PrintTicketXmlDocument* m_ticket;
    mutable OvlUniquePtr<AttributeBytesIndexedList> m_list; // null until first use
    [[maybe_unused]] bool m_flag;
    mutable LONG m_nameSpace; // of the list; -1 without one
    mutable ByteBuffer m_bytes;
    mutable OvlUniquePtr<PersistentAttributes> m_attributes; // null without bytes
    std::unique_ptr<IAttributeBytesDebugDisplayHelper> m_debugHelper;
};
