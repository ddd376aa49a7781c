#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "PrintSchema/PrintSchemaKeywords.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <string_view>
#include <vector>

class DocumentQuery;

/// A Print Ticket or Print Capabilities document, over a DOM document that it shares: copies of the object
/// work on the same tree. It knows the prefixes that the root element gives to the namespaces of Print
/// Schema, and sees to it that private keywords have the prefix "ok:" in names, whatever they came with.
///
/// Names are given as a prefix with its colon and a local name, which are joined as they are. Only the prefix
/// that GetUserKeywordsNsPrefix gives, and "ok:", mean private keywords, however the document spells those:
/// they are found by their namespace, and a new one gets a prefix that is not bound to another namespace and
/// is declared. Where there is none, E_FAIL is raised and nothing changed. Out texts are BSTRs and, like out
/// interfaces, the caller's to free or release.
///
/// Operations with an HRESULT give S_OK, or S_FALSE where what is looked for does not exist; failures are
/// raised as CPComException, with the HRESULT and the name of the operation: E_POINTER for null out
/// arguments, E_INVALIDARG for empty texts, E_PENDING for a document without DOM. What differs says so. An
/// edit that fails leaves the document as it was.
///
/// A document and its copies belong to one thread at a time; there are no locks.
class OV_FILTER_UTILITIES_API PrintSchemaXmlDocument {
public:
    /// What becomes of the private names of a document that is taken over.
    enum class PrivateNames {
        Normalised,    ///< they get the prefix "ok:"
        LeftAsTheyAre, ///< for asking somebody else's document, which does not change
    };

    /// The local name of the root element, and the document, of which a reference is kept. Null gives an
    /// object without DOM. Raises if there is no such root element (with the code S_FALSE), if it does not
    /// declare the framework namespace with a prefix (E_FAIL), or if private names cannot have the prefix
    /// "ok:" because the document binds that to another namespace, at the root or where one stands (E_FAIL).
    PrintSchemaXmlDocument(const wchar_t* rootName, IXMLDOMDocument2* document);
    /// The same without an edit, where names are left as they are: the prefix that the document gives out for
    /// private keywords is then the first that the root element declares, and names under that and "ok:" are
    /// found. None is refused.
    PrintSchemaXmlDocument(const wchar_t* rootName, IXMLDOMDocument2* document, PrivateNames privateNames);
    /// Reads the stream from its start. Raises also if it does not parse: E_FAIL, with the place in the
    /// message.
    PrintSchemaXmlDocument(const wchar_t* rootName, IStream* stream);
    /// The same with a text; what stands before its first '<' is dropped.
    PrintSchemaXmlDocument(const wchar_t* rootName, const CXString& xml);
    PrintSchemaXmlDocument(const PrintSchemaXmlDocument& other);
    PrintSchemaXmlDocument& operator=(const PrintSchemaXmlDocument& other);
    virtual ~PrintSchemaXmlDocument();

    bool HasDomDocument() const;
    /// No reference is added.
    IXMLDOMDocument2* GetDomDocPtr() const;
    IXMLDOMNode* GetRootNode() const;
    /// The document as text. E_FAIL without DOM; failures are returned.
    HRESULT get_xml(wchar_t** out) const;

    // Prefixes, with their colon; null if the root element does not declare the namespace. The prefix of the
    // private keywords is never null: "ok:", or "ns0000:" for a document that does not declare them; a number
    // stands behind that where both are prefixes of the other keywords, and no private name can be written.
    CComBSTR GetFrameworkNsPrefix() const;
    CComBSTR GetKeywordsNsPrefix() const;
    CComBSTR GetKeywordsV11NsPrefix() const;
    CComBSTR GetUserKeywordsNsPrefix() const;
    bool IsKeywordsV11NsPrefixDefined() const;
    /// Raises E_INVALIDARG for what is no MsPrintTicketNamespacesEnum.
    CComBSTR GetNsPrefix(PrintSchema::MsPrintTicketNamespacesEnum ns) const;
    /// The prefix of this document for what a prefix means in another one; null if one of the two root
    /// elements does not declare that namespace. An empty one stays as it is.
    CComBSTR GetNsPrefixOf(const wchar_t* prefix, const PrintSchemaXmlDocument& other) const;
    /// Splits a name at its first colon. A name without prefix is public. E_FAIL, with the keyword filled in,
    /// for prefixes other than those of the keywords and the private keywords; failures are returned.
    HRESULT GetKeywordAndPrefixFromName(const wchar_t* name, CXString& keyword,
                                        PrintSchema::MsPrintTicketNamespacesEnum& ns) const;

