#include "Dom/WrittenNamespaces.h"

namespace OvPlatform {

namespace {

constexpr const char* madeUpPrefix = "ns";

} // namespace

std::size_t WrittenNamespaces::Find(std::string_view prefix) const noexcept {
    const auto known = m_ofPrefix.find(prefix);
    return known == m_ofPrefix.end() ? none : known->second;
}

bool WrittenNamespaces::IsBoundHere(std::string_view prefix) const noexcept {
    const std::size_t index = Find(prefix);
    return index != none && index >= m_elements.back();
}

bool WrittenNamespaces::Means(std::string_view prefix, std::string_view uri) const noexcept {
    const std::size_t index = Find(prefix);
    return index == none ? prefix.empty() && uri.empty() : m_bindings[index].uri == uri;
}

void WrittenNamespaces::Offer(std::size_t index) {
    if (!m_bindings[index].prefix.empty()) m_ofUri[m_bindings[index].uri].insert(index);
}

void WrittenNamespaces::Withdraw(std::size_t index) noexcept {
    const auto known = m_ofUri.find(m_bindings[index].uri);
    if (known != m_ofUri.end()) known->second.erase(index);
}

void WrittenNamespaces::Bind(std::string_view prefix, std::string_view uri) {
    ++m_version;
    const std::size_t index = m_bindings.size();
    const std::size_t hidden = Find(prefix);
    if (hidden != none) Withdraw(hidden);
    m_bindings.push_back({prefix, uri});
    m_hidden.push_back(hidden);
    m_ofPrefix[prefix] = index;
    Offer(index);
}

void WrittenNamespaces::Close() {
    for (std::size_t left = OwnCount(); left != 0; --left) {
        ++m_version;
        const std::size_t index = m_bindings.size() - 1;
        Withdraw(index);
        if (m_hidden.back() == none) {
            m_ofPrefix.erase(m_bindings.back().prefix);
        } else {
            m_ofPrefix[m_bindings.back().prefix] = m_hidden.back();
            Offer(m_hidden.back());
        }
        m_bindings.pop_back();
        m_hidden.pop_back();
    }
    m_elements.pop_back();
}

std::string_view WrittenNamespaces::PrefixOf(std::string_view uri) {
    const auto known = m_ofUri.find(uri);
    if (known != m_ofUri.end() && !known->second.empty()) return m_bindings[*known->second.begin()].prefix;
    std::string made;
    do {
        made = madeUpPrefix + std::to_string(m_nextMadeUp++);
    } while (IsBound(made));
    m_madeUp.push_back(std::move(made));
    Bind(m_madeUp.back(), uri);
    return m_madeUp.back();
}

} // namespace OvPlatform
