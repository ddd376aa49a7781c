#pragma once

#include "Dom/ElementTest.h"
#include "Dom/SelectionNamespaces.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace OvPlatform {

class DomTree;

/// A query of the form in which Print Schema documents are asked: a path of elements, which their attribute
/// `name` may choose.
///
///     //psf:Feature[@name = "psk:PageMediaSize"]//psf:ScoredProperty[@name = "psk:MediaSizeWidth"]
///     psf:Value
///     ./psf:Option
///
/// It begins at the document, or at the node that is asked. A step is `/` or `//`, a name with or without a
/// prefix, and at most one such predicate. It selects what an XPath evaluator would. A view of the query's
/// text.
class ElementPath {
public:
    /// Nothing for a query of any other form.
    static std::optional<ElementPath> Parse(std::string_view query) noexcept;

    enum class Wanted { First, All };

    /// Gives the nodes in document order, or the first of them. False, with `found` empty, where the
    /// evaluator has to be asked: for a prefix that is not declared, in a document with a document type, from
    /// a node that has no children, and where a step would begin inside of what another begins at.
    bool Select(DomTree& tree, xmlNode* node, const SelectionNamespaces& namespaces, Wanted wanted,
                std::vector<xmlNode*>& found) const;

private:
    static constexpr std::size_t mostSteps = 4; // of those that are asked
    struct Step {
        bool isDescendant = false;
        std::string_view prefix;
        std::string_view local;
        std::optional<std::string_view> name;
    };

    ElementPath() = default;
    std::optional<ElementTest> TestOf(const Step& step, const SelectionNamespaces& namespaces) const noexcept;
    static void AddStep(const Step& step, const ElementTest& test, xmlNode* from, Wanted wanted,
                        std::vector<xmlNode*>& found);

    bool m_isAbsolute = false;
    std::size_t m_count = 0;
    std::array<Step, mostSteps> m_steps;

    friend class ElementPathParser;
};

} // namespace OvPlatform