    // ---- Looking up

    HRESULT GetNode(const wchar_t* xpath, IXMLDOMNode** out) const;
    /// S_OK or E_ELEMENT_NOT_FOUND, which is returned.
    HRESULT QueryNode(const wchar_t* xpath) const;
    /// The value of a property: the text of its Value, or of the initialiser that its ParameterRef names. An
    /// empty text is a null BSTR. E_ELEMENT_NOT_FOUND, which is returned, if there is none: a text is null
    /// then, a number untouched. A text that is no number reads as far as it is one.
    HRESULT QueryNodeValue(const wchar_t* xpath, wchar_t** out) const;
    HRESULT QueryNodeValue(const wchar_t* xpath, int* out) const;
    HRESULT QueryNodeValue(const wchar_t* xpath, float* out) const;
    HRESULT QueryNodeValue(const DocumentQuery& query, wchar_t** out) const;
    HRESULT QueryNodeValue(const DocumentQuery& query, int* out) const;
    HRESULT GetAttributeValue(IXMLDOMNode const* node, const wchar_t* attribute, wchar_t** out) const;
    HRESULT GetFeatureNodeIfExists(const wchar_t* prefix, const wchar_t* name, IXMLDOMNode** out) const;
    /// Finds all features of a name.
    DocumentQuery FeatureQuery(const wchar_t* prefix, const wchar_t* name) const;
    /// Raises E_FAIL if there is none.
    HRESULT GetFeatureNode(const wchar_t* prefix, const wchar_t* name, IXMLDOMNode** out) const;

    // ---- Deleting

    HRESULT DeleteFeatureNodeIfExists(const wchar_t* prefix, const wchar_t* name);
    /// If the feature stands more than once, deletes the first, and only that. S_FALSE if there is nothing to
    /// do.
    HRESULT DeleteFeatureNodeIfADuplicateExists(const wchar_t* prefix, const wchar_t* name);
    /// S_FALSE for a node without parent.
    HRESULT DeleteNode(IXMLDOMNode* node);
    /// All of that name. Raises E_FAIL, not E_INVALIDARG, for an empty name.
    HRESULT DeletePropertyNodesIfExist(const wchar_t* prefix, const wchar_t* name);
    /// All features, nested ones too, whose name is of the namespace where it stands. S_FALSE if there is
    /// none and the root element does not declare the namespace.
    HRESULT DeletePrivateFeatures(const wchar_t* namespaceUri);

    // ---- Building. A null parent raises E_INVALIDARG.

    HRESULT AppendChildToRootNode(IXMLDOMElement* child);
    HRESULT AppendChild(IXMLDOMNode* parent, IXMLDOMNode* child);
    HRESULT AppendChildIntegerProperty(IXMLDOMNode* parent, PrintSchema::MsPrintTicketNamespacesEnum ns,
                                       const wchar_t* name, int value);
    HRESULT AppendChildStringProperty(IXMLDOMNode* parent, PrintSchema::MsPrintTicketNamespacesEnum ns,
                                      const wchar_t* name, const wchar_t* value);
    HRESULT AppendChildIntegerScoredProperty(IXMLDOMNode* parent, const wchar_t* name, int value);
    /// The value is a public keyword, without prefix.
    HRESULT AppendChildQNameScoredProperty(IXMLDOMNode* parent, const wchar_t* name, const wchar_t* value);
    HRESULT AppendChildParameterRefScoredProperty(IXMLDOMNode* parent, const wchar_t* scoredPrefix,
                                                  const wchar_t* scoredName, const wchar_t* refPrefix,
                                                  const wchar_t* refName);
    HRESULT CreateParameterRefScoredProperty(const wchar_t* scoredPrefix, const wchar_t* scoredName,
                                             const wchar_t* refPrefix, const wchar_t* refName,
                                             IXMLDOMElement** out);
    HRESULT CreateParameterRef(const wchar_t* prefix, const wchar_t* name, IXMLDOMElement** out);
    /// A property without value.
    HRESULT CreateProperty(PrintSchema::MsPrintTicketNamespacesEnum ns, const wchar_t* name,
                           IXMLDOMElement** out);

