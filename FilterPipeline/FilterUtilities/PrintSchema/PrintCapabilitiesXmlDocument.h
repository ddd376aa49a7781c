#pragma once

#include "PrintSchema/PrintSchemaXmlDocument.h"

#include <memory>

class PrintTicketXmlDocument;

/// A Print Capabilities document: what options a feature has, with their names and sizes, and the standard
/// shapes of features, options and parameters for those who build or extend such a document.
///
/// Results and exceptions are those of the base. Questions about a node look at that node and what is below
/// it, wherever else the same names stand in the document.
class OV_FILTER_UTILITIES_API PrintCapabilitiesXmlDocument : public PrintSchemaXmlDocument {
public:
    explicit PrintCapabilitiesXmlDocument(IXMLDOMDocument2* document);
    explicit PrintCapabilitiesXmlDocument(IStream* stream);
    explicit PrintCapabilitiesXmlDocument(const CXString& xml);

    /// The capabilities of a printer without a ticket, asked for under the user's token, which is not owned;
    /// null leaves the thread as it is. Null for a printer that cannot be opened; later failures are raised.
    static std::unique_ptr<PrintCapabilitiesXmlDocument>
    CreatePrintCapabilitiesXmlDocument(const wchar_t* printerName, void* userToken);

    // ---- Building. What is created is not part of the tree until the caller appends it.

    HRESULT CreateFeature(const wchar_t* prefix, const wchar_t* name, const wchar_t* displayName,
                          IXMLDOMElement** out);
    /// A feature of which one option is chosen.
    HRESULT CreatePickOneFeature(const wchar_t* prefix, const wchar_t* name, const wchar_t* displayName,
                                 IXMLDOMElement** out);
    HRESULT CreateOption(const wchar_t* prefix, const wchar_t* name, const wchar_t* displayName,
                         IXMLDOMElement** out);
    HRESULT CreateAndAppendOption(const wchar_t* prefix, const wchar_t* name, const wchar_t* displayName,
                                  IXMLDOMNode* parent);
    /// mandatoryKeyword is a public keyword without prefix. A multiple of 0 or less is not written.
    HRESULT CreateIntegerParameterDef(const wchar_t* prefix, const wchar_t* name,
                                      const wchar_t* mandatoryKeyword, const wchar_t* displayName,
                                      int defaultValue, int minValue, int maxValue, int multiple,
                                      const wchar_t* unitType, IXMLDOMElement** out);
    /// Two decimals.
    HRESULT CreateRealParameterDef(const wchar_t* prefix, const wchar_t* name,
                                   const wchar_t* mandatoryKeyword, const wchar_t* displayName,
                                   float defaultValue, float minValue, float maxValue, float multiple,
                                   const wchar_t* unitType, IXMLDOMElement** out);
    HRESULT CreateStringParameterDef(const wchar_t* prefix, const wchar_t* name,
                                     const wchar_t* mandatoryKeyword, const wchar_t* displayName,
                                     const wchar_t* defaultValue, int minLength, int maxLength,
                                     const wchar_t* unitType, IXMLDOMElement** out);

    // ---- Editing

    /// E_ELEMENT_NOT_FOUND, which is returned, for a node without display name. Raises E_INVALIDARG for a
    /// null node and an empty text.
    HRESULT ReplaceDisplayNamePropertyValue(IXMLDOMNode* node, const wchar_t* displayName);
    /// E_ELEMENT_NOT_FOUND also if the feature has no such option.
    HRESULT ReplaceOptionDisplayNamePropertyValue(IXMLDOMNode* feature, const wchar_t* prefix,
                                                  const wchar_t* option, const wchar_t* displayName);
    HRESULT DeleteParameterDefNodeIfExists(const wchar_t* prefix, const wchar_t* name);

    // ---- Reading

    HRESULT GetChildOptionNodes(IXMLDOMNode* feature, IXMLDOMNodeList** out) const;
    HRESULT GetChildOptionNodeIfExists(IXMLDOMNode* feature, const wchar_t* prefix, const wchar_t* name,
                                       IXMLDOMNode** out) const;
    HRESULT GetParameterDefNodeIfExists(const wchar_t* prefix, const wchar_t* name, IXMLDOMNode** out) const;
    /// The value of a scored property with a public name. Raises E_FAIL if there is none, also where a
    /// parameter stands in its place.
    CXString GetChildScoredPropertyValueAsString(IXMLDOMNode* node, const wchar_t* name) const;
    /// A text that is no number reads as far as it is one.
    int GetChildScoredPropertyValueAsInteger(IXMLDOMNode* node, const wchar_t* name) const;
    /// As GetChildScoredPropertyValueAsString, but what does not exist is S_FALSE and an empty text.
    HRESULT GetChildScoredPropertyValueIfExists(IXMLDOMNode* node, const wchar_t* name, CXString& out) const;
    CXString GetChildDisplayNamePropertyValue(IXMLDOMNode* node) const;
    /// The size in microns of an option of the page media size. A custom option has the size that the ticket
    /// asks for, if that is custom too, and otherwise that of Letter or A4, by the user's locale.
    void GetWidthAndLengthPropertyValues(PrintTicketXmlDocument* ticket, IXMLDOMNode* option, int& width,
                                         int& length) const;

    /// For diagnostic builds; without effect in this one.
    HRESULT DebugDumpXmlToFileInTempDirectory(const CXString& name) const;

private:
    struct ParameterTexts {
        const wchar_t* prefix;
        const wchar_t* name;
        const wchar_t* mandatoryKeyword;
        const wchar_t* displayName;
        const wchar_t* unitType;
    };
    /// Of a parameter that is a number, as text. An empty multiple is none.
    struct Limits {
        CXString defaultValue;
        CXString minValue;
        CXString maxValue;
        CXString multiple;
    };

    CComPtr<IXMLDOMElement> CreateNamedElement(const wchar_t* element, const wchar_t* prefix,
                                               const wchar_t* name, const wchar_t* displayName);
    CComPtr<IXMLDOMElement> CreateParameterDef(const ParameterTexts& texts, const wchar_t* type);
    HRESULT CreateNumberParameterDef(const ParameterTexts& texts, const wchar_t* type, const Limits& limits,
                                     IXMLDOMElement** out);
    void AppendProperty(IXMLDOMElement* parent, PrintSchema::MsPrintTicketNamespacesEnum ns,
                        const wchar_t* name, const wchar_t* type, const wchar_t* value);
    void AppendMandatoryAndUnit(IXMLDOMElement* parameter, const ParameterTexts& texts);
    /// S_FALSE for a property that does not exist, that has no value, or whose value is no text.
    HRESULT ReadPropertyValue(IXMLDOMNode* node, BSTR query, CXString& out) const;
};
