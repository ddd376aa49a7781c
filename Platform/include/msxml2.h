#pragma once

// The DOM and SAX interfaces, in their published slot order. Library code includes <msxml6.h>, which adds the
// interface and class ids to these declarations and to those of MinGW-w64 alike.

#include <oaidl.h>
#include <objidl.h>
#include <unknwn.h>

enum DOMNodeType {
    NODE_INVALID = 0,
    NODE_ELEMENT = 1,
    NODE_ATTRIBUTE = 2,
    NODE_TEXT = 3,
    NODE_CDATA_SECTION = 4,
    NODE_ENTITY_REFERENCE = 5,
    NODE_ENTITY = 6,
    NODE_PROCESSING_INSTRUCTION = 7,
    NODE_COMMENT = 8,
    NODE_DOCUMENT = 9,
    NODE_DOCUMENT_TYPE = 10,
    NODE_DOCUMENT_FRAGMENT = 11,
    NODE_NOTATION = 12
};

struct IXMLDOMAttribute;
struct IXMLDOMCDATASection;
struct IXMLDOMComment;
struct IXMLDOMDocument;
struct IXMLDOMDocumentFragment;
struct IXMLDOMDocumentType;
struct IXMLDOMElement;
struct IXMLDOMEntityReference;
struct IXMLDOMImplementation;
struct IXMLDOMNamedNodeMap;
struct IXMLDOMNodeList;
struct IXMLDOMParseError;
struct IXMLDOMProcessingInstruction;
struct IXMLDOMSchemaCollection;
struct IXMLDOMText;

// ---- DOM ----

MIDL_INTERFACE("2933bf8f-7b36-11d2-b20e-00c04f983e60")
IXMLDOMImplementation : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE hasFeature(BSTR feature, BSTR version, VARIANT_BOOL * hasFeature) = 0;
};

