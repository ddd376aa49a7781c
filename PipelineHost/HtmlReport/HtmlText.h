#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// Builds a piece of HTML. What comes from outside is always text: elements and attributes have names that
/// stand in the program, and every value is escaped. Nothing that is written acts on the reader: controls,
/// bidirectional marks and bytes that are no UTF-8 are shown as a terminal gets them.
class HtmlText {
public:
    /// A text of the program's own: what is not known to the compiler cannot become one.
    class Word {
    public:
        // NOLINTNEXTLINE(google-explicit-constructor): it stands for the literal
        consteval Word(const char* text) : m_text(text) {}
        std::string_view View() const { return m_text; }

    private:
        std::string_view m_text;
    };
    struct Attribute {
        Word name;
        std::string value;
    };
    using Attributes = std::initializer_list<Attribute>;

    HtmlText& Open(Word element, Attributes attributes = {});
    /// The innermost element that is open.
    HtmlText& Close();
    /// bound: characters, as Shown takes it.
    HtmlText& Text(std::string_view text, std::size_t bound = std::string_view::npos);
    /// A whole element with a text in it.
    HtmlText& Element(Word element, std::string_view text, Attributes attributes = {});
    /// An element that has no content and no end.
    HtmlText& Empty(Word element, Attributes attributes = {});
    /// Markup of the program's own: styles, script, the first line.
    HtmlText& Markup(Word markup);
    /// What another one has built.
    HtmlText& Add(const HtmlText& other);

    /// All elements are closed.
    const std::string& Result() const { return m_text; }

private:
    void Begin(Word element, Attributes attributes);
    void Escape(std::string_view text, std::size_t bound);

    std::string m_text;
    std::vector<std::string_view> m_open;
};

} // namespace OvPipeline
