#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/XmlDomNode.h>

#include <windows.h>

#include <functional>
#include <utility>

/// The elements of a public document settings document: the settings of a job by the device's own names, as
/// XML text inside a ticket. An element's text is its value; it states a choice unless it is marked
/// specified="false". The elements below a collection are its entries or members.
///
/// This is a view over a parsed document that stays the caller's; it costs nothing to make. Over null, no
/// element is found, and nothing written. Codes are S_OK, S_FALSE for what is not there, or a failure; out
/// arguments are cleared first. What the platform's DOM fails at is thrown as CPComException, and has changed
/// nothing: Guarded makes a code of it.
class OV_FILTER_UTILITIES_API PublicDocSettingsDocument {
public:
    using Parser = OvlUniquePtr<MicrosoftXmlParser>;

    /// Whose elements are looked for: all below the root, the first in document order, or the root's
    /// children only.
    enum class Depth { Any, JobLevel };

    // ---- The document as a whole

    /// A document without settings, as text.
    [[nodiscard]] static CPString GetEmptyDocument();
    /// The text that `read` gives. If that is blank, first hands an empty document to `write`, and reads
    /// again. Exceptions of the two functions pass through.
    [[nodiscard]] static CPString ReadOrCreate(const std::function<CPString()>& read,
                                               const std::function<void(const CPString&)>& write);
    /// Null for a text that is blank or not well formed, which nobody hears of. Other failures are thrown:
    /// the text may be a document the next time.
    [[nodiscard]] static Parser Parse(const CPString& text);
    /// The document as text, with its XML declaration.
    [[nodiscard]] static CPString GetText(const MicrosoftXmlParser& document);

    /// Runs an operation on the element of that name, and gives its code, or that of the exception that ends
    /// it, which is reported.
    template <typename Operation>
    static LONG Guarded(const CXString& name, Operation&& operation) noexcept {
        try {
            return std::forward<Operation>(operation)();
        } catch (...) {
            return ReportCaughtException(name);
        }
    }

    // ---- Its elements

    explicit PublicDocSettingsDocument(const MicrosoftXmlParser* document) noexcept : m_document(document) {}

    /// Null if there is none.
    [[nodiscard]] XmlDomNode::Pointer Find(const CXString& name, Depth depth = Depth::Any) const;
    /// The text of an attribute, empty if there is none.
    [[nodiscard]] static CXString GetAttributeAsString(const XmlDomNode& node, const wchar_t* name);
    /// Any text of the attribute but exactly "false" counts as specified, as does none.
    [[nodiscard]] static bool IsSpecified(const XmlDomNode& node);

    /// The entries of a collection are the elements below it, with positions from 0; null if there is none.
    [[nodiscard]] static XmlDomNode::Pointer FindEntry(const XmlDomNode& collection, unsigned int index);
    [[nodiscard]] static unsigned int CountEntries(const XmlDomNode& collection);

    LONG GetString(const CXString& name, Depth depth, bool& specified, CXString& value) const;
    /// The default, and S_FALSE, also for an element that is not specified or blank.
    LONG GetInt(const CXString& name, bool& specified, int& value, int defaultValue) const;
    /// Of elements below it.
    LONG GetNumberOfChildren(const CXString& name, bool& specified, unsigned int& count) const;

    /// A member, at any depth, of the entry of a collection with a position, from 0. E_INVALIDARG if the
    /// collection is not specified. A member that is not specified has no value: S_FALSE.
    LONG GetMemberString(const CXString& name, unsigned int index, const CXString& member, bool& specified,
                         CXString& value) const;
    LONG GetMemberInt(const CXString& name, unsigned int index, const CXString& member, bool& specified,
                      int& value, int defaultValue) const;
    /// Of an entry that is at hand: who reads a collection walks its entries, for a position is counted from
    /// the first one each time.
    static LONG GetMemberString(const XmlDomNode& entry, const CXString& member, bool& specified,
                                CXString& value);
    [[nodiscard]] static XmlDomNode::Pointer NextEntry(const XmlDomNode& entry);

    /// Changes the element, wherever it stands, or appends a new one to the root. The syntax is written on a
    /// new element only, and not if it is empty.
    LONG SetString(const CXString& name, const CXString& syntax, bool specified, const CXString& value) const;
    /// The same for a member of an entry; a syntax is written on a member that exists, too. S_OK, with
    /// nothing written, if there is no such collection or entry.
    LONG SetMemberString(const CXString& name, unsigned int index, const CXString& member,
                         const CXString& syntax, bool specified, const CXString& value) const;

    /// Appends a node to the root, in place of the element of that name, if there is one.
    LONG Replace(const CXString& name, const XmlDomNode& node) const;
    LONG Delete(const CXString& name) const;

private:
    static LONG ReportCaughtException(const CXString& name) noexcept;
    void AppendElement(XmlDomNode& parent, const CXString& name, const CXString& syntax, bool specified,
                       const CXString& value) const;

    const MicrosoftXmlParser* m_document;
};
