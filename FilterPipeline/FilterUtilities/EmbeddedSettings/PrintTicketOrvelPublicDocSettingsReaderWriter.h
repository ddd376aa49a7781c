#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/DumpableObject.h"
#include "EmbeddedSettings/PublicDocSettingsDocument.h"

#include <functional>

class PrintTicketXmlDocument;

/// Reads and writes the public document settings that a ticket carries as text. The text is parsed on first
/// use and then kept; later changes of the parameter by others are not seen. What is set here reaches the
/// ticket with CommitChangesToPrintTicket only.
///
/// A ticket without settings gets an empty document at the first question, or with the commit. Settings that
/// are not well formed count as missing; nothing changes them. Settings that cannot be read are a failure,
/// and are read again at the next question. What fails changes neither the settings nor the ticket.
///
/// Names are those of the device's own settings, found at any depth unless an operation says job level: then
/// among the children of the root. Codes are S_OK, S_FALSE where nothing was found or done, or a failure;
/// nothing is thrown but by the two operations on the text. One thread at a time.
class OV_FILTER_UTILITIES_API PrintTicketOrvelPublicDocSettingsReaderWriter : public DumpableObject {
public:
    /// When a ticket without settings gets an empty document.
    enum class EmptyDocument { AtFirstQuestion, WithCommit };

    /// The ticket stays the caller's, and must outlive this object. Null has no settings, and takes none.
    explicit PrintTicketOrvelPublicDocSettingsReaderWriter(
        PrintTicketXmlDocument* ticket, EmptyDocument emptyDocument = EmptyDocument::AtFirstQuestion);
    PrintTicketOrvelPublicDocSettingsReaderWriter(const PrintTicketOrvelPublicDocSettingsReaderWriter&) =
        delete;
    PrintTicketOrvelPublicDocSettingsReaderWriter&
    operator=(const PrintTicketOrvelPublicDocSettingsReaderWriter&) = delete;
    ~PrintTicketOrvelPublicDocSettingsReaderWriter() override;

    /// For diagnostic builds; without effect in this one.
    void Dump(DumpArgs arguments) const override;

    /// The ticket's text is not blank. Parses nothing and adds nothing.
    bool HasOrvelPublicDocSettings();
    bool IsOrvelPublicDocSettingsFeaturePresent(const CXString& name);
    bool IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(const CXString& name);

    LONG GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                                 CXString& value);
    LONG GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(const CXString& name,
                                                                         bool& specified, CXString& value);
    /// The default, and S_FALSE, also for an element that is not specified or blank.
    LONG GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                              int& value, int defaultValue);
    LONG GetNumberOfChildrenForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                             unsigned int& count);

    /// A member of the entry of a collection with a position, from 0. E_INVALIDARG if the collection is not
    /// specified; a member that is not specified has no value.
    LONG GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                 const CXString& childName, bool& specified,
                                                                 CXString& value);
    LONG GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                              const CXString& childName, bool& specified,
                                                              int& value, int defaultValue);

    /// Hands the entries of a collection to the function, in their order. S_FALSE, with nothing handed out,
    /// if the collection is not there or not specified; an exception of the function ends it.
    LONG VisitEntriesOfOrvelPublicDocSettingsFeature(const CXString& name,
                                                     const std::function<void(const XmlDomNode&)>& visit);

    /// Changes an element, or appends a new one to the root. The syntax is written on a new element only, and
    /// not if it is empty.
    LONG SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, const CXString& syntax,
                                                                 bool specified, const CXString& value);
    LONG SetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, const CXString& syntax,
                                                              bool specified, int value);
    /// The same for a member of an entry; a syntax is written on a member that exists, too. S_OK, with
    /// nothing written, if there is no such collection or entry.
    LONG SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                 const CXString& childName,
                                                                 const CXString& syntax, bool specified,
                                                                 const CXString& value);
    /// Deliberate: the published name is spelled so.
    LONG SetCurrentValueAsInitForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                               const CXString& childName,
                                                               const CXString& syntax, bool specified,
                                                               int value);
    /// Appends the node to the root, in place of the element. E_INVALIDARG for null.
    LONG SetCurrentValueForOrvelPublicDocSettingsFeatureWithXmlDomNode(const CXString& name,
                                                                       XmlDomNode* node);
    LONG DeleteOrvelPublicDocSettingsFeature(const CXString& name);

    /// E_FAIL, with the ticket as it was, if the text has more than maxCommittedBytes. S_FALSE if nothing was
    /// read.
    LONG CommitChangesToPrintTicket();
    static constexpr unsigned int maxCommittedBytes = 10'240;
    /// Makes several changes and commits them with what was changed before: all of them, or none and the
    /// first failure. The function is given the document, which is not to be kept.
    LONG ChangeAndCommit(const std::function<LONG(const PublicDocSettingsDocument&)>& change);

protected:
    /// Null if the text is not well formed, which is then parsed again the next time, or without a ticket.
    /// Throws CPComException if it cannot be read.
    MicrosoftXmlParser* GetDomWithOrvelPublicDocSettingsInitOnFirstUse();
    /// Empty if the ticket has no such parameter. Throws CPComException.
    void GetJobOrvelPublicDocSettingsXml(CPString& xml);
    /// The parameter becomes the first child of the ticket's root. Throws CPComException, without a ticket
    /// with E_POINTER.
    void SetJobOrvelPublicDocSettingsXml(const CPString& xml);
    /// Empty if there is no such attribute.
    CXString GetAttributeAsString(XmlDomNode* node, const wchar_t* name);
    bool IsSpecified(XmlDomNode* node);

private:
    PublicDocSettingsDocument Document() {
        return PublicDocSettingsDocument(GetDomWithOrvelPublicDocSettingsInitOnFirstUse());
    }
    bool IsPresent(const CXString& name, PublicDocSettingsDocument::Depth depth);
    LONG Commit(const MicrosoftXmlParser& document);

    PrintTicketXmlDocument* m_ticket;
    PublicDocSettingsDocument::Parser m_parser; // null until first use
    EmptyDocument m_emptyDocument;
};
