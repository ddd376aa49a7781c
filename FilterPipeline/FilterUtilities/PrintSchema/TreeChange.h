#pragma once

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <vector>

class DocumentQuery;

/// Changes of a document's tree that count together. Each is made at once, and what is new is given complete
/// and stands in the tree before what is old goes. Unless Keep is called, the end of this object's life takes
/// them all back, the last one first; and the root element then declares the prefixes of private keywords as
/// it did before, whoever changed that.
///
/// Failures are raised as CPComException under the name of the operation that makes the change; what failed
/// has changed nothing. The nodes stay referenced. One thread, and one object for a tree at a time.
class TreeChange {
public:
    /// Of the root element's children.
    enum class Place { First, Last };

    explicit TreeChange(IXMLDOMNode* root);
    TreeChange(const TreeChange&) = delete;
    TreeChange& operator=(const TreeChange&) = delete;
    ~TreeChange();

    /// Makes a node a child of the root, in place of all that the query finds, wherever it stands. Null only
    /// removes. Gives whether there was anything to remove.
    bool Replace(const DocumentQuery& query, IXMLDOMNode* replacement, Place place = Place::Last);
    /// Makes a node the last child of a parent, wherever it stood before.
    void Append(IXMLDOMNode* parent, IXMLDOMNode* child);
    /// False for a node without parent.
    bool Remove(IXMLDOMNode* node);
    /// Of a node that has a value of its own, as an attribute has.
    void SetValue(IXMLDOMNode* node, BSTR value);

    /// The changes stay.
    void Keep() noexcept { m_isKept = true; }

private:
    /// What a node was before it was changed.
    struct Before {
        CComPtr<IXMLDOMNode> node;
        bool isMoved = false; // or has another value
        CComPtr<IXMLDOMNode> parent;
        CComPtr<IXMLDOMNode> nextSibling;
        CComVariant value;
    };

    /// An attribute of the root element as it was; not a text if there was none.
    struct Declaration {
        CComBSTR name;
        CComVariant uri;
    };

    void Insert(IXMLDOMNode* parent, IXMLDOMNode* child, IXMLDOMNode* before);
    [[nodiscard]] Before PlaceOf(IXMLDOMNode* node) const;
    static void TakeBack(const Before& step);
    void RestoreDeclarations() const;

    CComPtr<IXMLDOMElement> m_root;
    std::vector<Declaration> m_declarations;
    std::vector<Before> m_steps;
    bool m_isKept = false;
};
