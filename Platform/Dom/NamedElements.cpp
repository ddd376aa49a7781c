#include "Dom/NamedElements.h"

#include "Dom/DomTree.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <optional>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;
constexpr std::size_t farIn = 64; // nodes: what reaches farther is not looked through at a change
constexpr std::size_t mostTables = 4;

std::uint32_t Hash(std::string_view text) noexcept {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
    constexpr std::size_t blockSize = sizeof(std::uint64_t);
    std::uint64_t hash = text.size() * factor;
    const auto mix = [&hash](std::uint64_t block) {
        hash = (hash ^ block) * factor;
        hash ^= hash >> 32;
    };
    const auto mixBlock = [&](const char* at) {
        std::uint64_t block = 0;
        std::memcpy(&block, at, blockSize);
        mix(block);
    };
    std::size_t at = 0;
    for (; at + blockSize <= text.size(); at += blockSize)
        mixBlock(text.data() + at);
    if (text.size() >= blockSize) {
        mixBlock(text.data() + text.size() - blockSize);
    } else {
        for (; at < text.size(); ++at)
            mix(static_cast<unsigned char>(text[at]));
    }
    return static_cast<std::uint32_t>(hash);
}

/// Nothing where the value is put together from several texts.
std::optional<std::string_view> PlainValue(const xmlAttr* attribute) noexcept {
    const xmlNode* const text = attribute->children;
    if (text == nullptr) return std::string_view();
    if (text->type != XML_TEXT_NODE || text->next != nullptr) return {};
    return View(text->content);
}

enum class Place { InDocument, Outside, TooDeep };

Place PlaceOf(const xmlNode* node) noexcept {
    for (std::size_t steps = 0; steps < farIn; ++steps, node = node->parent) {
        if (node == nullptr) return Place::Outside;
        if (node->type == XML_DOCUMENT_NODE) return Place::InDocument;
    }
    return Place::TooDeep;
}

/// Calls `take` with each named element in a piece. False for a large one, of which some may be left.
template <typename Node, typename Take>
bool ForEachNamed(Node* top, Take&& take) {
    std::size_t steps = 0;
    for (auto* node = const_cast<xmlNode*>(top); node != nullptr; node = NextInTree(node, top)) {
        if (++steps > farIn) return false;
        if (node->type != XML_ELEMENT_NODE) continue;
        if (const xmlAttr* const name = NamedElements::NameOf(node)) take(node, name);
    }
    return true;
}

} // namespace

// ---- The elements

bool NamedElements::HasValue(const xmlAttr* attribute, std::string_view value) noexcept {
    std::string_view rest = value;
    for (const xmlNode* text = attribute->children; text != nullptr; text = text->next) {
        const std::string_view part = View(text->content);
        if (!rest.starts_with(part)) return false;
        rest.remove_prefix(part.size());
    }
    return rest.empty();
}

std::uint32_t NamedElements::HashOf(const xmlAttr* name) {
    const auto plain = PlainValue(name);
    return Hash(plain ? *plain : std::string_view(DomTree::AttributeValue(name)));
}

NamedElements::NamedElements(xmlDoc* document, std::string_view local) : m_local(local) {
    xmlNode* const top = reinterpret_cast<xmlNode*>(document);
    const auto isMeant = [local](const xmlNode* node) {
        return node->type == XML_ELEMENT_NODE && node->name[0] == static_cast<xmlChar>(local[0]) &&
               View(node->name) == local;
    };
    for (xmlNode* node = NextInTree(top, top); node != nullptr; node = NextInTree(node, top)) {
        if (!isMeant(node)) continue;
        if (const xmlAttr* const name = NameOf(node)) m_entries.push_back({node, HashOf(name), none});
    }
    m_inOrder = m_entries.size();
    LinkAll();
}

void NamedElements::LinkAll() {
    m_chains.assign(std::bit_ceil(m_entries.size() + 1), none);
    for (std::size_t index = m_entries.size(); index-- != 0;) {
        Entry& entry = m_entries[index];
        if (entry.element == nullptr) continue;
        entry.next = std::exchange(ChainOf(entry.hash), static_cast<std::uint32_t>(index));
    }
}

bool NamedElements::Find(const ElementTest& test, std::string_view name, std::vector<xmlNode*>& found) const {
    const std::uint32_t hash = Hash(name);
    bool isInOrder = true;
    for (std::uint32_t index = m_chains[hash & (m_chains.size() - 1)]; index != none;
         index = m_entries[index].next) {
        const Entry& entry = m_entries[index];
        if (entry.hash != hash || !test(entry.element) || !HasValue(NameOf(entry.element), name)) continue;
        found.push_back(entry.element);
        if (index >= m_inOrder) isInOrder = false;
    }
    if (isInOrder || found.size() < 2) return true;
    found.clear();
    return false;
}

