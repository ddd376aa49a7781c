#pragma once

#include "Dom/NamedElements.h"
#include "Dom/SelectionNamespaces.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// A query that begins with an element called by its attribute `name`, the form in which Print Schema
/// documents are asked:
///
///     //psf:Feature[@name = "psk:PageMediaSize"]//psf:ScoredProperty[@name = "psk:MediaSizeWidth"]
///
/// A step is `/` or `//`, a name with or without a prefix, and at most one such predicate. It selects what an
/// XPath evaluator would.
class NamedPath {
public:
    /// Nothing for a query of any other form.
    static std::optional<NamedPath> Parse(std::string_view query);

    /// The nodes in document order. Nothing where the evaluator has to be asked: for a prefix that is not
    /// declared, and where a step would begin at several elements.
    std::optional<std::vector<xmlNode*>> Select(const NamedElements& elements,
                                                const SelectionNamespaces& namespaces) const;

private:
    static constexpr std::size_t mostSteps = 4; // of those that are asked
    struct Step {
        bool isDescendant = false;
        std::string prefix;
        std::string local;
        std::optional<std::string> name;
    };

    NamedPath() = default;
    static void AddStep(const Step& step, std::string_view uri, xmlNode* from, std::vector<xmlNode*>& found);

    std::vector<Step> m_steps;

    friend class NamedPathParser;
};

} // namespace OvPlatform
