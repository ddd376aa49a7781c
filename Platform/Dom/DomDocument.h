#pragma once

#include "Dom/DomNode.h"
#include "Dom/SharedTree.h"
#include "Xml/XmlFailure.h"

#include <string_view>

namespace OvPlatform {

class DomStream;

/// A document. Loading is always finished when it returns, whatever `async` says; validation needs a schema
/// or a document type declaration, and neither is supported.
class DomDocument final : public DomNode<IXMLDOMDocument3> {
public:
    explicit DomDocument(DomTree& tree) noexcept : DomNode(tree, tree.DocumentNode()) {}

    /// For CoCreateInstance.
    static HRESULT Create(REFIID riid, void** object) noexcept;

    HRESULT STDMETHODCALLTYPE cloneNode(VARIANT_BOOL deep, IXMLDOMNode** clone) override;

    HRESULT STDMETHODCALLTYPE get_doctype(IXMLDOMDocumentType** documentType) override;
    HRESULT STDMETHODCALLTYPE get_implementation(IXMLDOMImplementation** implementation) override;
    HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** element) override;
    HRESULT STDMETHODCALLTYPE putref_documentElement(IXMLDOMElement* element) override;
    HRESULT STDMETHODCALLTYPE createElement(BSTR tagName, IXMLDOMElement** element) override;
    HRESULT STDMETHODCALLTYPE createDocumentFragment(IXMLDOMDocumentFragment** fragment) override;
    HRESULT STDMETHODCALLTYPE createTextNode(BSTR data, IXMLDOMText** text) override;
    HRESULT STDMETHODCALLTYPE createComment(BSTR data, IXMLDOMComment** comment) override;
    HRESULT STDMETHODCALLTYPE createCDATASection(BSTR data, IXMLDOMCDATASection** section) override;
    HRESULT STDMETHODCALLTYPE
    createProcessingInstruction(BSTR target, BSTR data, IXMLDOMProcessingInstruction** instruction) override;
    HRESULT STDMETHODCALLTYPE createAttribute(BSTR name, IXMLDOMAttribute** attribute) override;
    HRESULT STDMETHODCALLTYPE createEntityReference(BSTR, IXMLDOMEntityReference**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR tagName, IXMLDOMNodeList** list) override;
    HRESULT STDMETHODCALLTYPE createNode(VARIANT type, BSTR name, BSTR namespaceUri,
                                         IXMLDOMNode** node) override;
    /// Only a document type declaration makes attributes ids, so no node has one.
    HRESULT STDMETHODCALLTYPE nodeFromID(BSTR id, IXMLDOMNode** node) override;
    HRESULT STDMETHODCALLTYPE load(VARIANT source, VARIANT_BOOL* isSuccessful) override;
    HRESULT STDMETHODCALLTYPE get_readyState(LONG* value) override;
    HRESULT STDMETHODCALLTYPE get_parseError(IXMLDOMParseError** error) override;
    HRESULT STDMETHODCALLTYPE get_url(BSTR* url) override;
    HRESULT STDMETHODCALLTYPE get_async(VARIANT_BOOL* isAsync) override;
    HRESULT STDMETHODCALLTYPE put_async(VARIANT_BOOL isAsync) override;
    HRESULT STDMETHODCALLTYPE abort() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE loadXML(BSTR xml, VARIANT_BOOL* isSuccessful) override;
    HRESULT STDMETHODCALLTYPE save(VARIANT destination) override;
    HRESULT STDMETHODCALLTYPE get_validateOnParse(VARIANT_BOOL* isValidating) override;
    HRESULT STDMETHODCALLTYPE put_validateOnParse(VARIANT_BOOL isValidating) override;
    HRESULT STDMETHODCALLTYPE get_resolveExternals(VARIANT_BOOL* isResolving) override;
    HRESULT STDMETHODCALLTYPE put_resolveExternals(VARIANT_BOOL isResolving) override;
    HRESULT STDMETHODCALLTYPE get_preserveWhiteSpace(VARIANT_BOOL* isPreserving) override;
    HRESULT STDMETHODCALLTYPE put_preserveWhiteSpace(VARIANT_BOOL isPreserving) override;
    HRESULT STDMETHODCALLTYPE put_onreadystatechange(VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ondataavailable(VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ontransformnode(VARIANT) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE get_namespaces(IXMLDOMSchemaCollection**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_schemas(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE putref_schemas(VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE validate(IXMLDOMParseError** error) override;
    HRESULT STDMETHODCALLTYPE setProperty(BSTR name, VARIANT value) override;
    HRESULT STDMETHODCALLTYPE getProperty(BSTR name, VARIANT* value) override;

    HRESULT STDMETHODCALLTYPE validateNode(IXMLDOMNode* node, IXMLDOMParseError** error) override;
    HRESULT STDMETHODCALLTYPE importNode(IXMLDOMNode* node, VARIANT_BOOL deep, IXMLDOMNode** clone) override;

    // For its stream.

    /// The text in the encoding of its declaration; false where that cannot be written.
    bool Write(std::string& bytes);
    /// What the text comes from: changes with it.
    std::uint64_t Version() const noexcept { return Tree().Version(); }
    /// Takes over what was written. S_FALSE if it is no document.
    HRESULT LoadWritten(std::string_view bytes);
    void StreamEnded() noexcept { m_stream = nullptr; }
    /// What a stream has read of the document in its version, for the next one. A long one is not kept.
    void KeepLastText(std::string&& text, std::uint64_t version) noexcept;
    /// False where it is none, or not of the document as it is now.
    bool TakeLastText(std::string& text, std::uint64_t& version) noexcept;

protected:
    bool Answers(REFIID riid) const noexcept override;
    HRESULT OtherInterface(REFIID riid, void** object) override;
    void BeforeUse() override;

private:
    enum class Source { Bytes, Text };

    /// As Guarded, without looking at the tree.
    template <class Work>
    HRESULT GuardedUnread(Work&& work) const noexcept;
    void TakeWritten();
    /// Takes over what the document at whose start a stream stands holds, without reading it. False where it
    /// has to be read.
    bool Share(ISequentialStream* stream);
    TreeShare ShareFor(const DomSettings& settings);
    /// The content is what others share from now on.
    void Share(TreeShare tree);
    HRESULT Load(std::string_view text, Source source);
    HRESULT LoadFailed(XmlFailure failure);
    void Replace(XmlDocument document, const ReadBack* form = nullptr);
    xmlNode* NewNode(LONG type, BSTR name, BSTR namespaceUri, HRESULT& result);
    template <class Wanted>
    HRESULT CreateNamed(DOMNodeType type, BSTR name, Wanted** node);
    template <class Wanted>
    HRESULT CreateData(xmlElementType type, BSTR data, Wanted** node);
    HRESULT GiveParseError(const XmlFailure& failure, IXMLDOMParseError** error);

    XmlFailure m_failure;
    std::string m_url;
    DomStream* m_stream = nullptr; ///< not counted: it counts the document
    TreeShare m_shared;            ///< the content, until somebody looks at it
    std::string m_lastText;        ///< as a stream read it
    std::uint64_t m_lastVersion = 0;
};

} // namespace OvPlatform