    // ---- The document as a whole

    /// Makes the XML declaration say UTF-8. S_FALSE without DOM, E_FAIL for a document without declaration;
    /// failures are returned.
    HRESULT SetProcessingInstructionsEncodingUtf8();
    /// Declares the private keywords with the prefix "ok" on the root element. S_OK if they are declared
    /// already, S_FALSE if it declared them; GetUserKeywordsNsPrefix gives "ns0000:" all the same. Failures
    /// are returned: E_FAIL, and nothing changed, if the document binds "ok" to another namespace, at the
    /// root or where a name with that prefix stands.
    HRESULT AddUserKeywordsNamespaceDefinitionIfMissing();
    /// For diagnostic builds; without effect in this one.
    HRESULT DebugDumpXmlToFileInTempDirectory(const CXString& name, const CXString& extension) const;

protected:
    void InitInstance();
    HRESULT FixPrivateNameSpacePrefix();
    /// The prefix that the root element gives to a namespace, with its colon; out is untouched on S_FALSE.
    /// Raises E_FAIL for a namespace that is declared as the default.
    HRESULT GetPrefixFromURI(const wchar_t* uri, wchar_t** out) const;

    HRESULT CreateProperty(PrintSchema::MsPrintTicketNamespacesEnum ns, const wchar_t* name,
                           const wchar_t* type, const wchar_t* value, IXMLDOMElement** out);
    // Scored properties that are made here always have public names.
    HRESULT CreateScoredProperty(const wchar_t* name, IXMLDOMElement** out);
    HRESULT CreateScoredProperty(const wchar_t* name, const wchar_t* type, const wchar_t* value,
                                 IXMLDOMElement** out);
    HRESULT CreateScoredProperty(const wchar_t* name, IXMLDOMNode* child, IXMLDOMElement** out);
    HRESULT CreateStringScoredProperty(const wchar_t* name, const wchar_t* value, IXMLDOMElement** out);
    HRESULT CreateIntegerScoredProperty(const wchar_t* name, int value, IXMLDOMElement** out);
    /// Two decimals.
    HRESULT CreateRealScoredProperty(const wchar_t* name, double value, IXMLDOMElement** out);

    // An operation with a query does with the first node that it finds what the one with a text does.
    HRESULT SetNodeValue(const wchar_t* xpath, const wchar_t* value);
    HRESULT SetNodeValue(const DocumentQuery& query, const wchar_t* value);
    /// Sets an attribute of the node's Option. S_FALSE, and nothing changed, if there is no such node, option
    /// or attribute.
    HRESULT SetOptionNodeAttributeValue(const wchar_t* xpath, const wchar_t* value, const wchar_t* attribute);
    HRESULT SetOptionNodeAttributeValue(const DocumentQuery& query, const wchar_t* value,
                                        const wchar_t* attribute);
    HRESULT GetNodeValue(const wchar_t* xpath, wchar_t** out) const;
    HRESULT GetNodeValue(const DocumentQuery& query, wchar_t** out) const;
    /// All elements of the framework namespace of that name, in document order.
    HRESULT GetNodes(const wchar_t* elementName, IXMLDOMNodeList** out) const;

    HRESULT AppendXMLAttribute(IXMLDOMElement* element, const wchar_t* name, const wchar_t* namespaceUri,
                               const wchar_t* value);
    HRESULT CreateXMLElement(const wchar_t* name, const wchar_t* namespaceUri, IXMLDOMElement** out);
    HRESULT CreateCDATASectionXMLElement(const wchar_t* text, IXMLDOMNode** out);

