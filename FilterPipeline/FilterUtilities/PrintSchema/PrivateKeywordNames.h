#pragma once

#include "PrintSchema/PrintSchemaKeywords.h"

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class PrintSchemaXmlDocument;
class TreeChange;

/// The one rule on private names: under which prefixes they stand in a document, which prefix a new one gets,
/// and what has to be declared for it. What counts is the namespace that a prefix has where the name stands.
///
/// A document gives out one prefix for private keywords: "ok:", or "ns0000:" where its root element declares
/// none, or the one that it declares where its names are left as they are. Callers who give that prefix, or
/// "ok:", mean private keywords, however they are spelled: the document may bind either prefix to the
/// namespace of somebody else.
///
/// The document is borrowed. Failures are raised under the name of the operation that asks. The questions of
/// where names stand can be asked of another namespace, too.
class PrivateKeywordNames {
public:
    explicit PrivateKeywordNames(const PrintSchemaXmlDocument& document,
                                 const wchar_t* namespaceUri = PrintSchema::USER_KEYWORDS_URI)
        : m_document(document), m_uri(namespaceUri) {}

    [[nodiscard]] bool AreMeantBy(std::wstring_view prefix) const;

    // ---- Reading

    /// Whether every name under "ok:" is a private one, and no other: a document that declares the namespace
    /// was normalised when it was read, or declares it so.
    [[nodiscard]] bool AreNormalised() const;
    /// The prefixes under which private names stand below the root element.
    [[nodiscard]] std::vector<std::wstring_view> Prefixes() const;
    /// Whether a name is a private one where the node stands.
    [[nodiscard]] bool StandsAt(IXMLDOMNode* node, std::wstring_view name) const;
    /// Those elements whose own name is a private one.
    [[nodiscard]] std::vector<CComPtr<IXMLDOMNode>> NamedAmong(IXMLDOMNodeList* elements) const;

    // ---- Writing

    struct Spelling {
        enum Declaration { None, AtRoot, WithName };
        std::wstring_view prefix;
        /// WithName where the root element cannot declare the prefix: the element of the name does.
        Declaration declaration;
    };
    /// How a new name is spelled at a node: with the wanted prefix or else the one that the document gives
    /// out, unless that is bound to another namespace there, else with "ok:". Raises E_FAIL if that is taken,
    /// too.
    [[nodiscard]] Spelling SpellAt(IXMLDOMNode* place, std::wstring_view wanted) const;
    /// Whether the root element declares "ok:" for private names, or may.
    [[nodiscard]] bool CanHaveUsualPrefix() const;
    /// What the root element does not declare yet of a prefix and "ok:".
    [[nodiscard]] std::vector<std::wstring_view> MissingAtRoot(std::wstring_view prefix) const;
    /// Raises E_FAIL if private names of a child would be somebody else's below that parent.
    void RequireSameMeaning(IXMLDOMNode* parent, IXMLDOMNode* child) const;

    // ---- Normalising

    /// Gives all private names the prefix "ok:". Raises E_FAIL, and nothing is changed, where that is the
    /// prefix of another namespace.
    void Normalise(TreeChange& change) const;

private:
    enum class Binding { None, Private, Foreign };

    /// What a prefix is bound to for the children of a node: neighbours ask the same.
    struct Remembered {
        CComPtr<IXMLDOMNode> node;
        std::wstring prefix;
        Binding binding = Binding::None;
    };

    [[nodiscard]] std::wstring_view Own() const;
    [[nodiscard]] bool IsPrivate(Binding binding, std::wstring_view prefix) const;
    [[nodiscard]] std::optional<Binding> DeclaredBy(IXMLDOMNode* node, std::wstring_view prefix) const;
    [[nodiscard]] CComPtr<IXMLDOMNode> ParentOf(IXMLDOMNode* node) const;
    /// By a node and what stands around it; None leaves the node at the top.
    [[nodiscard]] Binding BindingWithin(CComPtr<IXMLDOMNode>& node, std::wstring_view prefix) const;
    [[nodiscard]] Binding BindingAt(IXMLDOMNode* node, std::wstring_view prefix) const;
    [[nodiscard]] Binding BindingAt(IXMLDOMNode* node, std::wstring_view prefix, Remembered& parents) const;
    [[nodiscard]] CComBSTR NameOf(IXMLDOMNode* element) const;
    /// Elements with a prefix in their name, other than that of public keywords and of the framework.
    [[nodiscard]] CComPtr<IXMLDOMNodeList> SelectPrefixed() const;
    [[nodiscard]] CComPtr<IXMLDOMNodeList> SelectNamesWith(std::wstring_view prefix) const;
    /// Whether the document gives the namespace one prefix, and that no second meaning, which one look at the
    /// text tells: most documents are like that. False where it cannot be told.
    [[nodiscard]] bool AreDeclaredOnce() const;
    [[nodiscard]] CComBSTR WithUsualPrefix(std::wstring_view name, std::wstring_view prefix) const;

    const PrintSchemaXmlDocument& m_document;
    const wchar_t* m_uri;
};
