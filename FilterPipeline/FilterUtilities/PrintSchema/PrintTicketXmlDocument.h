#pragma once

#include "DataModel/ValueIds.h"
#include "PrintSchema/PrintSchemaXmlDocument.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

struct IPrintPipelinePropertyBag;

/// A Print Ticket. Results and exceptions are those of the base, but what does not exist is
/// E_ELEMENT_NOT_FOUND where a feature, option or scored property is asked for or set; that result is
/// returned, never raised.
///
/// isPublic selects the prefix of a name: true that of the keywords, false that of the private keywords.
class OV_FILTER_UTILITIES_API PrintTicketXmlDocument : public PrintSchemaXmlDocument {
public:
    explicit PrintTicketXmlDocument(IXMLDOMDocument2* document);
    PrintTicketXmlDocument(IXMLDOMDocument2* document, PrivateNames privateNames);
    explicit PrintTicketXmlDocument(IStream* stream);
    explicit PrintTicketXmlDocument(const CXString& xml);

    /// A ticket without content that declares all namespaces the driver writes.
    static CXString GetBoilerplateForEmptyPrintTicket();

    // ---- Reading

    /// out may be null.
    HRESULT FeaturePresent(const wchar_t* name, bool isPublic, IXMLDOMNode** out) const;
    /// The option of a feature: its local name, and its prefix with the colon, for which out may be null.
    /// Both are empty for an option without name. Raises E_FAIL for a name without prefix.
    HRESULT GetFeatureOption(const wchar_t* prefix, const wchar_t* name, wchar_t** option,
                             wchar_t** optionPrefix) const;
    /// The name of the sub-feature's option without its prefix; names of other namespaces keep theirs.
    HRESULT GetSubFeatureOption(const wchar_t* feature, bool featureIsPublic, const wchar_t* subFeature,
                                bool subFeatureIsPublic, wchar_t** option) const;
    /// The name of the node that a query finds, likewise.
    HRESULT QueryNodeOption(const wchar_t* xpath, wchar_t** option) const;
    /// The value of a scored property with a public name, also one that a parameter initialiser supplies.
    HRESULT GetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                   wchar_t** out) const;
    HRESULT GetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                   int* out) const;
    HRESULT GetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                   float* out) const;
    /// Finds all initialisers of a parameter.
    DocumentQuery ParameterInitQuery(const wchar_t* prefix, const wchar_t* name) const;
    HRESULT GetParameterInitNodeIfExists(const wchar_t* prefix, const wchar_t* name, IXMLDOMNode** out) const;
    HRESULT GetParameterInitValueNodeIfExists(const wchar_t* prefix, const wchar_t* name,
                                              IXMLDOMNode** out) const;
    /// out is emptied if there is no such parameter.
    HRESULT GetStringParameterInitValue(const wchar_t* prefix, const wchar_t* name, CXString& out) const;
    /// The attribute bytes that the ticket carries. S_FALSE, and an empty buffer, if there are none; failures
    /// are returned, E_FAIL for what is not Base64.
    HRESULT GetOrvelCompleteDocSettingsFromPrintTicket(ByteBuffer& buffer) const;

    // ---- Editing

    /// Where the property refers to a parameter, the content of its initialiser is replaced.
    HRESULT SetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property, int value);
    /// Sets an attribute that the option of the feature has.
    HRESULT SetChildNodeOptionAttributeValue(const wchar_t* feature, bool isPublic, const wchar_t* attribute,
                                             const wchar_t* value);
    /// Renames the option of a feature. E_ELEMENT_NOT_FOUND, and nothing changed, for an option without name.
    HRESULT SetFeatureOption(const wchar_t* feature, bool featureIsPublic, const wchar_t* option,
                             bool optionIsPublic);

    // What is created here is not part of the tree until the caller appends it. A ticket that does not
    // declare the private keywords does so once a private name is made.
    HRESULT CreateFeatureOptionPair(const wchar_t* name, bool isPublic, IXMLDOMElement** feature,
                                    IXMLDOMElement** option);
    HRESULT CreateFeatureOptionPair(const wchar_t* name, bool isPublic, const wchar_t* optionName,
                                    bool optionIsPublic, IXMLDOMElement** feature, IXMLDOMElement** option);
    /// A reference to a parameter with a public name, and its initialiser. Both outs are set, or none.
    HRESULT CreateParamRefInitPair(const wchar_t* name, const wchar_t* type, const wchar_t* value,
                                   IXMLDOMElement** ref, IXMLDOMElement** init);
    HRESULT CreateParamRefInitPair(const wchar_t* name, int value, IXMLDOMElement** ref,
                                   IXMLDOMElement** init);
    HRESULT CreateStringParameterInit(const wchar_t* prefix, const wchar_t* name, const wchar_t* value,
                                      IXMLDOMElement** out);
    HRESULT CreateUntypedParameterInitFromString(const wchar_t* prefix, const wchar_t* name,
                                                 const wchar_t* value, IXMLDOMElement** out);
    /// The value is wrapped in the text of a CDATA section, which is part of the value.
    HRESULT CreateCDATAStringParameterInit(const wchar_t* prefix, const wchar_t* name, const CXString& value,
                                           IXMLDOMElement** out);
    HRESULT CreateIntegerParameterInit(const wchar_t* prefix, const wchar_t* name, int value,
                                       IXMLDOMElement** out);
    HRESULT AppendStringParameterInit(const wchar_t* prefix, const wchar_t* name, const wchar_t* value);
    HRESULT AppendIntegerParameterInit(const wchar_t* prefix, const wchar_t* name, int value);
    /// To the child of the document, not of its root element, that has this name in the framework namespace.
    /// Raises E_FAIL if there is none.
    HRESULT AppendToElement(const wchar_t* elementName, IXMLDOMNode* node);

    HRESULT DeleteParameterInitNodeIfExists(const wchar_t* prefix, const wchar_t* name);
    /// A property whose name has the prefix of the framework namespace.
    HRESULT DeleteProperty(const wchar_t* name);

    /// The OCPT document of the job; it becomes the first child of the root element.
    HRESULT AddOrReplaceOcptParameterInit(const CXString& ocpt);
    HRESULT DeleteOcptParameterInitIfExists();
    /// The attribute bytes of the job; they become the last child of the root element. Failures are returned:
    /// E_FAIL, with the old bytes gone, for more than 1,500 bytes.
    HRESULT AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(const ByteBuffer& buffer);
    /// Hands the OCPT document on to later filters: in the ticket and the bag for XPS output (VAL_PDL_XPS),
    /// in the bag alone for other output. What the ticket held goes in every case. The bag's failures are
    /// returned.
    HRESULT UpdateOcptFieldsInPrintTicketAndPipelinePropertiesFromDocumentFilter(
        bool hasOcpt, DataModelIds::tagValueEnum value, const CXString& ocpt, IPrintPipelinePropertyBag* bag);

    /// For diagnostic builds; without effect in this one.
    HRESULT DebugDumpXmlToFileInTempDirectory(const CXString& name) const;

private:
    /// Of a node that may be null.
    HRESULT OptionNameOf(IXMLDOMNode* node, wchar_t** option) const;
    HRESULT StripKeywordNamespace(wchar_t** value) const;
    HRESULT DeleteParamInitOrphans(IXMLDOMNodeList* refs, IXMLDOMNodeList* inits);
    HRESULT DeleteNodeList(IXMLDOMNodeList* list);

    const CComBSTR& Prefix(bool isPublic) const;
    CComPtr<IXMLDOMElement> CreateParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                const wchar_t* type, const wchar_t* value);
};
