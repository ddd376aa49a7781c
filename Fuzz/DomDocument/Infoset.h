#pragma once

#include <msxml6.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a document says, apart from how it is spelled: the elements and attributes with their namespaces,
/// texts, comments and instructions. Texts of blanks count only where the document says so.
struct Infoset {
    /// One event after the other, in a form of its own.
    std::string events;
    /// For each value `p:name` of an attribute, in the order of the events, the namespace that p has there;
    /// empty where it has none.
    std::vector<std::string> meanings;

    /// Of a tree, by the public interfaces.
    static Infoset Of(IXMLDOMDocument3* document, bool keepsBlanks);

    /// Of a text, by a parser that shares no code with the tree. The encoding is that of the text's
    /// declaration unless it is given. None, with the reason, for what is no document.
    static std::optional<Infoset> Of(std::string_view text, const char* encoding, bool keepsBlanks,
                                     std::string& reason);
};

/// Why a text does not say what a tree says; empty if it does. Prefixes that have no namespace in the tree
/// may have any in the text.
std::string Difference(const Infoset& tree, const Infoset& text);
