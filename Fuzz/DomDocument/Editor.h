#pragma once

#include <atlcomcli.h>
#include <msxml6.h>

#include <map>
#include <string_view>
#include <vector>

/// Changes a document by commands of one letter each. They work on two nodes of a selection, the one at hand
/// and the next one; prefixes and namespaces are taken in turn from a few, so that they often meet.
class Editor {
public:
    Editor(IXMLDOMDocument3* document, const CComBSTR& query);

    void Apply(char edit);

    /// Writes into the document's stream, which the next use of the document ends.
    static constexpr char write = 'W';

private:
    using Edit = void (Editor::*)();
    static const std::map<char, Edit> edits;

    void Select();
    void Next();
    void Reload();
    void WriteInto();
    void Append();
    void Insert();
    void Replace();
    void Remove();
    void Clone();
    void Import();
    void MoveAway();
    void MoveHere();
    void SetText();
    void SetAttribute(const wchar_t* name, const wchar_t* value);
    void SetPlain();
    void SetPrefixed();
    void SetOtherPrefixed();
    void Declare();
    void DeclareAnew();
    void DeclareDefault();
    void SetType();
    void RemoveFirstAttribute();
    void Normalize();
    void Split();
    void AppendFragment();
    void Create(int type);
    void CreateElement();
    void CreateAttribute();
    void CreateSection();
    void CreateComment();
    void CreateInstruction();
    /// The next prefix, which may be none, and the next namespace, which may be none.
    const wchar_t* NextPrefix();
    const wchar_t* NextUri();
    CComBSTR NextName(const wchar_t* local);
    void AddElement();
    void AddAttribute();
    void SetNamed();
    void GiveName();
    void TakeName();
    void DeclareAny();
    void UndeclareAny();
    void MoveDeclaration();
    void ChangeAttribute();
    void SetSpace();
    void SetBlanks();
    void SetData();
    void RemoveLast();
    void Keep();
    void Drop();

    CComPtr<IXMLDOMDocument3> m_document;
    CComPtr<IXMLDOMDocument3> m_other;
    CComBSTR m_query;
    std::size_t m_prefix = 0;
    std::size_t m_uri = 0;
    std::size_t m_name = 0;
    CComPtr<IXMLDOMNodeList> m_list;
    CComPtr<IXMLDOMNode> m_first;
    CComPtr<IXMLDOMNode> m_second;
    std::vector<CComPtr<IXMLDOMNode>> m_kept;
};