MIDL_INTERFACE("2933bf80-7b36-11d2-b20e-00c04f983e60")
IXMLDOMNode : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_nodeName(BSTR * name) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_nodeValue(VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeType(DOMNodeType * type) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_parentNode(IXMLDOMNode * *parent) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_childNodes(IXMLDOMNodeList * *childList) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_firstChild(IXMLDOMNode * *firstChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_lastChild(IXMLDOMNode * *lastChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_previousSibling(IXMLDOMNode * *previousSibling) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nextSibling(IXMLDOMNode * *nextSibling) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap * *attributeMap) = 0;
    virtual HRESULT STDMETHODCALLTYPE insertBefore(IXMLDOMNode * newChild, VARIANT refChild,
                                                   IXMLDOMNode * *outNewChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE replaceChild(IXMLDOMNode * newChild, IXMLDOMNode * oldChild,
                                                   IXMLDOMNode * *outOldChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeChild(IXMLDOMNode * childNode, IXMLDOMNode * *oldChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode * newChild, IXMLDOMNode * *outNewChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE hasChildNodes(VARIANT_BOOL * hasChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ownerDocument(IXMLDOMDocument * *document) = 0;
    virtual HRESULT STDMETHODCALLTYPE cloneNode(VARIANT_BOOL deep, IXMLDOMNode * *cloneRoot) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeTypeString(BSTR * nodeType) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_text(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_text(BSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_specified(VARIANT_BOOL * isSpecified) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_definition(IXMLDOMNode * *definitionNode) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeTypedValue(VARIANT * typedValue) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_nodeTypedValue(VARIANT typedValue) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_dataType(VARIANT * dataTypeName) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_dataType(BSTR dataTypeName) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_xml(BSTR * xmlString) = 0;
    virtual HRESULT STDMETHODCALLTYPE transformNode(IXMLDOMNode * stylesheet, BSTR * xmlString) = 0;
    virtual HRESULT STDMETHODCALLTYPE selectNodes(BSTR queryString, IXMLDOMNodeList * *resultList) = 0;
    virtual HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR queryString, IXMLDOMNode * *resultNode) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_parsed(VARIANT_BOOL * isParsed) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_namespaceURI(BSTR * namespaceURI) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_prefix(BSTR * prefixString) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_baseName(BSTR * nameString) = 0;
    virtual HRESULT STDMETHODCALLTYPE transformNodeToObject(IXMLDOMNode * stylesheet,
                                                            VARIANT outputObject) = 0;
};

MIDL_INTERFACE("3efaa413-272f-11d2-836f-0000f87a7782")
IXMLDOMDocumentFragment : public IXMLDOMNode{};

MIDL_INTERFACE("2933bf81-7b36-11d2-b20e-00c04f983e60")
IXMLDOMDocument : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_doctype(IXMLDOMDocumentType * *documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_implementation(IXMLDOMImplementation * *impl) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement * *element) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_documentElement(IXMLDOMElement * element) = 0;
    virtual HRESULT STDMETHODCALLTYPE createElement(BSTR tagName, IXMLDOMElement * *element) = 0;
    virtual HRESULT STDMETHODCALLTYPE createDocumentFragment(IXMLDOMDocumentFragment * *fragment) = 0;
    virtual HRESULT STDMETHODCALLTYPE createTextNode(BSTR data, IXMLDOMText * *text) = 0;
    virtual HRESULT STDMETHODCALLTYPE createComment(BSTR data, IXMLDOMComment * *comment) = 0;
    virtual HRESULT STDMETHODCALLTYPE createCDATASection(BSTR data, IXMLDOMCDATASection * *cdata) = 0;
    virtual HRESULT STDMETHODCALLTYPE createProcessingInstruction(
        BSTR target, BSTR data, IXMLDOMProcessingInstruction * *instruction) = 0;
    virtual HRESULT STDMETHODCALLTYPE createAttribute(BSTR name, IXMLDOMAttribute * *attribute) = 0;
    virtual HRESULT STDMETHODCALLTYPE createEntityReference(BSTR name,
                                                            IXMLDOMEntityReference * *entityRef) = 0;
    virtual HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR tagName, IXMLDOMNodeList * *resultList) = 0;
    virtual HRESULT STDMETHODCALLTYPE createNode(VARIANT type, BSTR name, BSTR namespaceURI,
                                                 IXMLDOMNode * *node) = 0;
    virtual HRESULT STDMETHODCALLTYPE nodeFromID(BSTR idString, IXMLDOMNode * *node) = 0;
    virtual HRESULT STDMETHODCALLTYPE load(VARIANT xmlSource, VARIANT_BOOL * isSuccessful) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_readyState(LONG * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_parseError(IXMLDOMParseError * *error) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_url(BSTR * url) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_async(VARIANT_BOOL * isAsync) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_async(VARIANT_BOOL isAsync) = 0;
    virtual HRESULT STDMETHODCALLTYPE abort() = 0;
    virtual HRESULT STDMETHODCALLTYPE loadXML(BSTR xml, VARIANT_BOOL * isSuccessful) = 0;
    virtual HRESULT STDMETHODCALLTYPE save(VARIANT destination) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_validateOnParse(VARIANT_BOOL * isValidating) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_validateOnParse(VARIANT_BOOL isValidating) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_resolveExternals(VARIANT_BOOL * isResolving) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_resolveExternals(VARIANT_BOOL isResolving) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_preserveWhiteSpace(VARIANT_BOOL * isPreserving) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_preserveWhiteSpace(VARIANT_BOOL isPreserving) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_onreadystatechange(VARIANT sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ondataavailable(VARIANT sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ontransformnode(VARIANT sink) = 0;
};

MIDL_INTERFACE("2933bf95-7b36-11d2-b20e-00c04f983e60")
IXMLDOMDocument2 : public IXMLDOMDocument {
public:
    virtual HRESULT STDMETHODCALLTYPE get_namespaces(IXMLDOMSchemaCollection * *collection) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_schemas(VARIANT * collection) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_schemas(VARIANT collection) = 0;
    virtual HRESULT STDMETHODCALLTYPE validate(IXMLDOMParseError * *error) = 0;
    virtual HRESULT STDMETHODCALLTYPE setProperty(BSTR name, VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE getProperty(BSTR name, VARIANT * value) = 0;
};

MIDL_INTERFACE("2933bf82-7b36-11d2-b20e-00c04f983e60")
IXMLDOMNodeList : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_item(LONG index, IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_length(LONG * length) = 0;
    virtual HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode * *next) = 0;
    virtual HRESULT STDMETHODCALLTYPE reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown * *enumerator) = 0;
};

MIDL_INTERFACE("2933bf83-7b36-11d2-b20e-00c04f983e60")
IXMLDOMNamedNodeMap : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE getNamedItem(BSTR name, IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE setNamedItem(IXMLDOMNode * newItem, IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeNamedItem(BSTR name, IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_item(LONG index, IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_length(LONG * length) = 0;
    virtual HRESULT STDMETHODCALLTYPE getQualifiedItem(BSTR baseName, BSTR namespaceURI,
                                                       IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeQualifiedItem(BSTR baseName, BSTR namespaceURI,
                                                          IXMLDOMNode * *item) = 0;
    virtual HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode * *next) = 0;
    virtual HRESULT STDMETHODCALLTYPE reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown * *enumerator) = 0;
};

MIDL_INTERFACE("2933bf84-7b36-11d2-b20e-00c04f983e60")
IXMLDOMCharacterData : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_data(BSTR * data) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_data(BSTR data) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_length(LONG * length) = 0;
    virtual HRESULT STDMETHODCALLTYPE substringData(LONG offset, LONG count, BSTR * data) = 0;
    virtual HRESULT STDMETHODCALLTYPE appendData(BSTR data) = 0;
    virtual HRESULT STDMETHODCALLTYPE insertData(LONG offset, BSTR data) = 0;
    virtual HRESULT STDMETHODCALLTYPE deleteData(LONG offset, LONG count) = 0;
    virtual HRESULT STDMETHODCALLTYPE replaceData(LONG offset, LONG count, BSTR data) = 0;
};

MIDL_INTERFACE("2933bf85-7b36-11d2-b20e-00c04f983e60")
IXMLDOMAttribute : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_name(BSTR * name) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_value(VARIANT * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_value(VARIANT value) = 0;
};

MIDL_INTERFACE("2933bf86-7b36-11d2-b20e-00c04f983e60")
IXMLDOMElement : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_tagName(BSTR * tagName) = 0;
    virtual HRESULT STDMETHODCALLTYPE getAttribute(BSTR name, VARIANT * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE setAttribute(BSTR name, VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeAttribute(BSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE getAttributeNode(BSTR name, IXMLDOMAttribute * *attribute) = 0;
    virtual HRESULT STDMETHODCALLTYPE setAttributeNode(IXMLDOMAttribute * attribute,
                                                       IXMLDOMAttribute * *replaced) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeAttributeNode(IXMLDOMAttribute * attribute,
                                                          IXMLDOMAttribute * *removed) = 0;
    virtual HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR tagName, IXMLDOMNodeList * *resultList) = 0;
    virtual HRESULT STDMETHODCALLTYPE normalize() = 0;
};

MIDL_INTERFACE("2933bf87-7b36-11d2-b20e-00c04f983e60")
IXMLDOMText : public IXMLDOMCharacterData {
public:
    virtual HRESULT STDMETHODCALLTYPE splitText(LONG offset, IXMLDOMText * *rightHandText) = 0;
};

MIDL_INTERFACE("2933bf88-7b36-11d2-b20e-00c04f983e60")
IXMLDOMComment : public IXMLDOMCharacterData{};

MIDL_INTERFACE("2933bf89-7b36-11d2-b20e-00c04f983e60")
IXMLDOMProcessingInstruction : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_target(BSTR * name) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_data(BSTR * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_data(BSTR value) = 0;
};

MIDL_INTERFACE("2933bf8a-7b36-11d2-b20e-00c04f983e60")
IXMLDOMCDATASection : public IXMLDOMText{};

MIDL_INTERFACE("2933bf8b-7b36-11d2-b20e-00c04f983e60")
IXMLDOMDocumentType : public IXMLDOMNode {
public:
    virtual HRESULT STDMETHODCALLTYPE get_name(BSTR * rootName) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_entities(IXMLDOMNamedNodeMap * *entityMap) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_notations(IXMLDOMNamedNodeMap * *notationMap) = 0;
};

MIDL_INTERFACE("3efaa426-272f-11d2-836f-0000f87a7782")
IXMLDOMParseError : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_errorCode(LONG * errorCode) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_url(BSTR * url) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_reason(BSTR * reason) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_srcText(BSTR * source) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_line(LONG * line) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_linepos(LONG * position) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_filepos(LONG * position) = 0;
};

MIDL_INTERFACE("aa634fc7-5888-44a7-a257-3a47150d3a0e")
IXMLDOMSelection : public IXMLDOMNodeList {
public:
    virtual HRESULT STDMETHODCALLTYPE get_expr(BSTR * expression) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_expr(BSTR expression) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_context(IXMLDOMNode * *node) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_context(IXMLDOMNode * node) = 0;
    virtual HRESULT STDMETHODCALLTYPE peekNode(IXMLDOMNode * *node) = 0;
    virtual HRESULT STDMETHODCALLTYPE matches(IXMLDOMNode * node, IXMLDOMNode * *match) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeNext(IXMLDOMNode * *node) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeAll() = 0;
    virtual HRESULT STDMETHODCALLTYPE clone(IXMLDOMSelection * *selection) = 0;
    virtual HRESULT STDMETHODCALLTYPE getProperty(BSTR name, VARIANT * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE setProperty(BSTR name, VARIANT value) = 0;
};

// ---- SAX ----
// A text that comes with a count is not terminated and lives only during the call; one without a count is
// terminated.

struct ISAXDTDHandler;
struct ISAXDeclHandler;
struct ISAXEntityResolver;

MIDL_INTERFACE("9b7e472a-0de4-4640-bff3-84d38a051c31")
ISAXLocator : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE getColumnNumber(int* column) = 0;
    virtual HRESULT STDMETHODCALLTYPE getLineNumber(int* line) = 0;
    virtual HRESULT STDMETHODCALLTYPE getPublicId(const wchar_t** publicId) = 0;
    virtual HRESULT STDMETHODCALLTYPE getSystemId(const wchar_t** systemId) = 0;
};

MIDL_INTERFACE("f078abe1-45d2-4832-91ea-4466ce2f25c9")
ISAXAttributes : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE getLength(int* length) = 0;
    virtual HRESULT STDMETHODCALLTYPE getURI(int index, const wchar_t** uri, int* uriLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getLocalName(int index, const wchar_t** localName,
                                                   int* localNameLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getQName(int index, const wchar_t** qName, int* qNameLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getName(int index, const wchar_t** uri, int* uriLength,
                                              const wchar_t** localName, int* localNameLength,
                                              const wchar_t** qName, int* qNameLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getIndexFromName(
        const wchar_t* uri, int uriLength, const wchar_t* localName, int localNameLength, int* index) = 0;
    virtual HRESULT STDMETHODCALLTYPE getIndexFromQName(const wchar_t* qName, int qNameLength,
                                                        int* index) = 0;
    virtual HRESULT STDMETHODCALLTYPE getType(int index, const wchar_t** type, int* typeLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getTypeFromName(const wchar_t* uri, int uriLength,
                                                      const wchar_t* localName, int localNameLength,
                                                      const wchar_t** type, int* typeLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getTypeFromQName(const wchar_t* qName, int qNameLength,
                                                       const wchar_t** type, int* typeLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getValue(int index, const wchar_t** value, int* valueLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getValueFromName(const wchar_t* uri, int uriLength,
                                                       const wchar_t* localName, int localNameLength,
                                                       const wchar_t** value, int* valueLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE getValueFromQName(const wchar_t* qName, int qNameLength,
                                                        const wchar_t** value, int* valueLength) = 0;
};

MIDL_INTERFACE("1545cdfa-9e4e-4497-a8a4-2bf7d0112c44")
ISAXContentHandler : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator * locator) = 0;
    virtual HRESULT STDMETHODCALLTYPE startDocument() = 0;
    virtual HRESULT STDMETHODCALLTYPE endDocument() = 0;
    virtual HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t* prefix, int prefixLength,
                                                         const wchar_t* uri, int uriLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t* prefix, int prefixLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE startElement(
        const wchar_t* uri, int uriLength, const wchar_t* localName, int localNameLength,
        const wchar_t* qName, int qNameLength, ISAXAttributes* attributes) = 0;
    virtual HRESULT STDMETHODCALLTYPE endElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                                 int localNameLength, const wchar_t* qName,
                                                 int qNameLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) = 0;
    virtual HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t* text, int length) = 0;
    virtual HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t* target, int targetLength,
                                                            const wchar_t* data, int dataLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t* name, int length) = 0;
};

MIDL_INTERFACE("a60511c4-ccf5-479e-98a3-dc8dc545b7d0")
ISAXErrorHandler : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE error(ISAXLocator * locator, const wchar_t* message, HRESULT code) = 0;
    virtual HRESULT STDMETHODCALLTYPE fatalError(ISAXLocator * locator, const wchar_t* message,
                                                 HRESULT code) = 0;
    virtual HRESULT STDMETHODCALLTYPE ignorableWarning(ISAXLocator * locator, const wchar_t* message,
                                                       HRESULT code) = 0;
};

MIDL_INTERFACE("7f85d5f5-47a8-4497-bda5-84ba04819ea6")
ISAXLexicalHandler : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE startDTD(const wchar_t* name, int nameLength, const wchar_t* publicId,
                                               int publicIdLength, const wchar_t* systemId,
                                               int systemIdLength) = 0;
    virtual HRESULT STDMETHODCALLTYPE endDTD() = 0;
    virtual HRESULT STDMETHODCALLTYPE startEntity(const wchar_t* name, int length) = 0;
    virtual HRESULT STDMETHODCALLTYPE endEntity(const wchar_t* name, int length) = 0;
    virtual HRESULT STDMETHODCALLTYPE startCDATA() = 0;
    virtual HRESULT STDMETHODCALLTYPE endCDATA() = 0;
    virtual HRESULT STDMETHODCALLTYPE comment(const wchar_t* text, int length) = 0;
};

MIDL_INTERFACE("a4f96ed0-f829-476e-81c0-cdc7bd2a0802")
ISAXXMLReader : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE getFeature(const wchar_t* name, VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putFeature(const wchar_t* name, VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE getProperty(const wchar_t* name, VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putProperty(const wchar_t* name, VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE getEntityResolver(ISAXEntityResolver * *resolver) = 0;
    virtual HRESULT STDMETHODCALLTYPE putEntityResolver(ISAXEntityResolver * resolver) = 0;
    virtual HRESULT STDMETHODCALLTYPE getContentHandler(ISAXContentHandler * *handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE putContentHandler(ISAXContentHandler * handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE getDTDHandler(ISAXDTDHandler * *handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE putDTDHandler(ISAXDTDHandler * handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE getErrorHandler(ISAXErrorHandler * *handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE putErrorHandler(ISAXErrorHandler * handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE getBaseURL(const wchar_t** url) = 0;
    virtual HRESULT STDMETHODCALLTYPE putBaseURL(const wchar_t* url) = 0;
    virtual HRESULT STDMETHODCALLTYPE getSecureBaseURL(const wchar_t** url) = 0;
    virtual HRESULT STDMETHODCALLTYPE putSecureBaseURL(const wchar_t* url) = 0;
    virtual HRESULT STDMETHODCALLTYPE parse(VARIANT input) = 0;
    virtual HRESULT STDMETHODCALLTYPE parseURL(const wchar_t* url) = 0;
};
