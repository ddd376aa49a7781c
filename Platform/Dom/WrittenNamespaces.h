#pragma once

#include <cstddef>
#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// What the prefixes mean where a writer stands: the declarations of the start tags that it has open. No
/// question costs more where more is declared. The texts that it is given must outlive it. Belongs to one
/// thread.
class WrittenNamespaces {
public:
    /// A declaration. Without a prefix: of the default namespace. Without a URI: takes the default one back.
    struct Binding {
        std::string_view prefix;
        std::string_view uri;
    };

    /// Begins and ends an element.
    void Open() { m_elements.push_back(m_bindings.size()); }
    void Close();

    /// Declares a prefix on the innermost element.
    void Bind(std::string_view prefix, std::string_view uri);

    /// Changes whenever a declaration comes or goes.
    std::size_t Version() const noexcept { return m_version; }

    /// How many declarations the innermost element has, and the one at `index` among them.
    std::size_t OwnCount() const noexcept { return m_bindings.size() - m_elements.back(); }
    const Binding& Own(std::size_t index) const noexcept { return m_bindings[m_elements.back() + index]; }

    /// Whether anything declares the prefix, and whether the innermost element does.
    bool IsBound(std::string_view prefix) const noexcept { return Find(prefix) != none; }
    bool IsBoundHere(std::string_view prefix) const noexcept;
    /// Whether a name with this prefix is in that namespace. Without a declaration no prefix means none.
    bool Means(std::string_view prefix, std::string_view uri) const noexcept;

    /// A prefix that means `uri`, never the empty one: the outermost that does so already, or else the first
    /// free one of ns0, ns1, ..., which the innermost element then declares.
    std::string_view PrefixOf(std::string_view uri);

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::size_t Find(std::string_view prefix) const noexcept;
    void Offer(std::size_t index);
    void Withdraw(std::size_t index) noexcept;

    std::vector<Binding> m_bindings;
    /// For each binding the one of the same prefix that it hides.
    std::vector<std::size_t> m_hidden;
    /// For each open element how many bindings there were before it.
    std::vector<std::size_t> m_elements;
    /// The binding that each prefix has here, and those with a prefix that each URI has.
    std::unordered_map<std::string_view, std::size_t> m_ofPrefix;
    std::unordered_map<std::string_view, std::set<std::size_t>> m_ofUri;
    std::deque<std::string> m_madeUp;
    std::size_t m_nextMadeUp = 0;
    std::size_t m_version = 0;
};

} // namespace OvPlatform
