#pragma once

#include "HtmlReport/HtmlText.h"

#include <initializer_list>
#include <string>

namespace OvPipeline {

/// Writes a table row by row. It ends with the object.
class HtmlTable {
public:
    /// label: says to those who hear the page what the table is.
    HtmlTable(HtmlText& html, const std::string& label, std::initializer_list<HtmlText::Word> heads);
    HtmlTable(const HtmlTable&) = delete;
    HtmlTable& operator=(const HtmlTable&) = delete;
    ~HtmlTable();

    struct Cell {
        // NOLINTNEXTLINE(google-explicit-constructor): most cells are texts
        Cell(std::string content, HtmlText::Word kind = "") : text(std::move(content)), style(kind) {}
        // NOLINTNEXTLINE(google-explicit-constructor)
        Cell(const char* content) : text(content) {}

        std::string text;
        HtmlText::Word style = ""; // a class of the style sheet
    };
    /// The first cell is the row's name. A long text is shortened.
    void Row(std::initializer_list<Cell> cells);

private:
    HtmlText& m_html;
};

/// Names and values, one below the other.
class FactList {
public:
    explicit FactList(HtmlText& html);
    FactList(const FactList&) = delete;
    FactList& operator=(const FactList&) = delete;
    ~FactList();

    /// Nothing for an empty value.
    void Add(HtmlText::Word name, const std::string& value);

private:
    HtmlText& m_html;
};

} // namespace OvPipeline