void NamedElements::Add(xmlNode* element, const xmlAttr* name) {
    const std::uint32_t hash = HashOf(name);
    const auto index = static_cast<std::uint32_t>(m_entries.size());
    m_entries.push_back({element, hash, none});
    if (m_entries.size() <= 2 * m_chains.size()) {
        m_entries.back().next = std::exchange(ChainOf(hash), index);
        return;
    }
    const auto isRemoved = [](const Entry& entry) { return entry.element == nullptr; };
    const auto behind = m_entries.begin() + static_cast<std::ptrdiff_t>(m_inOrder);
    m_inOrder -= static_cast<std::size_t>(std::count_if(m_entries.begin(), behind, isRemoved));
    std::erase_if(m_entries, isRemoved);
    LinkAll();
}

bool NamedElements::Remove(const xmlNode* element, const xmlAttr* name) {
    std::uint32_t* place = &ChainOf(HashOf(name));
    for (std::size_t steps = 0; *place != none && steps < farIn; ++steps) {
        Entry& entry = m_entries[*place];
        if (entry.element == element) {
            *place = entry.next;
            entry.element = nullptr;
            return true;
        }
        place = &entry.next;
    }
    return false;
}

// ---- The tables

NamedElements* NamedElementsOnDemand::TableOf(std::string_view local) noexcept {
    const auto known = std::ranges::find(m_tables, local, &NamedElements::Local);
    return known == m_tables.end() ? nullptr : &*known;
}

void NamedElementsOnDemand::Find(xmlDoc* document, const ElementTest& test, std::string_view name,
                                 std::vector<xmlNode*>& found) {
    if (m_document != document) GiveUp();
    m_document = document;
    NamedElements* table = TableOf(test.Local());
    if (table != nullptr && table->Find(test, name, found)) return;
    NamedElements fresh(document, test.Local());
    if (table == nullptr) {
        if (m_tables.size() == mostTables) m_tables.erase(m_tables.begin());
        table = &m_tables.emplace_back(std::move(fresh));
    } else {
        *table = std::move(fresh);
    }
    table->Find(test, name, found);
}

void NamedElementsOnDemand::Linked(xmlNode* node) noexcept {
    if (m_tables.empty()) return;
    if (node->parent != nullptr && node->parent->type == XML_ATTRIBUTE_NODE) return GiveUp();
    if (node->type != XML_ELEMENT_NODE) return;
    const Place place = PlaceOf(node);
    if (place == Place::Outside) return;
    const bool isSmall =
        place == Place::InDocument &&
        ForEachNamed(node, [this](xmlNode* element, const xmlAttr* name) { Add(element, name); });
    if (!isSmall) GiveUp();
}

void NamedElementsOnDemand::Unlinking(const xmlNode* node) noexcept {
    if (m_tables.empty() || node->parent == nullptr) return;
    if (node->parent->type == XML_ATTRIBUTE_NODE) return GiveUp();
    if (node->type == XML_ATTRIBUTE_NODE) return AttributeChanging(reinterpret_cast<const xmlAttr*>(node));
    if (node->type != XML_ELEMENT_NODE) return;
    const Place place = PlaceOf(node);
    if (place == Place::Outside) return;
    const bool isSmall =
        place == Place::InDocument &&
        ForEachNamed(node, [this](const xmlNode* element, const xmlAttr* name) { Remove(element, name); });
    if (!isSmall) GiveUp();
}

void NamedElementsOnDemand::AttributeChanging(const xmlAttr* attribute) noexcept {
    if (m_tables.empty() || attribute->parent == nullptr || !NamedElements::IsName(attribute)) return;
    const Place place = PlaceOf(attribute->parent);
    if (place == Place::TooDeep) return GiveUp();
    if (place == Place::InDocument) Remove(attribute->parent, attribute);
}

void NamedElementsOnDemand::AttributeChanged(const xmlAttr* attribute) noexcept {
    if (m_tables.empty() || attribute->parent == nullptr || !NamedElements::IsName(attribute)) return;
    const Place place = PlaceOf(attribute->parent);
    if (place == Place::TooDeep) return GiveUp();
    if (place == Place::InDocument) Add(attribute->parent, attribute);
}

void NamedElementsOnDemand::Remove(const xmlNode* element, const xmlAttr* name) noexcept {
    NamedElements* const table = TableOf(View(element->name));
    try {
        if (table != nullptr && !table->Remove(element, name)) GiveUp();
    } catch (const std::bad_alloc&) {
        GiveUp();
    }
}

void NamedElementsOnDemand::Add(xmlNode* element, const xmlAttr* name) noexcept {
    NamedElements* const table = TableOf(View(element->name));
    if (table == nullptr) return;
    try {
        table->Add(element, name);
    } catch (const std::bad_alloc&) {
        GiveUp();
    }
}

} // namespace OvPlatform