    // As the getters of the prefixes, without a copy.
    const CComBSTR& FrameworkPrefix() const { return m_frameworkPrefix; }
    const CComBSTR& KeywordsPrefix() const { return m_keywordsPrefix; }
    const CComBSTR& UserKeywordsPrefix() const { return m_userKeywordsPrefix; }
    /// Of the names of types. "xsd:" for a document that does not declare them, "xsd1:" and so on where it
    /// gives that prefix to another namespace; a value made here with a type then declares it.
    CComBSTR TypesPrefix() const;
    /// Under which private names stand below the root element, with their colon.
    std::vector<CXString> PrivatePrefixes() const;
    /// Raises E_PENDING without DOM.
    void RequireDocument() const;
    /// What a question for a node by its name needs; clears out.
    void RequireQuestion(const wchar_t* name, IXMLDOMNode** out) const;
    /// An element of the framework namespace, with a name attribute unless name is empty.
    CComPtr<IXMLDOMElement> CreateFrameworkElement(const wchar_t* elementName,
                                                   const wchar_t* prefix = nullptr,
                                                   const wchar_t* name = nullptr);
    /// Gives an element a name. One that stands in the document keeps its place.
    void GiveName(IXMLDOMElement* element, const wchar_t* prefix, const wchar_t* name);
    /// A Value with a text; of a type unless type is null.
    CComPtr<IXMLDOMElement> CreateValue(const wchar_t* type, const wchar_t* text);
    /// The nodes that an expression selects in the document; raises under the name of the operation that
    /// asks.
    CComPtr<IXMLDOMNodeList> SelectNodes(BSTR xpath) const;
    /// Null if there is none.
    CComPtr<IXMLDOMNode> SelectFirst(BSTR xpath) const;
    /// The attribute of a node; null if it has none of that name.
    static CComPtr<IXMLDOMNode> FindAttribute(IXMLDOMNode* node, const wchar_t* name);
    /// The text of an attribute. False if there is no such attribute.
    static bool ReadAttribute(IXMLDOMNode* node, const wchar_t* name, CComBSTR& text);

private:
    // The two classes that know how private names are spelled.
    friend class DocumentQuery;
    friend class PrivateKeywordNames;

    void InitInstance(PrivateNames privateNames);
    void CreateDocument();
    void FinishLoading(HRESULT hr, VARIANT_BOOL isLoaded);
    void SetSelectionNamespaces(std::wstring_view prefix);
    HRESULT TryGetPrefixFromURI(const wchar_t* uri, wchar_t** out) const;
    CComPtr<IXMLDOMNode> FindNode(const wchar_t* xpath) const;
    /// Null if a node, which may be null, has no value.
    CComPtr<IXMLDOMNode> FindValueNode(IXMLDOMNode* node) const;
    HRESULT GetValueOf(IXMLDOMNode* node, wchar_t** out) const;
    HRESULT SetValueOf(IXMLDOMNode* node, const wchar_t* value);
    HRESULT SetOptionAttribute(IXMLDOMNode* node, const wchar_t* value, const wchar_t* attribute);
    void RefuseForeignUserPrefix();
    /// The root element's prefix of a schema namespace, `declared`; where it has none the usual one, numbered
    /// if the root gives that to another namespace.
    CComBSTR SchemaPrefix(const CComBSTR& declared, std::wstring_view usual, const wchar_t* uri) const;
    /// Whether the document uses a prefix for one of the other namespaces of Print Schema.
    bool IsPrefixOfOthers(std::wstring_view prefix) const;
    void DeclarePrivate(IXMLDOMElement* element, const std::vector<std::wstring_view>& prefixes);

    CComPtr<IXMLDOMDocument2> m_document;
    CComBSTR m_rootName;
    CComBSTR m_xsdPrefix;
    CComBSTR m_xsiPrefix;
    CComBSTR m_frameworkPrefix;
    CComBSTR m_keywordsPrefix;
    CComBSTR m_keywordsV11Prefix;
    CComBSTR m_userKeywordsPrefix;
    CComPtr<IXMLDOMNode> m_rootNode;
};
