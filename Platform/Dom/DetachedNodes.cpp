#include "Dom/DetachedNodes.h"

#include "Dom/DomTree.h"

#include <limits>
#include <optional>
#include <unordered_map>

namespace OvPlatform {

namespace {

constexpr std::size_t shortWalk = 128;
constexpr std::size_t endless = std::numeric_limits<std::size_t>::max();

/// Steps from node to node, up to a bound.
class Walk {
public:
    explicit Walk(std::size_t most) noexcept : m_left(most), m_most(most) {}

    /// False where the bound is reached.
    bool Step() noexcept { return m_left != 0 && m_left-- != 0; }
    std::size_t Steps() const noexcept { return m_most - m_left; }

private:
    std::size_t m_left;
    std::size_t m_most;
};

/// Nothing where the walk ended before that was known.
using Found = std::optional<bool>;

Found AttributeHasObjects(const xmlAttr* attribute, Walk& walk) noexcept {
    if (attribute->_private != nullptr) return true;
    for (const xmlNode* text = attribute->children; text != nullptr; text = text->next) {
        if (!walk.Step()) return std::nullopt;
        if (text->_private != nullptr) return true;
    }
    return false;
}

Found AttributesHaveObjects(const xmlNode* element, Walk& walk) noexcept {
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        if (!walk.Step()) return std::nullopt;
        if (const Found found = AttributeHasObjects(attribute, walk); found != Found(false)) return found;
    }
    for (const xmlNs* declaration = element->nsDef; declaration != nullptr; declaration = declaration->next) {
        if (!walk.Step()) return std::nullopt;
        const auto* mirror = static_cast<const xmlAttr*>(declaration->_private);
        if (mirror == nullptr) continue;
        if (const Found found = AttributeHasObjects(mirror, walk); found != Found(false)) return found;
    }
    return false;
}

Found HasObjects(xmlNode* top, Walk& walk) noexcept {
    if (top->type == XML_ATTRIBUTE_NODE)
        return AttributeHasObjects(reinterpret_cast<const xmlAttr*>(top), walk);
    for (xmlNode* node = top; node != nullptr; node = NextInTree(node, top)) {
        if (!walk.Step()) return std::nullopt;
        if (node->_private != nullptr) return true;
        if (node->type != XML_ELEMENT_NODE) continue;
        if (const Found found = AttributesHaveObjects(node, walk); found != Found(false)) return found;
    }
    return false;
}

DetachedNodes::Verdict VerdictOn(xmlNode* node, const xmlNode* document, Walk walk) noexcept {
    using Fate = DetachedNodes::Fate;
    for (; node->parent != nullptr; node = node->parent)
        if (!walk.Step()) return {Fate::Unknown, nullptr};
    if (node == document) return {Fate::Kept, node};
    const Found found = HasObjects(node, walk);
    return {!found ? Fate::Unknown : *found ? Fate::Kept : Fate::Ended, node};
}

/// The tops of many nodes, each way up gone once.
class Tops {
public:
    explicit Tops(std::size_t& steps) noexcept : m_steps(steps) {}

    xmlNode* Of(xmlNode* node) {
        m_way.clear();
        xmlNode* top = nullptr;
        for (; top == nullptr; node = node->parent) {
            const auto known = m_tops.find(node);
            if (known != m_tops.end()) {
                top = known->second;
                break;
            }
            ++m_steps;
            m_way.push_back(node);
            if (node->parent == nullptr) top = node;
        }
        for (xmlNode* passed : m_way)
            m_tops.emplace(passed, top);
        return top;
    }

private:
    std::size_t& m_steps;
    std::unordered_map<xmlNode*, xmlNode*> m_tops;
    std::vector<xmlNode*> m_way;
};

} // namespace

DetachedNodes::Verdict DetachedNodes::Look(xmlNode* node, const xmlNode* document) noexcept {
    return VerdictOn(node, document, Walk(shortWalk));
}

DetachedNodes::Verdict DetachedNodes::LookThrough(xmlNode* node, const xmlNode* document) noexcept {
    return VerdictOn(node, document, Walk(endless));
}

std::vector<xmlNode*> DetachedNodes::TakeEnded(const xmlNode* document) {
    std::size_t inVain = 0; // steps through what stays
    Tops tops(inVain);
    std::unordered_set<xmlNode*> seen;
    std::vector<xmlNode*> ended;
    for (xmlNode* node : m_waiting) {
        xmlNode* top = tops.Of(node);
        if (!seen.insert(top).second || top == document) continue;
        Walk walk(endless);
        if (!*HasObjects(top, walk)) {
            ended.push_back(top);
            continue;
        }
        inVain += walk.Steps();
    }
    m_waiting.clear();
    m_patience = inVain / shortWalk;
    return ended;
}

} // namespace OvPlatform
